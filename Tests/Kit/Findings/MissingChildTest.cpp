#include "Kit/Findings/MissingChild.h"

#include "Kit/Findings/CheckedSet.h"
#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/RuleRun.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

/// A run over a document, and what it refers to.
struct RunSet {
    explicit RunSet(const std::string& text) : set(test::exampleSchema(), text) {}

    test::CheckedSet set;
    RuleRun run = set.run();
};

bool boExplained(std::string_view content, std::string_view child) {
    const RunSet checked("<PropertySetDef>" + std::string(content) + "</PropertySetDef>");
    return boMissingExplained(checked.run, 0, child);
}

/// A set without a name; what is needed besides is there.
std::string sNameless(std::string_view more) {
    return "<PropertySetDef><IfcVersion/><Definition/><ApplicableClasses/><PropertyDefs/>" +
           std::string(more) + "</PropertySetDef>";
}

TEST(MissingChild, IsExplainedByWhatIsInItsPlace) {
    struct {
        std::string_view about;
        std::string_view content;
        std::string_view child;
        bool isExplained;
    } const cases[] = {
        {"nothing else is there", "", "Name", false},
        {"it is misspelt", "<Nam>A</Nam>", "Name", true},
        {"it has another letter case", "<name>A</name>", "Name", true},
        {"it has a prefix", "<x:Name xmlns:x='u'>A</x:Name>", "Name", true},
        {"what it contains is there without it", "<PropertyDef/>", "PropertyDefs", true},
        {"what it contains is in an element of another name", "<Foo><PropertyDef/></Foo>", "PropertyDefs",
         true},
        {"that of the other kind of set is there", "<QtoDefs/>", "PropertyDefs", true},
        {"something else that is known is there", "<Definition>A</Definition>", "Name", false},
        {"an element that belongs elsewhere is there", "<ClassName>IfcWall</ClassName>", "Name", false},
        {"no such child is legal", "<Nam>A</Nam>", "Foo", false},
    };
    for (const auto& row : cases)
        EXPECT_EQ(boExplained(row.content, row.child), row.isExplained) << row.about;
}

TEST(MissingChild, IsExplainedByAnAttribute) {
    EXPECT_TRUE(boMissingExplained(RunSet("<PropertySetDef name='A'/>").run, 0, "Name"));
    EXPECT_TRUE(boMissingExplained(RunSet("<PropertySetDef version='IFC4'/>").run, 0, "IfcVersion"));
    EXPECT_FALSE(boMissingExplained(RunSet("<PropertySetDef templatetype=''/>").run, 0, "Name"));
}

TEST(MissingChild, IsTheSoleOneWhereOneStrangerIs) {
    EXPECT_EQ(soleMissing(RunSet(sNameless("<Title>A</Title>")).run, 0), "Name");
    EXPECT_EQ(soleMissing(RunSet(sNameless("")).run, 0), "");
    EXPECT_EQ(soleMissing(RunSet(sNameless("<Title/><Heading/>")).run, 0), "");
    // Which of the two was meant is not known.
    EXPECT_EQ(soleMissing(RunSet("<PropertySetDef><Title/></PropertySetDef>").run, 0), "");
    EXPECT_EQ(soleMissing(RunSet(sNameless("<Name/><Title/>")).run, 0), "");
    // It belongs elsewhere.
    EXPECT_EQ(soleMissing(RunSet(sNameless("<ClassName/>")).run, 0), "");
}

TEST(MissingChild, IsTheSoleOneWhereTextIs) {
    RunSet checked(sNameless("A"));
    EXPECT_EQ(soleMissing(checked.run, 0), "");
    checked.run.vStrayTextNote(0);
    EXPECT_EQ(soleMissing(checked.run, 0), "Name");
}

} // namespace

} // namespace kiv::kit
