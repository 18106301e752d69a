#include "Kit/Findings/Rules/RuleNames.h"

#include "Kit/Findings/CheckedSet.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace kiv::kit {

namespace {

class RuleNamesTest : public testing::Test {
protected:
    std::unique_ptr<ifc::def::schema::Schema> schema_ =
        test::schemaFromText("ENTITY IfcWall;\nEND_ENTITY;\nTYPE IfcLabel = STRING;\nEND_TYPE;\n"
                             "FUNCTION IfcCount\nEND_FUNCTION;\nRULE IfcOne FOR (IfcWall);\nEND_RULE;\n");
    std::unique_ptr<ifc::def::schema::Schema> older_ = test::schemaFromText("ENTITY IfcOld;\nEND_ENTITY;\n");
    std::unique_ptr<ifc::def::schema::Schema> oldest_ =
        test::schemaFromText("ENTITY IfcOld;\nEND_ENTITY;\nENTITY IfcOldest;\nEND_ENTITY;\n");
    test::CheckedSet set_{*schema_, "<PropertySetDef/>"};
    RuleRun run_ = set_.run();
};

TEST_F(RuleNamesTest, TheNearestIsOfTheKindThatIsAskedFor) {
    RuleNames names(run_);
    EXPECT_EQ(names.nearest("IfcWal", SchemaNames::Entities), "IfcWall");
    EXPECT_EQ(names.nearest("IfcWal", SchemaNames::Types), "");
    EXPECT_EQ(names.nearest("IfcLabl", SchemaNames::Types), "IfcLabel");
    EXPECT_EQ(names.nearest("IfcLabl", SchemaNames::Entities), "");
    EXPECT_EQ(names.nearest("IfcCoun", SchemaNames::Entities), "");
    EXPECT_EQ(names.nearestOf("Nam", {"Tag", "Name"}), "Name");
    EXPECT_EQ(names.nearestOf("Nam", {}), "");
    EXPECT_EQ(names.sSchema(), "TEST");
}

TEST_F(RuleNamesTest, ItIsNotedWhenThereIsOne) {
    RuleNames names(run_);
    FindingDraft draft;
    names.vNearestNote(draft, "IfcWal", SchemaNames::Entities);
    ASSERT_EQ(draft.finding.notes.size(), 1U);
    EXPECT_EQ(draft.finding.notes[0].message, "did you mean \"IfcWall\"?");
    names.vNearestNote(draft, "Something", SchemaNames::Entities);
    EXPECT_EQ(draft.finding.notes.size(), 1U);
}

TEST_F(RuleNamesTest, InOneDocumentSearchesAreLimited) {
    RuleNames names(run_);
    for (std::size_t search = 0; search < RuleNames::maxSearches; ++search)
        ASSERT_EQ(names.nearest("IfcWal", SchemaNames::Entities), "IfcWall") << search;
    EXPECT_EQ(names.nearest("IfcWal", SchemaNames::Entities), "");
}

TEST_F(RuleNamesTest, TheFirstOtherReleaseThatHasTheName) {
    set_.context.others = {{"older", *older_}, {"oldest", *oldest_}};
    const RuleNames names(run_);
    ASSERT_NE(names.pOtherWith("IFCOLD"), nullptr);
    EXPECT_EQ(names.pOtherWith("IFCOLD")->name, "older");
    EXPECT_EQ(names.pOtherWith("IfcOldest")->name, "oldest");
    EXPECT_EQ(names.pOtherWith("IfcWall"), nullptr);
}

TEST_F(RuleNamesTest, KindsInWords) {
    const auto kindOf = [&](const char* name) { return sKindOf(test::objectOf(*schema_, name)); };
    EXPECT_EQ(kindOf("IfcWall"), "an entity");
    EXPECT_EQ(kindOf("IfcLabel"), "a defined type");
    EXPECT_EQ(kindOf("IfcCount"), "a function");
    EXPECT_EQ(kindOf("IfcOne"), "a rule");
    EXPECT_EQ(sKindOf(*test::typeOf(*schema_, "IfcLabel").pUnderlying()), "a data type");
}

} // namespace

} // namespace kiv::kit
