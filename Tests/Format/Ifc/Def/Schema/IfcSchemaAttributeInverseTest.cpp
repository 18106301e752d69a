#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::IsEmpty;

const kiv::assert::AssertRecord NotFound{0, "Entity not found",
                                         "kiv::ifc::def::schema::AttributeInverse::vUpdate",
                                         "Source/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse", 0};

/// A schema with an entity X that has one inverse attribute, "Inv : " and this text.
struct Declared {
    explicit Declared(const std::string& text) :
        schema(schemaFromText("ENTITY X;\n  Own : Rel;\n INVERSE\n  Inv : " + text +
                              "\nEND_ENTITY;\n"
                              "ENTITY Base\n SUPERTYPE OF (ONEOF (Rel));\n"
                              "  Inherited : X;\n"
                              "END_ENTITY;\n"
                              "ENTITY Rel\n SUBTYPE OF (Base);\n"
                              "  Target : SET OF X;\n"
                              " INVERSE\n"
                              "  Back : SET OF X FOR Own;\n"
                              "END_ENTITY;\n"
                              "TYPE Rels = SET OF Rel;\nEND_TYPE;\n"
                              "FUNCTION Fun : REAL;\nEND_FUNCTION;")),
        inverse(entityOf(*schema, "X").getAttributesInverse()[0]) {}

    std::unique_ptr<Schema> schema;
    const AttributeInverse& inverse;
};

TEST(AttributeInverseTest, KeepsWhatWasRead) {
    const Declared declared("SET [0:1] OF Rel FOR Target;");
    EXPECT_EQ(declared.inverse.getName(), "Inv");
    EXPECT_EQ(declared.inverse.getNameUpper(), "INV");
    EXPECT_EQ(declared.inverse.getTypeText(), "SET [0:1] OF Rel");
    EXPECT_EQ(declared.inverse.getForAttributeName(), "Target");
    EXPECT_EQ(&declared.inverse.getEntity(), &entityOf(*declared.schema, "X"));
    EXPECT_FALSE(declared.inverse.isOptional());
}

TEST(AttributeInverseTest, ResolvesItsEntityAndTheAttributeThatRefersBack) {
    for (const auto* text : {"Rel FOR Target;", "SET [0:1] OF Rel FOR Target;", "LIST OF REL FOR Target;",
                             "ARRAY [1:2] OF rel FOR Target;"}) {
        AssertCollector reports;
        const Declared declared(text);
        EXPECT_EQ(declared.inverse.pReferredEntity(), &entityOf(*declared.schema, "Rel")) << text;
        EXPECT_EQ(declared.inverse.pReferredAttribute(),
                  &entityOf(*declared.schema, "Rel").getAttributes()[0])
            << text;
        EXPECT_THAT(reports.getRecords(), IsEmpty()) << text;
    }
}

TEST(AttributeInverseTest, ResolvedTypesListTheTypeFromOutsideIn) {
    EXPECT_THAT(namesOf(Declared("SET [0:1] OF Rel FOR Target;").inverse.getResolvedTypes()),
                ElementsAre("SET", "Rel"));
    EXPECT_THAT(namesOf(Declared("Rel FOR Target;").inverse.getResolvedTypes()), ElementsAre("Rel"));
}

TEST(AttributeInverseTest, AttributeOfASupertypeOfTheReferredEntityIsFound) {
    AssertCollector reports;
    const Declared declared("SET OF Rel FOR Inherited;");
    EXPECT_EQ(declared.inverse.pReferredEntity(), &entityOf(*declared.schema, "Rel"));
    EXPECT_EQ(declared.inverse.pReferredAttribute(), &entityOf(*declared.schema, "Base").getAttributes()[0]);
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(AttributeInverseTest, AttributeThatIsNotFoundIsReportedOnceAndTheEntityIsKept) {
    // Attribute names are compared as written, and inverse attributes are none that could be referred to.
    for (const auto* text : {"SET OF Rel FOR Missing;", "SET OF Rel FOR target;", "Rel FOR Back;",
                             "Rel FOR ;", "Rel FOR  Target;", "Rel FOR Target ;"}) {
        AssertCollector reports;
        const Declared declared(text);
        EXPECT_EQ(declared.inverse.pReferredEntity(), &entityOf(*declared.schema, "Rel")) << text;
        EXPECT_EQ(declared.inverse.pReferredAttribute(), nullptr) << text;
        EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound)) << text;
    }
}

TEST(AttributeInverseTest, TypeThatIsNoEntityIsReportedOnce) {
    for (const auto* text : {"Missing FOR Target;", "Rels FOR Target;", "Fun FOR Target;", "REAL FOR Target;",
                             "SET OF SET OF Rel FOR Target;", "SET OF Rels FOR Target;",
                             "SET OF REAL FOR Target;", "SELECT (Rel) FOR Target;"}) {
        AssertCollector reports;
        const Declared declared(text);
        EXPECT_EQ(declared.inverse.pReferredEntity(), nullptr) << text;
        EXPECT_EQ(declared.inverse.pReferredAttribute(), nullptr) << text;
        EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound)) << text;
    }
}

TEST(AttributeInverseTest, ElementThatIsUnknownIsReportedByTheAggregateToo) {
    AssertCollector reports;
    const Declared declared("SET [0:?] OF Missing FOR Target;");
    EXPECT_EQ(declared.inverse.pReferredEntity(), nullptr);
    EXPECT_THAT(reports.getMessages(), testing::Contains("Type not found").Times(1));
    EXPECT_THAT(reports.getRecords(), testing::Contains(NotFound).Times(1));
    EXPECT_EQ(reports.getRecords().size(), 2U);
}

TEST(AttributeInverseTest, AreResolvedOneByOneInTheOrderOfTheDeclaration) {
    AssertCollector reports;
    const auto schema = schemaFromText("ENTITY X;\n"
                                       " INVERSE\n"
                                       "  I1 : SET OF Rel FOR Missing;\n"
                                       "  I2 : SET OF Rel FOR A1;\n"
                                       "  I3 : SET OF Rel FOR A2;\n"
                                       "END_ENTITY;\n"
                                       "ENTITY Rel;\n"
                                       "  A1 : X;\n"
                                       "  A2 : X;\n"
                                       "END_ENTITY;");
    const auto& inverses = entityOf(*schema, "X").getAttributesInverse();
    ASSERT_EQ(inverses.size(), 3U);
    const auto& attributes = entityOf(*schema, "Rel").getAttributes();
    EXPECT_EQ(inverses[0].pReferredAttribute(), nullptr);
    EXPECT_EQ(inverses[1].pReferredAttribute(), &attributes[0]);
    EXPECT_EQ(inverses[2].pReferredAttribute(), &attributes[1]);
    EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound));
}

TEST(AttributeInverseTest, ReferToTheNearestAttributeOfALineOfHundredsOfSupertypes) {
    // More steps than are walked: some are answered by walks, others by the table.
    AssertCollector reports;
    constexpr int Count = 800;
    std::string text = "ENTITY E0;\n  A : E0;\n  B : E0;\n  A : E0;\nEND_ENTITY;\n";
    std::string inverses;
    for (int number = 1; number <= Count; ++number) {
        const auto name = "E" + std::to_string(number);
        text += "ENTITY " + name + "\n SUBTYPE OF (E" + std::to_string(number - 1) + ");\n" +
                (number == 400 ? "  A : E0;\n" : "") + "END_ENTITY;\n";
        inverses += "  IA : " + name + " FOR A;\n  IB : SET OF " + name + " FOR B;\n";
    }
    const auto schema = schemaFromText(text + "ENTITY X;\n INVERSE\n" + inverses + "END_ENTITY;");
    const auto& found = entityOf(*schema, "X").getAttributesInverse();
    ASSERT_EQ(found.size(), 2U * Count);
    for (std::size_t number = 1; number <= Count; ++number) {
        SCOPED_TRACE(number);
        EXPECT_EQ(found[2 * number - 2].pReferredAttribute(),
                  &entityOf(*schema, number < 400 ? "E0" : "E400").getAttributes()[0]);
        EXPECT_EQ(found[2 * number - 1].pReferredAttribute(), &entityOf(*schema, "E0").getAttributes()[1]);
    }
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(AttributeInverseTest, ReferToAttributesOfAnEntityThatHasHundreds) {
    AssertCollector reports;
    constexpr int Count = 500;
    std::string attributes;
    std::string inverses;
    for (int number = 0; number < Count; ++number) {
        attributes += "  A" + std::to_string(number) + " : X;\n";
        inverses += "  I : X FOR A" + std::to_string(Count - 1 - number) + ";\n";
    }
    const auto schema = schemaFromText("ENTITY X;\n" + attributes + " INVERSE\n" + inverses + "END_ENTITY;");
    const auto& entity = entityOf(*schema, "X");
    for (std::size_t number = 0; number < Count; ++number)
        EXPECT_EQ(entity.getAttributesInverse()[number].pReferredAttribute(),
                  &entity.getAttributes()[Count - 1 - number]);
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(AttributeInverseTest, WhatIsMissingInALineOfHundredsOfSupertypesIsReportedInTurn) {
    AssertCollector reports;
    std::string text = "ENTITY E0;\n  A : E0;\nEND_ENTITY;\n";
    constexpr int Count = 400;
    std::string inverses;
    std::vector<std::string> expected;
    for (int number = 1; number <= Count; ++number) {
        text += "ENTITY E" + std::to_string(number) + "\n SUBTYPE OF (E" + std::to_string(number - 1) +
                ");\nEND_ENTITY;\n";
        inverses += "  I : E400 FOR a;\n  I : SET OF E400 FOR A;\n  I : SET OF Missing FOR A;\n";
        expected.insert(expected.end(), {"Entity not found", "Type not found", "Entity not found"});
    }
    const auto schema = schemaFromText(text + "ENTITY X;\n INVERSE\n" + inverses + "END_ENTITY;");
    EXPECT_EQ(reports.getMessages(), expected);
    EXPECT_EQ(entityOf(*schema, "X").getAttributesInverse()[3 * Count - 2].pReferredAttribute(),
              &entityOf(*schema, "E0").getAttributes()[0]);
}

TEST(AttributeInverseTest, MayReferToItsOwnEntity) {
    AssertCollector reports;
    const auto schema =
        schemaFromText("ENTITY X;\n  Parent : X;\n INVERSE\n  Children : SET OF X FOR Parent;\nEND_ENTITY;");
    const auto& entity = entityOf(*schema, "X");
    EXPECT_EQ(entity.getAttributesInverse()[0].pReferredEntity(), &entity);
    EXPECT_EQ(entity.getAttributesInverse()[0].pReferredAttribute(), &entity.getAttributes()[0]);
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(AttributeInverseTest, ResolvingItAgainChangesNothing) {
    const Declared declared("SET [0:1] OF Rel FOR Target;");
    const auto* const type = declared.inverse.pFirstType();
    const auto* const attribute = declared.inverse.pReferredAttribute();
    ASSERT_NE(attribute, nullptr);
    const AssertCollector reports;
    // A schema hands out its entities as const; they are not.
    const_cast<Entity&>(entityOf(*declared.schema, "X")).vUpdateInverse(*declared.schema);
    EXPECT_EQ(declared.inverse.pFirstType(), type);
    EXPECT_EQ(declared.inverse.pReferredAttribute(), attribute);
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(AttributeInverseTest, LinkToTheXmlConfigurationIsReplacedByALaterOne) {
    const Declared declared("Rel FOR Target;");
    EXPECT_EQ(declared.inverse.pXmlAttribute(), nullptr);
    // Only the addresses matter here; the records' class is not known to this test.
    const int places[2] = {};
    const auto* first = reinterpret_cast<const kiv::ifc::def::xmlschema::AttributeInverse*>(&places[0]);
    const auto* second = reinterpret_cast<const kiv::ifc::def::xmlschema::AttributeInverse*>(&places[1]);
    declared.inverse.vXmlAttributeSet(first);
    EXPECT_EQ(declared.inverse.pXmlAttribute(), first);
    declared.inverse.vXmlAttributeSet(second);
    EXPECT_EQ(declared.inverse.pXmlAttribute(), second);
}

} // namespace
