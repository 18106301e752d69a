#include "kivifc/Findings/Excerpt.h"
#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Program/OneLine.h"

#include <fmt/format.h>

// Findings as lines of text.
namespace kiv::kivifc {

namespace {

using kit::Severity;

// As clang colours its messages: places and messages bold, the severities red, magenta and cyan.
constexpr std::string_view Bold = "\033[1m";
constexpr std::string_view Green = "\033[1;32m";
constexpr std::string_view ColourOff = "\033[0m";

std::string_view colourOf(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return "\033[1;31m";
    case Severity::Warning:
        return "\033[1;35m";
    default:
        return "\033[1;36m";
    }
}

class TextFindings final : public FindingWriter {
public:
    TextFindings(Output& output, SourceLines& sources, const TextFindingOptions& options) :
        output_(output), sources_(sources), options_(options) {}

    void vFindingWrite(const kit::Finding& finding) override {
        vLineWrite(finding.place, finding.severity,
                   fmt::format("{} [{}]", sOneLine(finding.message), finding.code));
        vExcerptWrite(finding.place);
        for (const auto& note : finding.notes) {
            vLineWrite(note.place.value_or(finding.place), Severity::Note, sOneLine(note.message));
            if (note.place)
                vExcerptWrite(*note.place);
        }
    }

    void vEnd(const CheckResult& result) override {
        for (const auto& [code, count] : result.omitted)
            output_.vWrite(fmt::format("... and {} more [{}]\n", count, code));
        if (!options_.hasSummary)
            return;
        for (const auto& fixed : result.fixed)
            output_.vWrite(fmt::format("fixed since the baseline: {}\n", sOneLine(fixed)));
        output_.vWrite(sSummary(result.counts) + '\n');
    }

private:
    std::string sColoured(std::string_view text, std::string_view colour) const {
        return options_.isColoured ? fmt::format("{}{}{}", colour, text, ColourOff) : std::string(text);
    }

    void vLineWrite(const kit::Place& place, Severity severity, std::string_view message) {
        output_.vWrite(fmt::format("{} {} {}\n", sColoured(sPlace(place) + ':', Bold),
                                   sColoured(fmt::format("{}:", severityText(severity)), colourOf(severity)),
                                   sColoured(message, Bold)));
    }

    void vExcerptWrite(const kit::Place& place) {
        if (!options_.hasContext || place.position.line == 0)
            return;
        const auto& [line, column, length] = place.position;
        const auto excerpt = excerptOf(sources_.part(place.path, line, column), place.position);
        if (excerpt.caret.empty())
            return;
        output_.vWrite(fmt::format("{}\n{}\n", excerpt.source, sColoured(excerpt.caret, Green)));
    }

    Output& output_;
    SourceLines& sources_;
    TextFindingOptions options_;
};

} // namespace

std::unique_ptr<FindingWriter> pTextFindings(Output& output, SourceLines& sources,
                                             const TextFindingOptions& options) {
    return std::make_unique<TextFindings>(output, sources, options);
}

} // namespace kiv::kivifc
