#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"

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

/// A schema with some names and an entity X whose one attribute has this type.
struct Declared {
    explicit Declared(const std::string& typeText) :
        schema(schemaFromText("ENTITY X;\n  Attr : " + typeText +
                              "\nEND_ENTITY;\n"
                              "ENTITY Ent;\nEND_ENTITY;\n"
                              "TYPE Label = STRING;\nEND_TYPE;\n"
                              "TYPE Labels = LIST OF Label;\nEND_TYPE;\n"
                              "FUNCTION Fun : REAL;\nEND_FUNCTION;")),
        attribute(entityOf(*schema, "X").getAttributes()[0]) {}

    std::unique_ptr<Schema> schema;
    const Attribute& attribute;
};

// ---- What was read

TEST(AttributeTest, KnowsItsEntityItsNamesAndItsHash) {
    const auto schema = schemaFromText("ENTITY X;\n  IfcWall : REAL;\nEND_ENTITY;");
    const auto& attribute = entityOf(*schema, "X").getAttributes()[0];
    EXPECT_EQ(&attribute.getEntity(), &entityOf(*schema, "X"));
    EXPECT_EQ(attribute.getName(), "IfcWall");
    EXPECT_EQ(attribute.getNameUpper(), "IFCWALL");
    // That of the name as written; the upper-cased one hashes to 0x7BD1647B.
    EXPECT_EQ(attribute.getNameHash(), 0x99ECC1DBU);
    EXPECT_FALSE(attribute.isOptional());
    EXPECT_EQ(attribute.getTypeText(), "REAL");
}

TEST(AttributeTest, OptionalIsAFlagAndNoPartOfTheTypeText) {
    const Declared declared("OPTIONAL SET [1:?] OF Label;");
    EXPECT_TRUE(declared.attribute.isOptional());
    EXPECT_EQ(declared.attribute.getTypeText(), "SET [1:?] OF Label");
}

TEST(AttributeTest, LinkToTheXmlConfigurationIsReplacedByALaterOne) {
    const Declared declared("REAL;");
    EXPECT_EQ(declared.attribute.pXmlAttribute(), nullptr);
    // Only the addresses matter here; the records' class is not known to this test.
    const int places[2] = {};
    const auto* first = reinterpret_cast<const kiv::ifc::def::xmlschema::Attribute*>(&places[0]);
    const auto* second = reinterpret_cast<const kiv::ifc::def::xmlschema::Attribute*>(&places[1]);
    declared.attribute.vXmlAttributeSet(first);
    EXPECT_EQ(declared.attribute.pXmlAttribute(), first);
    declared.attribute.vXmlAttributeSet(second);
    EXPECT_EQ(declared.attribute.pXmlAttribute(), second);
}

// ---- The look-up key

TEST(AttributeNameTest, OfAnAttributeIsItsNameAsWritten) {
    const auto schema = schemaFromText("ENTITY X;\n  IfcWall : REAL;\n  Other : REAL;\nEND_ENTITY;");
    const auto& attributes = entityOf(*schema, "X").getAttributes();
    const AttributeName key(attributes[0]);
    EXPECT_EQ(key.getView(), "IfcWall");
    EXPECT_EQ(key.getHash(), 0x99ECC1DBU);
    EXPECT_TRUE(key.boMatches(attributes[0]));
    EXPECT_FALSE(key.boMatches(attributes[1]));
}

TEST(AttributeNameTest, OfATextMatchesThatTextOnly) {
    const auto schema = schemaFromText("ENTITY X;\n  IfcWall : REAL;\nEND_ENTITY;");
    const auto& attribute = entityOf(*schema, "X").getAttributes()[0];
    EXPECT_EQ(AttributeName("IfcWall").getHash(), 0x99ECC1DBU);
    EXPECT_TRUE(AttributeName("IfcWall").boMatches(attribute));
    for (const auto* other : {"ifcwall", "IFCWALL", "IfcWal", "IfcWalls", ""})
        EXPECT_FALSE(AttributeName(other).boMatches(attribute)) << other;
}

TEST(AttributeNameTest, DistinguishesNamesOfOneHash) {
    const auto schema = schemaFromText("ENTITY X;\n  LQNQX : REAL;\n  DBZHRD : REAL;\nEND_ENTITY;");
    const auto& entity = entityOf(*schema, "X");
    EXPECT_EQ(AttributeName("ZAORB").getHash(), AttributeName("LQNQX").getHash());
    EXPECT_EQ(entity.pAttributeFromName(AttributeName("ZAORB"), true), nullptr);
    EXPECT_EQ(AttributeName("CNQZ").getHash(), AttributeName("DBZHRD").getHash());
    EXPECT_EQ(entity.pAttributeFromName(AttributeName("CNQZ"), true), nullptr);
}

// ---- The resolved types

struct ChainRow {
    std::string typeText;
    /// The names of the resolved types from outside in.
    Strings chain;
};

TEST(AttributeTest, ResolvedTypesListTheTypeFromOutsideIn) {
    const ChainRow rows[] = {
        {"REAL;", {"REAL"}},
        {"STRING(255);", {"STRING(255)"}},
        {"BINARY(32);", {"BINARY(32)"}},
        {"Label;", {"Label"}},
        {"LABEL;", {"Label"}},
        {"Ent;", {"Ent"}},
        {"Fun;", {"Fun"}},
        {"OPTIONAL Ent;", {"Ent"}},
        {"LIST [1:?] OF Label;", {"LIST", "Label"}},
        {"SET OF REAL;", {"SET", "REAL"}},
        {"LIST [1:?] OF LIST [2:3] OF Ent;", {"LIST", "LIST", "Ent"}},
        {"ARRAY [1:2] OF SET OF LIST OF STRING(5);", {"ARRAY", "SET", "LIST", "STRING(5)"}},
        // The chain ends at a named object, whatever that is.
        {"Labels;", {"Labels"}},
        {"LIST OF Labels;", {"LIST", "Labels"}},
        {"ENUMERATION OF (A, B);", {"ENUMERATION"}},
        {"SELECT (A, B);", {"SELECT"}},
        {"X;", {"X"}},
        {"SET OF X;", {"SET", "X"}},
    };
    for (const auto& row : rows) {
        AssertCollector reports;
        const Declared declared(row.typeText);
        EXPECT_EQ(namesOf(declared.attribute.getResolvedTypes()), row.chain) << row.typeText;
        EXPECT_THAT(reports.getRecords(), IsEmpty()) << row.typeText;
    }
}

TEST(AttributeTest, UnknownTypeLeavesTheResolvedTypesEmptyWithoutAReport) {
    for (const auto* text :
         {"Missing;", "Label ;", ";", "real;", "BAG OF Label;", "LIST[1:2] OF Label;", "REAL(5);"}) {
        AssertCollector reports;
        const Declared declared(text);
        EXPECT_THAT(declared.attribute.getResolvedTypes(), IsEmpty()) << text;
        EXPECT_EQ(declared.attribute.pFirstType(), nullptr) << text;
        EXPECT_THAT(reports.getRecords(), IsEmpty()) << text;
    }
}

TEST(AttributeTest, ElementThatIsUnknownEndsTheResolvedTypes) {
    AssertCollector reports;
    const Declared declared("SET OF LIST OF Missing;");
    EXPECT_THAT(namesOf(declared.attribute.getResolvedTypes()), ElementsAre("SET", "LIST"));
    EXPECT_THAT(reports.getMessages(), ElementsAre("Type not found"));
}

TEST(AttributeTest, ResolvedTypesAreTheElementsThatTheAggregatesHold) {
    const Declared declared("LIST [1:?] OF LIST [2:3] OF STRING(5);");
    const auto chain = declared.attribute.getResolvedTypes();
    ASSERT_EQ(chain.size(), 3U);
    EXPECT_EQ(DataTypeListInterface::pFrom(chain[0])->pElement(), chain[1]);
    EXPECT_EQ(DataTypeListInterface::pFrom(chain[1])->pElement(), chain[2]);
    EXPECT_EQ(declared.attribute.pFirstType(), chain[0]);
}

TEST(AttributeTest, NothingIsBuiltTwice) {
    const Declared declared("LIST [1:?] OF LIST [2:3] OF STRING(5);");
    Strings names;
    for (const auto& type : declared.schema->getDataTypes())
        names.emplace_back(type->getName());
    // The first is that of the type Labels, which is read before anything is resolved.
    EXPECT_THAT(names, ElementsAre("LIST", "LIST", "LIST", "STRING(5)"));
}

TEST(AttributeTest, ObjectOfTheSchemaGoesBeforeADataType) {
    const auto schema = schemaFromText("ENTITY X;\n  A1 : Real;\n  A2 : REAL;\nEND_ENTITY;\n"
                                       "TYPE Real = INTEGER;\nEND_TYPE;");
    for (const auto& attribute : entityOf(*schema, "X").getAttributes())
        EXPECT_EQ(attribute.pFirstType(), &typeOf(*schema, "Real"));
}

TEST(AttributeTest, AttributeOfItsOwnEntityEnds) {
    const auto schema =
        schemaFromText("ENTITY X\n SUBTYPE OF (Y);\n  A1 : X;\n  A2 : LIST OF X;\n  A3 : Y;\nEND_ENTITY;\n"
                       "ENTITY Y;\n  A4 : X;\nEND_ENTITY;");
    const auto& attributes = entityOf(*schema, "X").getAttributes();
    EXPECT_THAT(namesOf(attributes[0].getResolvedTypes()), ElementsAre("X"));
    EXPECT_THAT(namesOf(attributes[1].getResolvedTypes()), ElementsAre("LIST", "X"));
    EXPECT_THAT(namesOf(attributes[2].getResolvedTypes()), ElementsAre("Y"));
}

} // namespace
