#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSelect.h"

#include "Format/Ifc/Def/Schema/DataTypeTools.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::IsEmpty;

const kiv::assert::AssertRecord MemberNotFound{0, "Object not found",
                                               "kiv::ifc::def::schema::DataTypeSelect::vUpdate",
                                               "Source/Format/Ifc/Def/Schema/IfcSchemaDataType", 453};

constexpr std::string_view Things = "ENTITY Root\n SUPERTYPE OF (ONEOF (A, B));\nEND_ENTITY;\n"
                                    "ENTITY A\n SUPERTYPE OF (ONEOF (A1)) SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                    "ENTITY A1\n SUBTYPE OF (A);\nEND_ENTITY;\n"
                                    "ENTITY Unlisted\n SUBTYPE OF (A1);\nEND_ENTITY;\n"
                                    "ENTITY B\n SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                    "ENTITY Other;\nEND_ENTITY;\n"
                                    "TYPE Label = STRING;\nEND_TYPE;\n"
                                    "TYPE ShortLabel = Label;\nEND_TYPE;\n"
                                    "FUNCTION Fun : REAL;\nEND_FUNCTION;\n";

/// The select of the type S, whose declaration is given.
struct Selected {
    explicit Selected(const std::string& declarations) :
        schema(schemaFromText(std::string(Things) + declarations)),
        select(dynamic_cast<const DataTypeSelect&>(*typeOf(*schema, "S").pDataType())) {}

    bool isCompatible(std::string_view name) const { return select.isCompatible(objectOf(*schema, name)); }

    std::unique_ptr<Schema> schema;
    const DataTypeSelect& select;
};

TEST(DataTypeSelectTest, OfATypeLineHasItsMembersInOrder) {
    AssertCollector reports;
    for (const auto* text : {"TYPE S = SELECT (B, label, A);\nEND_TYPE;",
                             "TYPE S = SELECT\n\t(B\n\t,label\n\t,A);\nEND_TYPE;"}) {
        const Selected selected(text);
        EXPECT_THAT(selected.select.getMemberNames(), ElementsAre("B", "label", "A")) << text;
        EXPECT_THAT(namesOf(selected.select.getMembers()), ElementsAre("B", "Label", "A")) << text;
    }
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(DataTypeSelectTest, OfTwoEntitiesIsAllEntities) {
    EXPECT_TRUE(Selected("TYPE S = SELECT (A, B);\nEND_TYPE;").select.isAllEntities());
}

TEST(DataTypeSelectTest, WithADefinedTypeAmongItsMembersIsNotAllEntities) {
    EXPECT_FALSE(Selected("TYPE S = SELECT (A, Label, B);\nEND_TYPE;").select.isAllEntities());
    EXPECT_FALSE(Selected("TYPE S = SELECT (A, Fun);\nEND_TYPE;").select.isAllEntities());
    EXPECT_FALSE(
        Selected("TYPE S = SELECT (T);\nEND_TYPE;\nTYPE T = SELECT (A);\nEND_TYPE;").select.isAllEntities());
}

TEST(DataTypeSelectTest, MemberThatIsNotFoundIsReportedAndLeftOut) {
    AssertCollector reports;
    const Selected selected("TYPE S = SELECT (Missing, A, REAL, B);\nEND_TYPE;");
    EXPECT_THAT(selected.select.getMemberNames(), ElementsAre("Missing", "A", "REAL", "B"));
    EXPECT_THAT(namesOf(selected.select.getMembers()), ElementsAre("A", "B"));
    EXPECT_TRUE(selected.select.isAllEntities());
    EXPECT_THAT(reports.getRecords(), ElementsAre(MemberNotFound, MemberNotFound));
}

TEST(DataTypeSelectTest, OfAnAttributeTextHasNoMembers) {
    AssertCollector reports;
    const Declared declared(InAttribute, "SELECT (Ent, Missing);");
    const auto& select = declared.as<DataTypeSelect>();
    EXPECT_THAT(select.getMemberNames(), IsEmpty());
    EXPECT_THAT(select.getMembers(), IsEmpty());
    EXPECT_FALSE(select.isCompatible(entityOf(*declared.schema, "Ent")));
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(DataTypeSelectTest, IsCompatibleWithItsMembers) {
    const Selected selected("TYPE S = SELECT (A, Label, Fun);\nEND_TYPE;");
    EXPECT_TRUE(selected.isCompatible("A"));
    EXPECT_TRUE(selected.isCompatible("Label"));
    EXPECT_TRUE(selected.isCompatible("Fun"));
}

TEST(DataTypeSelectTest, IsCompatibleWithSubtypesOfItsMembers) {
    const Selected selected("TYPE S = SELECT (Label, A);\nEND_TYPE;");
    EXPECT_TRUE(selected.isCompatible("A1"));
    // A subtype that no list names is a subtype.
    EXPECT_TRUE(selected.isCompatible("Unlisted"));
}

TEST(DataTypeSelectTest, MemberWithoutADataTypeMeansItselfOnly) {
    const AssertCollector reports;
    const Selected selected("TYPE S = SELECT (T, A);\nEND_TYPE;\nTYPE T;\nEND_TYPE;");
    EXPECT_TRUE(selected.isCompatible("T"));
    EXPECT_TRUE(selected.isCompatible("A"));
    EXPECT_FALSE(selected.isCompatible("Label"));
}

TEST(DataTypeSelectTest, IsNotCompatibleWithOthers) {
    const Selected selected("TYPE S = SELECT (A, Label);\nEND_TYPE;");
    // A supertype, a sibling, another root, a type made of a member, the select's own type, a function.
    for (const auto* name : {"Root", "B", "Other", "ShortLabel", "S", "Fun"})
        EXPECT_FALSE(selected.isCompatible(name)) << name;
    EXPECT_FALSE(selected.select.isCompatible(*typeOf(*selected.schema, "Label").pDataType()));
}

TEST(DataTypeSelectTest, WithoutResolvedMembersIsCompatibleWithNothing) {
    const Selected selected("TYPE S = SELECT (Missing);\nEND_TYPE;");
    for (const auto* name : {"A", "Root", "Label", "S", "Fun"})
        EXPECT_FALSE(selected.isCompatible(name)) << name;
}

TEST(DataTypeSelectTest, IsCompatibleWithWhatASelectAmongItsMembersIsCompatibleWith) {
    const Selected selected("TYPE S = SELECT (Label, T);\nEND_TYPE;\n"
                            "TYPE T = U;\nEND_TYPE;\n"
                            "TYPE U = SELECT (B, V);\nEND_TYPE;\n"
                            "TYPE V = SELECT (A1);\nEND_TYPE;");
    for (const auto* name : {"Label", "T", "B", "V", "A1", "Unlisted"})
        EXPECT_TRUE(selected.isCompatible(name)) << name;
    // U itself is no member of anything; T, which is made of it, is.
    for (const auto* name : {"A", "Root", "U", "S", "Other"})
        EXPECT_FALSE(selected.isCompatible(name)) << name;
}

TEST(DataTypeSelectTest, OfHundredsOfEntitiesIsCompatibleWithThemAndTheirSubtypesOnly) {
    std::string others;
    std::string names;
    for (int number = 0; number < 300; ++number) {
        others += "ENTITY O" + std::to_string(number) + ";\nEND_ENTITY;\n";
        names += "O" + std::to_string(number) + ", ";
    }
    // Few before A are asked about one by one, many are looked up.
    for (const auto& members : {"A, " + names + "Label", names + "A, Label", names + "Label, T"}) {
        SCOPED_TRACE(members.substr(0, 8));
        const Selected selected("TYPE S = SELECT (" + members +
                                ");\nEND_TYPE;\nTYPE T = SELECT (A);\nEND_TYPE;\n" + others +
                                "ENTITY P\n SUBTYPE OF (O299);\nEND_ENTITY;");
        for (const auto* name : {"A", "A1", "Unlisted", "O0", "O63", "O64", "O299", "P", "Label"})
            EXPECT_TRUE(selected.isCompatible(name)) << name;
        for (const auto* name : {"Root", "B", "Other", "ShortLabel", "Fun"})
            EXPECT_FALSE(selected.isCompatible(name)) << name;
    }
}

TEST(DataTypeSelectTest, SelectsThatSelectEachOtherEnd) {
    const Selected selected("TYPE S = SELECT (S, T, B);\nEND_TYPE;\n"
                            "TYPE T = SELECT (S, U);\nEND_TYPE;\n"
                            "TYPE U = SELECT (T, A);\nEND_TYPE;");
    for (const auto* name : {"S", "T", "U", "A", "A1", "B"})
        EXPECT_TRUE(selected.isCompatible(name)) << name;
    for (const auto* name : {"Other", "Root", "Label"})
        EXPECT_FALSE(selected.isCompatible(name)) << name;
}

} // namespace
