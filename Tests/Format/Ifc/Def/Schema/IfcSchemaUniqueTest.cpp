#include "kiv/Format/Ifc/Def/Schema/IfcSchemaUnique.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;

struct RuleRow {
    std::string_view line;
    std::size_t pos;
    Strings names;
};

TEST(UniqueTest, KeepsTheAttributeNamesOfARule) {
    const auto schema = schemaFromText("ENTITY A;\nEND_ENTITY;");
    const RuleRow rows[] = {
        {"UR1 : Name;", 6, {"Name"}},
        {"\tUR1 : Name, Version;", 7, {"Name", "Version"}},
        {"UR1 : A,B,C;", 6, {"A", "B", "C"}},
        {"UR1 : SELF\\IfcRoot.Name, Level;", 6, {"SELF\\IfcRoot.Name", "Level"}},
        {"UR1 : Name", 6, {"Name"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        LineAndStream text(row.line);
        Unique unique;
        unique.vUniqueAdd(entityOf(*schema, "A"), "UR1", text.line, row.pos);
        ASSERT_EQ(unique.getRules().size(), 1U);
        EXPECT_EQ(unique.getRules()[0].label, "UR1");
        EXPECT_EQ(unique.getRules()[0].attributeNames, row.names);
    }
}

TEST(UniqueTest, AppendsOneRuleAfterTheOther) {
    const auto schema = schemaFromText("ENTITY A;\nEND_ENTITY;");
    Unique unique;
    EXPECT_TRUE(unique.getRules().empty());
    LineAndStream first("UR1 : B;");
    unique.vUniqueAdd(entityOf(*schema, "A"), "UR1", first.line, 6);
    LineAndStream second("UR1 : C;");
    unique.vUniqueAdd(entityOf(*schema, "A"), "UR1", second.line, 6);
    ASSERT_EQ(unique.getRules().size(), 2U);
    EXPECT_EQ(unique.getRules()[0].attributeNames, Strings{"B"});
    EXPECT_EQ(unique.getRules()[1].attributeNames, Strings{"C"});
}

TEST(UniqueTest, ClauseOfAnEntityHoldsItsRulesInOrder) {
    const auto schema = schemaFromText("ENTITY A;\n"
                                       "  Name : STRING;\n"
                                       " UNIQUE\n"
                                       "\tUR1 : Name;\n"
                                       "\tUR2 : Name, Level;\n"
                                       "END_ENTITY;");
    const auto* unique = entityOf(*schema, "A").pUnique();
    ASSERT_NE(unique, nullptr);
    ASSERT_EQ(unique->getRules().size(), 2U);
    EXPECT_EQ(unique->getRules()[0].label, "UR1");
    EXPECT_EQ(unique->getRules()[0].attributeNames, Strings{"Name"});
    EXPECT_EQ(unique->getRules()[1].label, "UR2");
    EXPECT_EQ(unique->getRules()[1].attributeNames, (Strings{"Name", "Level"}));
}

TEST(UniqueTest, LabelKeepsWhatFollowsItAndLosesWhatPrecedesIt) {
    const auto schema = schemaFromText("ENTITY A;\n"
                                       " UNIQUE\n"
                                       " \t UR1 \t : Name;\n"
                                       "END_ENTITY;");
    const auto* unique = entityOf(*schema, "A").pUnique();
    ASSERT_NE(unique, nullptr);
    ASSERT_EQ(unique->getRules().size(), 1U);
    EXPECT_EQ(unique->getRules()[0].label, "UR1 \t");
}

TEST(UniqueTest, EntityWithoutTheClauseHasNone) {
    const auto schema = schemaFromText("ENTITY A;\n  Names : LIST [1:?] OF UNIQUE STRING;\nEND_ENTITY;");
    EXPECT_EQ(entityOf(*schema, "A").pUnique(), nullptr);
}

} // namespace
