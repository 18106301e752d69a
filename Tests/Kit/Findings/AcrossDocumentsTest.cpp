#include "kiv/Kit/Findings/AcrossDocuments.h"

#include "Support/SchemaFromText.h"
#include "kiv/Kit/Documents/SetDocument.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

using Lines = std::vector<std::string>;

SetDocument documentOf(const std::string& path, const std::string& name, bool withPositions = true) {
    ReadOptions options;
    options.withPositions = withPositions;
    return setTextRead("<PropertySetDef>\n<Name>" + name + "</Name></PropertySetDef>", path, options);
}

Lines linesOf(const std::vector<Finding>& findings) {
    Lines lines;
    for (const auto& finding : findings)
        lines.push_back(finding.place.path + ':' + std::to_string(finding.place.position.line) + ' ' +
                        std::string(finding.code));
    return lines;
}

TEST(AcrossDocuments, NoneAndOneAreInNobodysWay) {
    AcrossDocuments across;
    EXPECT_EQ(linesOf(across.getFindings()), Lines());
    across.vAdd(documentOf("a.xml", "Pset_A"));
    EXPECT_EQ(linesOf(across.getFindings()), Lines());
    across.vAdd(documentOf("b.xml", "Pset_B"));
    EXPECT_EQ(linesOf(across.getFindings()), Lines());
}

TEST(AcrossDocuments, SetsOfOneNameAreFoundAndDocumentsMayGo) {
    AcrossDocuments across;
    across.vAdd(documentOf("b.xml", "Pset_A"));
    across.vAdd(documentOf("a.xml", "Pset_A"));
    const auto findings = across.getFindings();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].place.path, "a.xml"); // the one that came later
    EXPECT_EQ(findings[0].place.position.line, 2U);
    EXPECT_EQ(linesOf(across.getFindings()), linesOf(findings)); // may be asked again
}

TEST(AcrossDocuments, SetsOfOneNameAcrossContextsAreAnotherMatter) {
    AcrossDocuments within;
    within.vAdd(documentOf("a.xml", "Pset_A"), "one");
    within.vAdd(documentOf("b.xml", "Pset_A"), "one");
    AcrossDocuments between;
    between.vAdd(documentOf("a.xml", "Pset_A"), "one");
    between.vAdd(documentOf("b.xml", "Pset_A"), "two");
    ASSERT_EQ(within.getFindings().size(), 1U);
    ASSERT_EQ(between.getFindings().size(), 1U);
    EXPECT_NE(within.getFindings()[0].code, between.getFindings()[0].code);
}

TEST(AcrossDocuments, ADocumentWithoutPositionsIsReadOnceMore) {
    AcrossDocuments across;
    across.vAdd(documentOf("a.xml", "Pset_A", false));
    across.vAdd(documentOf("b.xml", "Pset_A", false));
    const auto findings = across.getFindings();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].place.position.line, 2U);
}

TEST(AcrossDocuments, ADocumentWithoutASetIsPassedOver) {
    AcrossDocuments across;
    const std::string broken = "<PropertySetDef>\n<Name>Pset_A</Name>";
    across.vAdd(setTextRead(broken, "a.xml"));
    across.vAdd(setTextRead(broken, "b.xml"));
    across.vAdd(setTextRead("", "c.xml"));
    EXPECT_EQ(linesOf(across.getFindings()), Lines());
}

TEST(AcrossDocuments, IsMovedWithWhatItKnows) {
    AcrossDocuments first;
    first.vAdd(documentOf("a.xml", "Pset_A"));
    AcrossDocuments second(std::move(first));
    second.vAdd(documentOf("b.xml", "Pset_A"));
    AcrossDocuments third;
    third = std::move(second);
    EXPECT_EQ(third.getFindings().size(), 1U);
}

TEST(AcrossDocuments, FindingsAreSortedByPath) {
    AcrossDocuments across;
    for (const auto* path : {"d.xml", "c.xml", "b.xml", "a.xml"})
        across.vAdd(documentOf(path, "Pset_A"));
    Lines paths;
    for (const auto& finding : across.getFindings())
        paths.push_back(finding.place.path);
    EXPECT_EQ(paths, (Lines{"a.xml", "b.xml", "c.xml"}));
}

} // namespace

} // namespace kiv::kit
