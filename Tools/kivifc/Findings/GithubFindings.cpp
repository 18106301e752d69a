#include "kivifc/Findings/FindingWriter.h"

#include "kiv/Kit/Findings/Rule.h"
#include "kivifc/Program/CodePoints.h"

#include <fmt/format.h>
#include <iterator>
#include <utility>

// Findings as workflow commands.
namespace kiv::kivifc {

namespace {

/// The runner takes "%XX" for these; values of properties must be free of what separates them as well.
std::string sEscapedFor(std::string_view text, std::string_view special) {
    std::string escaped;
    for (const char letter : text) {
        if (special.find(letter) == std::string_view::npos)
            escaped += letter;
        else
            fmt::format_to(std::back_inserter(escaped), "%{:02X}", static_cast<unsigned char>(letter));
    }
    return escaped;
}

/// What would show the line in another order, end it for whom looks at it, or not be seen, is escaped; ends
/// of lines have an escape of their own here.
std::string sVisible(std::string_view text) {
    std::string visible;
    for (ShownPoints points(text); points.boNext();) {
        const auto& point = points.getPoint();
        const bool isLineEnd = point.value == '\r' || point.value == '\n';
        if (points.isEscaped() && !isLineEnd)
            visible += sEscaped(point);
        else
            visible += point.bytes;
    }
    return visible;
}

std::string sData(std::string_view text) {
    return sEscapedFor(sVisible(text), "%\r\n");
}

std::string sProperty(std::string_view text) {
    return sEscapedFor(sVisible(text), "%\r\n:,");
}

std::string_view commandOf(kit::Severity severity) {
    return severity == kit::Severity::Note ? "notice" : severityText(severity);
}

std::string sProperties(const kit::Finding& finding, const RepositoryPaths& paths) {
    const auto& position = finding.place.position;
    auto text = "file=" + sProperty(paths.sShared(finding.place.path));
    if (position.line != 0)
        text += fmt::format(",line={}", position.line);
    if (position.line != 0 && position.column != 0)
        text += fmt::format(",col={}", position.column);
    // The column of the last letter: the runner counts it as part of the place.
    if (position.column != 0 && position.length != 0)
        text += fmt::format(",endColumn={}", position.column + position.length - 1);
    const auto* rule = kit::pRuleFind(finding.code);
    const auto title = rule ? fmt::format("{} {}", finding.code, rule->name) : std::string(finding.code);
    return text + ",title=" + sProperty(title);
}

/// The message, and a line for each note.
std::string sCommandMessage(const kit::Finding& finding) {
    auto text = finding.message;
    for (const auto& note : finding.notes)
        text += fmt::format("\n{}note: {}", note.place ? sPlace(*note.place) + ": " : "", note.message);
    return sData(text);
}

class GithubFindings final : public FindingWriter {
public:
    GithubFindings(Output& output, RepositoryPaths paths) : output_(output), paths_(std::move(paths)) {}

    void vFindingWrite(const kit::Finding& finding) override {
        output_.vWrite(fmt::format("::{} {}::{}\n", commandOf(finding.severity), sProperties(finding, paths_),
                                   sCommandMessage(finding)));
    }

    void vEnd(const CheckResult& result) override {
        for (const auto& [subject, reason] : result.failures)
            output_.vWrite(fmt::format("::error::{}: {}\n", sData(subject), sData(reason)));
        for (const auto& fixed : result.fixed)
            output_.vWrite(fmt::format("::notice::fixed since the baseline: {}\n", sData(fixed)));
        for (const auto& [code, count] : result.omitted)
            output_.vWrite(fmt::format("::notice::... and {} more [{}]\n", count, code));
        // Where not even a document was looked at, there is nothing to sum up.
        if (result.failures.empty() || result.counts.documentsChecked != 0)
            output_.vWrite(sSummary(result.counts) + '\n');
    }

private:
    Output& output_;
    RepositoryPaths paths_;
};

} // namespace

std::unique_ptr<FindingWriter> pGithubFindings(Output& output, const RepositoryPaths& paths) {
    return std::make_unique<GithubFindings>(output, paths);
}

} // namespace kiv::kivifc
