#include "kivifc/Findings/CheckRun.h"

#include "kiv/Kit/Findings/AcrossDocuments.h"
#include "kiv/Kit/Findings/Findings.h"
#include "kiv/Kit/Findings/IgnoreComments.h"
#include "kiv/Kit/Findings/SchemaFindings.h"
#include "kiv/Kit/Positions/XmlPositions.h"
#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Documents/ShownFailure.h"
#include "kivifc/Findings/JoinedFindings.h"
#include "kivifc/Program/OrderedJobs.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <future>
#include <iterator>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

namespace kiv::kivifc {

namespace {

using kit::Finding;

/// A document that was looked at by itself.
struct Checked {
    kit::SetDocument document;
    std::vector<Finding> findings;
};

/// As a limit is raised by an option, the message names it.
void vFailureExplain(std::vector<Finding>& findings, const kit::SetDocument& document) {
    for (auto& finding : findings) {
        if (isUnreadable(finding) && document.failure->limit)
            finding.message = shownFailure(document.path, *document.failure).reason;
    }
}

kit::SetDocument refusedDocument(const CheckedPath& path) {
    kit::SetDocument document;
    document.path = path.path;
    document.failure = {kit::FailureKind::Unreadable, path.refusal, {}, {}};
    return document;
}

kit::SetDocument documentOf(const CheckRequest& request, const CheckedPath& path) {
    if (!path.refusal.empty())
        return refusedDocument(path);
    const auto options = readingOptions(true);
    const auto& schema = *request.schema.schema;
    const bool isStandardInput = path.path == StandardInputPath;
    const auto& shown = isStandardInput ? request.standardInputName : path.path;
    if (const auto given = request.texts.find(shown); given != request.texts.end())
        return kit::setTextCheck(given->second, shown, schema, options);
    return isStandardInput ? kit::setStreamCheck(stdin, shown, schema, options)
                           : kit::setDocumentCheck(shown, schema, options);
}

Checked documentCheck(const CheckRequest& request, const CheckedPath& path) {
    Checked checked;
    checked.document = documentOf(request, path);
    checked.findings = kit::findingsOf(checked.document, request.context);
    if (checked.document.failure)
        vFailureExplain(checked.findings, checked.document);
    return checked;
}

std::vector<Finding> schemaFindingsOf(const SchemaFile& schema) {
    return kit::schemaFindingsOf(schema.schema.get(), schema.assertions, schema.text, schema.path);
}

bool isBefore(const Finding& left, const Finding& right) {
    return std::tie(left.place.path, left.place.position.line, left.place.position.column, left.code) <
           std::tie(right.place.path, right.place.position.line, right.place.position.column, right.code);
}

/// Takes the documents in their order.
class Taker {
public:
    Taker(const CheckRequest& request, SourceLines& sources) : request_(request), sources_(sources) {}

    void vTake(Checked&& checked, const CheckedPath& path) {
        auto& document = checked.document;
        all_.paths.push_back(document.path);
        all_.unreadable += document.failure ? 1U : 0U;
        for (const auto& context : path.contexts)
            across_.vAdd(document, context, checked.findings);
        // What its comments would have hidden is not known of a document that cannot be read.
        if (document.positions && !document.failure)
            vIgnoresTake(document);
        vTextTake(checked, path);
        vFindingsTake(std::move(checked.findings));
        if (request_.keepsRecords && !document.errors.getRecords().empty())
            all_.errors.sets.insert(std::move(document.errors));
        if (request_.onProgress)
            request_.onProgress(all_.paths.size());
    }

    CheckedDocuments takeAll(std::vector<Finding>&& schemaFindings) {
        vFindingsTake(std::move(schemaFindings));
        vFindingsTake(across_.getFindings());
        const auto isLookedFor = [&](std::string_view code) { return isSelected(request_.selection, code); };
        for (const auto& [path, ignores] : ignores_)
            std::ranges::move(ignores.unusedFindings(isLookedFor), std::back_inserter(all_.findings));
        vFindingsSelect(all_.findings, request_.selection);
        std::ranges::stable_sort(all_.findings, isBefore);
        vFindingsJoin(all_.findings);
        return std::move(all_);
    }

private:
    void vIgnoresTake(const kit::SetDocument& document) {
        kit::IgnoreComments ignores(document.path, *document.positions);
        if (!ignores.isEmpty())
            ignores_.emplace(document.path, std::move(ignores));
    }

    void vFindingsTake(std::vector<Finding>&& findings) {
        for (auto& finding : findings) {
            const auto ignores = ignores_.find(finding.place.path);
            if (ignores == ignores_.end() || isUnreadable(finding) || !ignores->second.boHide(finding))
                all_.findings.push_back(std::move(finding));
        }
    }

    void vTextTake(const Checked& checked, const CheckedPath& path) {
        const auto& document = checked.document;
        std::error_code error;
        if (path.path == StandardInputPath || !std::filesystem::is_regular_file(path.path, error)) {
            sources_.vKeep(document.path, document.text);
            if (request_.keepsTexts)
                all_.streams.emplace(document.path, document.text);
        }
        const auto hasEdits = [](const Finding& finding) { return !finding.edits.empty(); };
        if (request_.keepsTexts && std::ranges::any_of(checked.findings, hasEdits))
            all_.texts.emplace(document.path, CheckedText{document.text, path.path != StandardInputPath});
        const bool isUtf8 =
            !document.positions || document.positions->getEncoding() == kit::XmlEncoding::Utf8;
        if (request_.keepsTexts && !isUtf8)
            all_.unmendable.insert(document.path);
    }

    const CheckRequest& request_;
    SourceLines& sources_;
    kit::AcrossDocuments across_;
    std::map<std::string, kit::IgnoreComments, std::less<>> ignores_;
    CheckedDocuments all_;
};

} // namespace

CheckedDocuments checkRun(const CheckRequest& request, SourceLines& sources) {
    Taker taker(request, sources);
    // It takes as long as many documents, so where there are threads it is done beside them.
    const auto anyPolicy = std::launch::async | std::launch::deferred;
    auto schemaFindings = std::async(request.threads > 1 ? anyPolicy : std::launch::deferred,
                                     [&request] { return schemaFindingsOf(request.schema); });
    auto path = request.documents.begin();
    vInOrder(
        request.documents.size(), request.threads,
        [&](std::size_t number) { return documentCheck(request, request.documents[number]); },
        [&](Checked&& checked) { taker.vTake(std::move(checked), *path++); });
    return taker.takeAll(schemaFindings.get());
}

} // namespace kiv::kivifc
