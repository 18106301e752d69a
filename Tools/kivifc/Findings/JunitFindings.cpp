#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Findings/Selection.h"
#include "kivifc/Program/CodePoints.h"
#include "kivifc/Program/OneLine.h"

#include <fmt/format.h>
#include <set>

// Findings as the results of tests.
namespace kiv::kivifc {

namespace {

/// One character of a text that is to be in XML 1.0; a line feed stays.
std::string sXmlCharacter(const CodePoint& point, bool isEscaped) {
    if (!point.isValid || (isEscaped && point.value != '\n'))
        return sEscaped(point);
    switch (point.value) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case 0xFFFE:
    case 0xFFFF:
        return sEscaped(point);
    default:
        return std::string(point.bytes);
    }
}

std::string sXml(std::string_view text) {
    std::string xml;
    for (ShownPoints points(text); points.boNext();)
        xml += sXmlCharacter(points.getPoint(), points.isEscaped());
    return xml;
}

std::string sLines(const kit::Finding& finding) {
    auto text = fmt::format("{}: {}: {} [{}]\n", sPlace(finding.place), severityText(finding.severity),
                            sOneLine(finding.message), finding.code);
    for (const auto& note : finding.notes)
        text +=
            fmt::format("{}: note: {}\n", sPlace(note.place.value_or(finding.place)), sOneLine(note.message));
    return text;
}

/// The findings of one file.
struct TestCase {
    std::string path;
    std::string text;
    std::size_t findings = 0;
    bool isFailed = false;
    bool isBroken = false;
};

class JunitFindings final : public FindingWriter {
public:
    JunitFindings(Output& output, std::optional<kit::Severity> failing) :
        output_(output), failing_(failing) {}

    void vBegin(const std::vector<kit::Finding>& findings, const CheckResult& result) override {
        std::set<std::string_view> files(result.documents.begin(), result.documents.end());
        std::set<std::string_view> failed;
        std::set<std::string_view> broken;
        for (const auto& finding : findings) {
            files.insert(finding.place.path);
            if (isUnreadable(finding))
                broken.insert(finding.place.path);
            else if (isFailing(finding))
                failed.insert(finding.place.path);
        }
        for (const auto path : broken)
            failed.erase(path);
        vStartWrite(files.size() + result.failures.size(), failed.size(),
                    broken.size() + result.failures.size());
        waiting_.insert(result.documents.begin(), result.documents.end());
    }

    void vFindingWrite(const kit::Finding& finding) override {
        if (current_.findings != 0 && current_.path != finding.place.path)
            vCaseEnd();
        current_.path = finding.place.path;
        current_.text += sLines(finding);
        ++current_.findings;
        current_.isBroken = current_.isBroken || isUnreadable(finding);
        current_.isFailed = current_.isFailed || isFailing(finding);
    }

    void vEnd(const CheckResult& result) override {
        vCaseEnd();
        for (const auto& path : waiting_)
            output_.vWrite(fmt::format("    {}/>\n", sCase(path)));
        for (const auto& [subject, reason] : result.failures)
            output_.vWrite(fmt::format("    {}>\n      <error message=\"{}\"/>\n    </testcase>\n",
                                       sCase(subject), sXml(sOneLine(reason))));
        vFixedWrite(result);
        output_.vWrite("  </testsuite>\n</testsuites>\n");
    }

private:
    bool isFailing(const kit::Finding& finding) const { return failing_ && finding.severity >= *failing_; }

    static std::string sCase(std::string_view path) {
        return fmt::format("<testcase classname=\"kivifc check\" name=\"{}\"", sXml(sOneLine(path)));
    }

    void vStartWrite(std::size_t tests, std::size_t failures, std::size_t errors) {
        const auto counts =
            fmt::format("tests=\"{}\" failures=\"{}\" errors=\"{}\"", tests, failures, errors);
        output_.vWrite(fmt::format("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites {0}>\n"
                                   "  <testsuite name=\"kivifc check\" {0}>\n",
                                   counts));
    }

    void vFixedWrite(const CheckResult& result) {
        if (result.fixed.empty())
            return;
        output_.vWrite("    <system-out>");
        for (const auto& fixed : result.fixed)
            output_.vWrite(fmt::format("fixed since the baseline: {}\n", sXml(sOneLine(fixed))));
        output_.vWrite("</system-out>\n");
    }

    void vCaseEnd() {
        if (current_.findings == 0)
            return;
        waiting_.erase(current_.path);
        std::string_view element = "system-out";
        std::string attributes;
        if (current_.isBroken || current_.isFailed) {
            element = current_.isBroken ? "error" : "failure";
            attributes = fmt::format(" message=\"{} finding{}\"", current_.findings,
                                     current_.findings == 1 ? "" : "s");
        }
        output_.vWrite(fmt::format("    {}>\n      <{}{}>{}</{}>\n    </testcase>\n", sCase(current_.path),
                                   element, attributes, sXml(current_.text), element));
        current_ = {};
    }

    Output& output_;
    std::optional<kit::Severity> failing_;
    TestCase current_;
    // Documents without findings up to now.
    std::set<std::string> waiting_;
};

} // namespace

std::unique_ptr<FindingWriter> pJunitFindings(Output& output, std::optional<kit::Severity> failing) {
    return std::make_unique<JunitFindings>(output, failing);
}

} // namespace kiv::kivifc
