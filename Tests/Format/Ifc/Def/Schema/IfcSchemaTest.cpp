#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include "Base/UpperCase.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

/// The text of entities without anything in them.
std::string sEntities(const Strings& names) {
    std::string text;
    for (const auto& name : names)
        text += "ENTITY " + name + ";\nEND_ENTITY;\n";
    return text;
}

/// The owners of attributes, in the attributes' order.
Strings ownersOf(const std::vector<std::reference_wrapper<const Attribute>>& attributes) {
    Strings owners;
    for (const Attribute& attribute : attributes)
        owners.emplace_back(attribute.getEntity().getName());
    return owners;
}

// ---- pObjectFromName

TEST(SchemaTest, FindsAnObjectInAnyLetterCase) {
    const auto schema = schemaFromText(sEntities({"IfcRoot", "IfcWall", "IfcDoor"}));
    const auto* wall = schema->pObjectFromName("IfcWall");
    ASSERT_NE(wall, nullptr);
    EXPECT_EQ(wall->getName(), "IfcWall");
    EXPECT_EQ(schema->pObjectFromName("ifcwall"), wall);
    EXPECT_EQ(schema->pObjectFromName("IFCWALL"), wall);
    EXPECT_EQ(schema->pObjectFromName("iFcWaLl"), wall);
}

TEST(SchemaTest, FindsObjectsOfEveryKind) {
    const auto schema = schemaFromText("TYPE T = REAL;\nEND_TYPE;\n"
                                       "ENTITY E;\nEND_ENTITY;\n"
                                       "FUNCTION F (a : REAL) : REAL;\nEND_FUNCTION;\n"
                                       "RULE R FOR (E);\nEND_RULE;\n");
    EXPECT_EQ(objectOf(*schema, "t").getKind(), ObjectBase::Type::Type);
    EXPECT_EQ(objectOf(*schema, "e").getKind(), ObjectBase::Type::Entity);
    EXPECT_EQ(objectOf(*schema, "f").getKind(), ObjectBase::Type::Function);
    EXPECT_EQ(objectOf(*schema, "r").getKind(), ObjectBase::Type::Rule);
}

TEST(SchemaTest, UnknownNameFindsNothing) {
    const auto schema = schemaFromText(sEntities({"IfcWall"}));
    for (const auto* name : {"IfcWal", "IfcWallX", "IfcDoor", " IfcWall", "IfcWall ", "ifc_wall", "*"})
        EXPECT_EQ(schema->pObjectFromName(name), nullptr) << name;
    EXPECT_EQ(schema->pObjectFromName(std::string_view("IfcWall\0", 8)), nullptr);
}

TEST(SchemaTest, SchemaWithoutObjectsFindsNothing) {
    const auto schema = schemaFromText("");
    EXPECT_EQ(schema->pObjectFromName("A"), nullptr);
    EXPECT_EQ(schema->pObjectFromName(""), nullptr);
    EXPECT_TRUE(schema->getObjects().empty());
    EXPECT_TRUE(schema->getObjectsByName().empty());
    EXPECT_TRUE(schema->getDataTypes().empty());
}

TEST(SchemaTest, EmptyNameFindsNothing) {
    const auto schema = schemaFromText(sEntities({"IfcWall", "IfcDoor"}));
    EXPECT_EQ(schema->pObjectFromName(""), nullptr);
}

TEST(SchemaTest, EmptyNameFindsAnObjectThatWasReadWithoutAName) {
    const auto schema = schemaFromText("ENTITY ;\nEND_ENTITY;\nENTITY A;\nEND_ENTITY;");
    const auto* nameless = schema->pObjectFromName("");
    ASSERT_NE(nameless, nullptr);
    EXPECT_EQ(nameless->getName(), "");
    EXPECT_EQ(nameless->getNameUpperHash(), 0x811C9DC5U);
}

TEST(SchemaTest, LooksUpNamesOfAnyLength) {
    const Strings names{std::string(63, 'a'), std::string(64, 'a'), std::string(65, 'a'),
                        std::string(5000, 'a')};
    const auto schema = schemaFromText(sEntities(names));
    for (const auto& name : names)
        EXPECT_EQ(objectOf(*schema, std::string(name.size(), 'A')).getName(), name);
    EXPECT_EQ(schema->pObjectFromName(std::string(66, 'a')), nullptr);
}

TEST(SchemaTest, LooksUpNamesWithBytesAbove0x7F) {
    const auto schema = schemaFromText(sEntities({"Gr\xFCn", "Gr\xDCn", "\x80"}));
    EXPECT_EQ(objectOf(*schema, "gR\xFCN").getName(), "Gr\xFCn");
    EXPECT_EQ(objectOf(*schema, "gr\xDCn").getName(), "Gr\xDCn");
    EXPECT_EQ(objectOf(*schema, "\x80").getNameHash(), 0x04F3B29FU);
}

TEST(SchemaTest, DistinguishesNamesOfOneHash) {
    // LQNQX and ZAORB hash to 0x671DC101, CNQZ and DBZHRD to 0xB745137F.
    for (const Strings& names :
         {Strings{"LQNQX", "ZAORB", "CNQZ", "DBZHRD"}, Strings{"DBZHRD", "CNQZ", "ZAORB", "LQNQX"}}) {
        const auto schema = schemaFromText(sEntities(names));
        for (const auto& name : names)
            EXPECT_EQ(objectOf(*schema, name).getName(), name);
        EXPECT_EQ(objectOf(*schema, "LQNQX").getNameUpperHash(), 0x671DC101U);
        EXPECT_EQ(objectOf(*schema, "ZAORB").getNameUpperHash(), 0x671DC101U);
        EXPECT_EQ(objectOf(*schema, "CNQZ").getNameUpperHash(), 0xB745137FU);
        EXPECT_EQ(objectOf(*schema, "DBZHRD").getNameUpperHash(), 0xB745137FU);
    }
}

TEST(SchemaTest, DoesNotTakeAnotherNameOfTheSameHash) {
    const auto schema = schemaFromText(sEntities({"ZAORB", "DBZHRD"}));
    EXPECT_EQ(schema->pObjectFromName("LQNQX"), nullptr);
    EXPECT_EQ(schema->pObjectFromName("CNQZ"), nullptr);
}

TEST(SchemaTest, LooksUpAKeyThatIsMadeAlready) {
    const auto schema = schemaFromText(sEntities({"IfcWall", "IfcDoor"}));
    const auto& wall = entityOf(*schema, "IfcWall");
    EXPECT_EQ(schema->pObjectFromName(ObjectName(wall)), &wall);
    EXPECT_EQ(schema->pObjectFromName(ObjectName("IFCWALL")), &wall);
    EXPECT_EQ(schema->pObjectFromName(ObjectName("IfcWall")), nullptr);
}

TEST(SchemaTest, KeyOfOneSchemaFindsTheEntityOfAnother) {
    const auto first = schemaFromText(sEntities({"IfcWall"}));
    const auto second = schemaFromText(sEntities({"IFCwall"}));
    EXPECT_EQ(second->pObjectFromName(ObjectName(entityOf(*first, "IfcWall"))),
              &entityOf(*second, "IfcWall"));
}

// In ASCII the brackets and the backslash are as far from the braces and the stroke as upper-case letters
// from lower-case ones; they are other bytes all the same.
TEST(SchemaTest, NamesThatDifferInOtherBytesThanLettersAreNotMixedUp) {
    const auto schema = schemaFromText(sEntities({"x{", "X[", "X]", "x}", "X\\"}));
    EXPECT_EQ(schema->getObjectsByName().size(), 5U);
    for (const std::string_view name : {"x{", "X[", "X]", "x}", "X\\"}) {
        EXPECT_EQ(entityOf(*schema, name).getName(), name);
        EXPECT_EQ(entityOf(*schema, kiv::sUpper(name)).getName(), name);
    }
    EXPECT_EQ(schema->pObjectFromName("X|"), nullptr);
}

TEST(SchemaTest, AttributesWhoseNamesDifferInOtherBytesThanLettersAreNotMixedUp) {
    const Strings names{"x{", "X[", "X]", "x}", "X\\", "x{y", "X[y"};
    std::string attributes;
    for (const auto& name : names)
        attributes += "  " + name + " : REAL;\n";
    const auto schema = schemaFromText("ENTITY E;\n" + attributes + "END_ENTITY;");
    for (const auto& name : names) {
        const auto found = schema->attributesGet(kiv::sUpper(name));
        ASSERT_EQ(found.size(), 1U) << name;
        EXPECT_EQ(found.front().get().getName(), name);
    }
    EXPECT_TRUE(schema->attributesGet("X|").empty());
    EXPECT_TRUE(schema->attributesGet("X]Y").empty());
}

// ---- Two objects of one name

constexpr std::string_view TwoOfOneName = "ENTITY Same;\n"
                                          "  Tag : REAL;\n"
                                          "END_ENTITY;\n"
                                          "ENTITY SAME;\n"
                                          "  SUBTYPE OF (Other);\n"
                                          "  Tag : STRING(5);\n"
                                          "END_ENTITY;\n"
                                          "ENTITY Other;\n"
                                          "END_ENTITY;";

TEST(SchemaTest, TwoObjectsOfOneNameAreBothOwned) {
    const auto schema = schemaFromText(TwoOfOneName);
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("Same", "SAME", "Other"));
}

TEST(SchemaTest, TwoObjectsOfOneNameAreBothUpdated) {
    const auto schema = schemaFromText(TwoOfOneName);
    EXPECT_THAT(ownersOf(schema->attributesGet("Tag")), UnorderedElementsAre("Same", "SAME"));
    const auto* second = Entity::pFrom(schema->getObjects()[1]);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->pSupertype(), schema->getObjects()[2]);
    ASSERT_EQ(second->getAttributes().size(), 1U);
    EXPECT_NE(second->getAttributes()[0].pFirstType(), nullptr);
}

TEST(SchemaTest, OfTwoObjectsOfOneNameTheNameMapKeepsTheFirstRead) {
    const auto schema = schemaFromText(TwoOfOneName);
    EXPECT_THAT(namesOf(schema->getObjectsByName()), ElementsAre("Other", "Same"));
    EXPECT_EQ(schema->pObjectFromName("same"), schema->getObjects()[0]);
}

TEST(SchemaTest, OfManyObjectsOfOneNameTheFirstReadIsFound) {
    const auto schema = schemaFromText(sEntities(Strings(100, "Same")) + sEntities(Strings(100, "SAME")));
    EXPECT_EQ(schema->getObjects().size(), 200U);
    EXPECT_THAT(schema->getObjectsByName(), ElementsAre(schema->getObjects()[0]));
    EXPECT_EQ(schema->pObjectFromName("same"), schema->getObjects()[0]);
}

TEST(SchemaTest, ObjectsOfOneNameMayDifferInKind) {
    const auto schema = schemaFromText("TYPE Same = REAL;\nEND_TYPE;\nENTITY Same;\nEND_ENTITY;");
    EXPECT_EQ(schema->getObjects().size(), 2U);
    EXPECT_EQ(objectOf(*schema, "SAME").getKind(), ObjectBase::Type::Type);
}

// ---- The sequences of objects

TEST(SchemaTest, ListsObjectsInTheOrderOfTheTextAndInTheOrderOfTheirNames) {
    const auto schema = schemaFromText(sEntities({"b", "C", "A", "BB", "a_", "aA"}));
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("b", "C", "A", "BB", "a_", "aA"));
    // Bytes of the upper-cased names, shorter first on a common prefix; "_" comes after the letters.
    EXPECT_THAT(namesOf(schema->getObjectsByName()), ElementsAre("A", "aA", "a_", "b", "BB", "C"));
}

TEST(SchemaTest, OrdersNamesByUnsignedBytes) {
    const auto schema = schemaFromText(sEntities({"\x80", "z", "A"}));
    EXPECT_THAT(namesOf(schema->getObjectsByName()), ElementsAre("A", "z", "\x80"));
}

// ---- Attributes by name

constexpr std::string_view Inheritance = "ENTITY IfcRoot\n"
                                         " SUPERTYPE OF (ONEOF (IfcWall, IfcDoor));\n"
                                         "  Name : STRING;\n"
                                         "END_ENTITY;\n"
                                         "ENTITY IfcWall;\n"
                                         " SUBTYPE OF (IfcRoot);\n"
                                         "  Height : REAL;\n"
                                         "END_ENTITY;\n"
                                         "ENTITY IfcDoor;\n"
                                         " SUBTYPE OF (IfcRoot);\n"
                                         "  height : REAL;\n"
                                         " INVERSE\n"
                                         "  Walls : SET OF IfcWall FOR Height;\n"
                                         "END_ENTITY;";

TEST(SchemaTest, AttributeIsFoundUnderTheEntityThatDeclaresIt) {
    const auto schema = schemaFromText(Inheritance);
    const auto* name = schema->pAttributeGet("IfcRoot", "name");
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(name, &entityOf(*schema, "IfcRoot").getAttributes()[0]);
    EXPECT_EQ(schema->pAttributeGet("IFCROOT", "NAME"), name);
    EXPECT_EQ(schema->pAttributeGet("ifcroot", "nAmE"), name);
}

TEST(SchemaTest, AttributeOfASupertypeIsNotFoundUnderTheSubtype) {
    const auto schema = schemaFromText(Inheritance);
    EXPECT_EQ(schema->pAttributeGet("IfcWall", "Name"), nullptr);
}

TEST(SchemaTest, AttributeLookUpDistinguishesOwnersOfOneAttributeName) {
    const auto schema = schemaFromText(Inheritance);
    EXPECT_EQ(schema->pAttributeGet("IfcWall", "Height"), &entityOf(*schema, "IfcWall").getAttributes()[0]);
    EXPECT_EQ(schema->pAttributeGet("IfcDoor", "Height"), &entityOf(*schema, "IfcDoor").getAttributes()[0]);
}

TEST(SchemaTest, AttributeLookUpAnswersNullForWhatIsNotThere) {
    const auto schema = schemaFromText(Inheritance);
    EXPECT_EQ(schema->pAttributeGet("IfcRoof", "Name"), nullptr);
    EXPECT_EQ(schema->pAttributeGet("IfcRoot", "Names"), nullptr);
    EXPECT_EQ(schema->pAttributeGet("", ""), nullptr);
    EXPECT_EQ(schema->pAttributeGet("IfcRoot", ""), nullptr);
    EXPECT_EQ(schema->pAttributeGet("", "Name"), nullptr);
}

TEST(SchemaTest, InverseAttributesAreNotAmongTheAttributesByName) {
    const auto schema = schemaFromText(Inheritance);
    EXPECT_EQ(schema->pAttributeGet("IfcDoor", "Walls"), nullptr);
    EXPECT_TRUE(schema->attributesGet("Walls").empty());
}

TEST(SchemaTest, AttributesOfOneNameAreAllFound) {
    const auto schema = schemaFromText(Inheritance);
    EXPECT_THAT(ownersOf(schema->attributesGet("HEIGHT")), UnorderedElementsAre("IfcWall", "IfcDoor"));
    EXPECT_THAT(ownersOf(schema->attributesGet("height")), UnorderedElementsAre("IfcWall", "IfcDoor"));
    EXPECT_THAT(ownersOf(schema->attributesGet("Name")), ElementsAre("IfcRoot"));
}

TEST(SchemaTest, AttributesOfAnUnknownNameAreNone) {
    const auto schema = schemaFromText(Inheritance);
    EXPECT_TRUE(schema->attributesGet("Width").empty());
    EXPECT_TRUE(schema->attributesGet("").empty());
    EXPECT_TRUE(schema->attributesGet("Heigh").empty());
}

TEST(SchemaTest, AttributesOfOneNameComeInTheOrderInWhichTheirEntitiesAreResolved) {
    std::string text;
    for (const char name : std::string("ABCDEFGH"))
        text += std::string("ENTITY ") + name + ";\n  Tag : REAL;\n  Other : REAL;\nEND_ENTITY;\n";
    const auto schema = schemaFromText(text);
    // By the hashes of the names: E C0, D C1, G C2, F C3, A C4, C C6, B C7, H CD.
    EXPECT_THAT(ownersOf(schema->attributesGet("Tag")), ElementsAre("E", "D", "G", "F", "A", "C", "B", "H"));
}

TEST(SchemaTest, EntitiesOfOneHashAreResolvedShorterNamesFirst) {
    // Both names hash to 0x2BD6D9E8.
    const auto schema = schemaFromText("ENTITY AER8ABWS;\n  Tag : REAL;\nEND_ENTITY;\n"
                                       "ENTITY ZETM3;\n  Tag : REAL;\nEND_ENTITY;");
    EXPECT_EQ(objectOf(*schema, "AER8ABWS").getNameUpperHash(), 0x2BD6D9E8U);
    EXPECT_EQ(objectOf(*schema, "ZETM3").getNameUpperHash(), 0x2BD6D9E8U);
    EXPECT_THAT(ownersOf(schema->attributesGet("Tag")), ElementsAre("ZETM3", "AER8ABWS"));
}

TEST(SchemaTest, AttributesOfOneNameAndOneEntityComeInTheOrderOfTheDeclaration) {
    const auto schema =
        schemaFromText("ENTITY A;\n  Tag : REAL;\n  TAG : STRING;\n  tag : NUMBER;\nEND_ENTITY;");
    Strings names;
    for (const Attribute& attribute : schema->attributesGet("Tag"))
        names.emplace_back(attribute.getName());
    EXPECT_THAT(names, ElementsAre("Tag", "TAG", "tag"));
    EXPECT_EQ(schema->pAttributeGet("A", "tag")->getName(), "Tag");
}

// Too many to go through them all. There are three entities E17, and the one read first is resolved first.
TEST(SchemaTest, AttributeIsFoundAmongThoseOfManyEntities) {
    constexpr int Many = 200;
    std::string text;
    const auto entityAdd = [&](const std::string& name) {
        text += "ENTITY " + name + ";\n  Tag : REAL;\n  TAG : STRING;\nEND_ENTITY;\n";
    };
    for (int number = 0; number != Many; ++number)
        entityAdd("E" + std::to_string(number));
    entityAdd("e17");
    entityAdd("E17");
    // Both names hash to 0x2BD6D9E8.
    entityAdd("AER8ABWS");
    entityAdd("ZETM3");
    const auto schema = schemaFromText(text);
    ASSERT_EQ(schema->attributesGet("tag").size(), 2U * (Many + 4));
    for (const auto* object : schema->getObjectsByName()) {
        const auto name = std::string(object->getName());
        const auto* attribute = schema->pAttributeGet(name, "tAg");
        ASSERT_NE(attribute, nullptr) << name;
        EXPECT_EQ(&attribute->getEntity(), object);
        EXPECT_EQ(attribute->getName(), "Tag") << name;
        EXPECT_EQ(schema->pAttributeGet(name, "Tog"), nullptr);
        EXPECT_EQ(schema->pAttributeGet(name + "x", "Tag"), nullptr);
    }
    EXPECT_EQ(schema->pAttributeGet("zetm3", "TAG"), schema->pAttributeGet("ZETM3", "tag"));
    EXPECT_EQ(schema->pAttributeGet("aer8abws", "tag"), schema->pAttributeGet("AER8ABWS", "tag"));
    EXPECT_EQ(schema->pAttributeGet("", "Tag"), nullptr);
}

// ---- The resolution pass

TEST(SchemaTest, ResolvesDataTypesThenObjectsByHashThenInverseAttributes) {
    AssertCollector reports;
    // The hashes of the names begin with C7 (B), C1 (D), C0 (E) and ED (ALPHA).
    const auto schema = schemaFromText("ENTITY B;\n"
                                       " SUBTYPE OF (Missing);\n"
                                       " INVERSE\n"
                                       "  I : SET OF E FOR Missing;\n"
                                       "END_ENTITY;\n"
                                       "TYPE D = Missing;\n"
                                       "END_TYPE;\n"
                                       "ENTITY E\n"
                                       " SUPERTYPE OF (ONEOF (Missing));\n"
                                       "END_ENTITY;\n"
                                       "TYPE Alpha = SELECT (Missing);\n"
                                       "END_TYPE;");
    using Place = std::pair<std::string, int>;
    std::vector<Place> places;
    for (const auto& record : reports.getRecords())
        places.emplace_back(record.message, record.line);
    EXPECT_THAT(places, ElementsAre(Place("Object not found", 453), Place("Entity not found", 325),
                                    Place("Not type found", 85), Place("Entity not found", 316),
                                    Place("Entity not found", 0)));
}

TEST(SchemaTest, DataTypesMadeWhileDataTypesAreResolvedAreNotResolvedTwice) {
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE A = LIST OF SET OF Missing;\nEND_TYPE;");
    EXPECT_THAT(reports.getMessages(), ElementsAre("Type not found"));
}

TEST(SchemaTest, NamesAreResolvedWhereverTheyAreDeclared) {
    AssertCollector reports;
    const auto schema = schemaFromText("ENTITY A\n SUBTYPE OF (B);\n  X : T;\nEND_ENTITY;\n"
                                       "ENTITY B;\nEND_ENTITY;\n"
                                       "TYPE T = U;\nEND_TYPE;\n"
                                       "TYPE U = REAL;\nEND_TYPE;\n");
    EXPECT_EQ(entityOf(*schema, "A").pSupertype(), &entityOf(*schema, "B"));
    EXPECT_EQ(entityOf(*schema, "A").getAttributes()[0].pFirstType(), &typeOf(*schema, "T"));
    EXPECT_NE(typeOf(*schema, "T").pDataType(), nullptr);
    EXPECT_TRUE(reports.getRecords().empty());
}

TEST(SchemaTest, WithoutASinkUnresolvedNamesChangeNothing) {
    const auto schema =
        schemaFromText("ENTITY A\n SUBTYPE OF (Missing);\n  X : LIST OF Missing;\nEND_ENTITY;\n"
                       "TYPE T = Missing;\nEND_TYPE;\n");
    EXPECT_EQ(entityOf(*schema, "A").pSupertype(), nullptr);
    EXPECT_EQ(typeOf(*schema, "T").pDataType(), nullptr);
}

// ---- Numbering

using Numbers = std::pair<int, int>;

Numbers numbersOf(const Schema& schema, std::string_view name) {
    const auto& entity = entityOf(schema, name);
    return {entity.getFirstNumber(), entity.getLastNumber()};
}

constexpr std::string_view Tree = "ENTITY Zed;\nEND_ENTITY;\n"
                                  "ENTITY Mid\n SUPERTYPE OF (ONEOF (MidB, MidA));\nEND_ENTITY;\n"
                                  "ENTITY MidA\n SUBTYPE OF (Mid);\nEND_ENTITY;\n"
                                  "ENTITY MidB\n SUPERTYPE OF (ONEOF (Leaf)) SUBTYPE OF (Mid);\nEND_ENTITY;\n"
                                  "ENTITY Leaf\n SUBTYPE OF (MidB);\nEND_ENTITY;\n"
                                  "ENTITY beta;\nEND_ENTITY;\n"
                                  "ENTITY Alpha;\nEND_ENTITY;\n";

TEST(SchemaTest, NumbersRootsInTheOrderOfTheirUpperCasedNames) {
    const auto schema = schemaFromText(Tree);
    EXPECT_EQ(entityOf(*schema, "Alpha").getFirstNumber(), 1);
    EXPECT_EQ(entityOf(*schema, "beta").getFirstNumber(), 2);
    EXPECT_EQ(entityOf(*schema, "Mid").getFirstNumber(), 3);
    EXPECT_EQ(entityOf(*schema, "Zed").getFirstNumber(), 7);
}

TEST(SchemaTest, RootWithoutSubtypesHasEqualNumbers) {
    const auto schema = schemaFromText(Tree);
    EXPECT_EQ(numbersOf(*schema, "Alpha"), Numbers(1, 1));
    EXPECT_EQ(numbersOf(*schema, "beta"), Numbers(2, 2));
    EXPECT_EQ(numbersOf(*schema, "Zed"), Numbers(7, 7));
}

TEST(SchemaTest, NumbersSubtypesInTheOrderOfTheListBelowTheirSupertype) {
    const auto schema = schemaFromText(Tree);
    EXPECT_EQ(numbersOf(*schema, "Mid"), Numbers(3, 6));
    EXPECT_EQ(numbersOf(*schema, "MidB"), Numbers(4, 5));
    EXPECT_EQ(numbersOf(*schema, "Leaf"), Numbers(5, 5));
    EXPECT_EQ(numbersOf(*schema, "MidA"), Numbers(6, 6));
}

TEST(SchemaTest, EntityThatIsListedTwiceKeepsItsFirstNumbers) {
    const auto schema = schemaFromText("ENTITY Root\n SUPERTYPE OF (ONEOF (A, B));\nEND_ENTITY;\n"
                                       "ENTITY A\n SUPERTYPE OF (ONEOF (C)) SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                       "ENTITY B\n SUPERTYPE OF (ONEOF (C)) SUBTYPE OF (Root);\nEND_ENTITY;\n"
                                       "ENTITY C\n SUBTYPE OF (A);\nEND_ENTITY;\n");
    EXPECT_EQ(numbersOf(*schema, "A"), Numbers(2, 3));
    EXPECT_EQ(numbersOf(*schema, "C"), Numbers(3, 3));
    EXPECT_EQ(entityOf(*schema, "B").getFirstNumber(), 4);
    EXPECT_THAT(entityOf(*schema, "B").getSubtypes(), testing::ElementsAre(&entityOf(*schema, "C")));
}

TEST(SchemaTest, EntityThatIsListedAndARootKeepsItsFirstNumbers) {
    const auto schema = schemaFromText("ENTITY A\n SUPERTYPE OF (ONEOF (B));\nEND_ENTITY;\n"
                                       "ENTITY B;\nEND_ENTITY;\n");
    EXPECT_EQ(numbersOf(*schema, "A"), Numbers(1, 2));
    EXPECT_EQ(numbersOf(*schema, "B"), Numbers(2, 2));
}

TEST(SchemaTest, OfTwoEntitiesOfOneNameOnlyTheFirstIsNumbered) {
    const auto schema =
        schemaFromText("ENTITY A;\nEND_ENTITY;\nENTITY A;\nEND_ENTITY;\nENTITY B;\nEND_ENTITY;\n");
    EXPECT_EQ(numbersOf(*schema, "B"), Numbers(2, 2));
    const auto* second = Entity::pFrom(schema->getObjects()[1]);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->getFirstNumber(), 0);
    EXPECT_EQ(second->getLastNumber(), 0);
}

TEST(SchemaTest, LastNumberIsBelowTheFirstWhereNumbersWrap) {
    // 65,533 roots come before Z by name: Z has 65,534, Z1 the last number before 0.
    std::string text;
    for (int number = 0; number < 65533; ++number)
        text += "ENTITY A" + std::to_string(number) + ";\nEND_ENTITY;\n";
    const auto schema =
        schemaFromText(text + "ENTITY Z\n SUPERTYPE OF (ONEOF (Z1, Z2));\nEND_ENTITY;\n"
                              "ENTITY Z1\n SUBTYPE OF (Z);\nEND_ENTITY;\n"
                              "ENTITY Z2\n SUPERTYPE OF (ONEOF (Z3)) SUBTYPE OF (Z);\nEND_ENTITY;\n"
                              "ENTITY Z3\n SUBTYPE OF (Z2);\nEND_ENTITY;");
    EXPECT_EQ(numbersOf(*schema, "Z"), std::pair(65534, 1));
    EXPECT_EQ(numbersOf(*schema, "Z1"), std::pair(65535, 65535));
    EXPECT_EQ(numbersOf(*schema, "Z2"), std::pair(0, 1));
    EXPECT_EQ(numbersOf(*schema, "Z3"), std::pair(1, 1));
}

// ---- The object itself

TEST(SchemaTest, IsNeitherCopiedNorChanged) {
    static_assert(!std::is_copy_constructible_v<Schema>);
    static_assert(!std::is_copy_assignable_v<Schema>);
    static_assert(std::has_virtual_destructor_v<Schema>);
    static_assert(std::has_virtual_destructor_v<ObjectBase>);
}

TEST(SchemaTest, LookUpsRunFromManyThreadsAtOnce) {
    const auto schema = schemaFromText(Inheritance);
    const auto* wall = schema->pObjectFromName("IfcWall");
    std::vector<int> misses(4, 0);
    std::vector<std::thread> threads;
    for (auto& missed : misses)
        threads.emplace_back([&] {
            for (int i = 0; i < 1000; ++i) {
                if (schema->pObjectFromName("ifcWALL") != wall || !schema->pAttributeGet("IfcRoot", "NAME") ||
                    schema->attributesGet("Height").size() != 2)
                    ++missed;
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_THAT(misses, ElementsAre(0, 0, 0, 0));
}

TEST(SchemaTest, SharedDataTypesAreThoseInUseInTheOrderOfTheirKinds) {
    const auto schema = schemaFromText("TYPE A = BINARY;\nEND_TYPE;\nTYPE B = REAL;\nEND_TYPE;\n"
                                       "TYPE C = STRING(3);\nEND_TYPE;\nTYPE D = REAL;\nEND_TYPE;");
    EXPECT_THAT(namesOf(schema->getSharedDataTypes()), ElementsAre("REAL", "BINARY"));
    EXPECT_THAT(namesOf(schema->getDataTypes()), ElementsAre("STRING(3)"));
}

TEST(SchemaTest, AttributesByNameAreOrderedByUpperCasedName) {
    const auto schema = schemaFromText("ENTITY X;\n  b : REAL;\n  C : REAL;\n  A : REAL;\nEND_ENTITY;");
    Strings names;
    for (const Attribute& attribute : schema->getAttributesByName())
        names.emplace_back(attribute.getName());
    EXPECT_THAT(names, ElementsAre("A", "b", "C"));
}

TEST(SchemaTest, BuiltSchemaTakesNothingMore) {
    const auto schema = schemaFromText("ENTITY X;\nEND_ENTITY;");
    EXPECT_THROW(DataTypeBase::pTypeCreateOnSchema(*schema, "LIST OF X", true), std::logic_error);
    EXPECT_THROW(DataTypeBase::pTypeCreateOnSchema(*schema, "REAL", true), std::logic_error);
    EXPECT_TRUE(schema->getDataTypes().empty());
}

} // namespace
