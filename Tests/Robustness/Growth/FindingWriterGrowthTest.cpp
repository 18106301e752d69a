// Findings in places that are hard to show: many on one line, and by turns in one document and another.

#include "Robustness/Growth/CountedFile.h"
#include "Robustness/Growth/GrowthRow.h"
#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Findings/SourceLines.h"

#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

using kivifc::FindingWriter;
using kivifc::Output;
using kivifc::SourceLines;

using MakeWriter = std::function<std::unique_ptr<FindingWriter>(Output&, SourceLines&)>;

constexpr std::string_view OneLine = "one.xml";
constexpr std::string_view OtherLines = "other.xml";
constexpr std::string_view Piece = "<a\xC3\xA4='x'/>";
/// Its columns: one of its letters has two bytes.
constexpr std::size_t Width = Piece.size() - 1;

kit::Place placeAt(std::string_view path, std::size_t line, std::size_t column) {
    return {std::string(path), {line, column, 1}};
}

kit::Finding finding(const kit::Place& place) {
    kit::Finding finding;
    finding.code = "S001";
    finding.severity = kit::Severity::Error;
    finding.message = "wrong";
    finding.place = place;
    return finding;
}

/// One in each piece of the line, which would be mended.
std::vector<kit::Finding> findingsOnOneLine(std::size_t pieces) {
    std::vector<kit::Finding> findings;
    for (std::size_t number = 0; number != pieces; ++number) {
        findings.push_back(finding(placeAt(OneLine, 1, Width * number + 2)));
        findings.back().edits.push_back({Piece.size() * number + 1, 3, "b"});
    }
    return findings;
}

/// Each has a note about the other document.
std::vector<kit::Finding> findingsByTurns(std::size_t pieces) {
    std::vector<kit::Finding> findings;
    for (std::size_t number = 0; number != pieces; ++number) {
        findings.push_back(finding(placeAt(OneLine, 1, Width * number + 2)));
        findings.back().notes.push_back({"as here", placeAt(OtherLines, number + 1, 2)});
    }
    return findings;
}

void vFindingsWrite(const std::string& line, const std::vector<kit::Finding>& findings,
                    const MakeWriter& pWriter) {
    SourceLines sources;
    sources.vKeep(std::string(OneLine), line);
    sources.vKeep(std::string(OtherLines), sTimes("<b/>\n", line.size() / Piece.size()));
    const auto file = countedFile();
    ASSERT_TRUE(file);
    Output output(file.get());
    const auto writer = pWriter(output, sources);
    writer->vBegin(findings, {});
    for (const auto& each : findings)
        writer->vFindingWrite(each);
    writer->vEnd({});
    EXPECT_EQ(output.sFinish(), "");
}

std::unique_ptr<FindingWriter> pText(Output& output, SourceLines& sources) {
    return kivifc::pTextFindings(output, sources, {});
}

std::unique_ptr<FindingWriter> pSarif(Output& output, SourceLines& sources) {
    return kivifc::pSarifFindings(output, sources);
}

std::vector<GrowthRow> rows(std::string_view name) {
    return {{std::string(name), 20'000, [](std::size_t count) { return sTimes(Piece, count); }}};
}

TEST(FindingWriterGrowthTest, TextOfFindingsOnOneLine) {
    vGrowthExpect(rows("on one line"), [](const std::string& line) {
        vFindingsWrite(line, findingsOnOneLine(line.size() / Piece.size()), pText);
    });
}

TEST(FindingWriterGrowthTest, SarifOfFindingsOnOneLine) {
    vGrowthExpect(rows("on one line"), [](const std::string& line) {
        vFindingsWrite(line, findingsOnOneLine(line.size() / Piece.size()), pSarif);
    });
}

TEST(FindingWriterGrowthTest, TextOfFindingsWithNotesInAnotherDocument) {
    vGrowthExpect(rows("by turns"), [](const std::string& line) {
        vFindingsWrite(line, findingsByTurns(line.size() / Piece.size()), pText);
    });
}

/// Each mark is drawn onto the letter before it, so that no width limits how many of them are shown.
TEST(FindingWriterGrowthTest, TextOfFindingsAmongMarks) {
    constexpr std::string_view Marks = "\xCC\x81\xCC\x81\xCC\x81";
    vGrowthExpect({{"marks", 20'000, [=](std::size_t count) { return "a" + sTimes(Marks, count); }}},
                  [=](const std::string& line) {
                      const auto count = (line.size() - 1) / Marks.size();
                      std::vector<kit::Finding> findings;
                      for (std::size_t number = 0; number != count; ++number)
                          findings.push_back(finding(placeAt(OneLine, 1, 3 * number + 2)));
                      vFindingsWrite(line, findings, pText);
                  });
}

} // namespace

} // namespace kiv::test
