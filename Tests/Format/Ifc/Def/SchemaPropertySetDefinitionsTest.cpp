#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"

#include "Base/NameHash.h"
#include "Format/Ifc/Def/DefDoubles.h"
#include "Format/Ifc/Def/StoreTools.h"
#include "Support/Allocations.h"
#include "Support/ErrorRecords.h"
#include "Support/Growth.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

using ifc::def::SchemaPropertySetDefinitions;
using ifc::def::xml::SetDef;
using ifc::def::xml::XmlSetErrors;

static_assert(!std::is_copy_constructible_v<SchemaPropertySetDefinitions>);
static_assert(!std::is_copy_assignable_v<SchemaPropertySetDefinitions>);
static_assert(std::is_nothrow_move_constructible_v<SchemaPropertySetDefinitions>);
static_assert(std::is_nothrow_move_assignable_v<SchemaPropertySetDefinitions>);

class SchemaPropertySetDefinitionsTest : public ::testing::Test {
protected:
    SchemaPropertySetDefinitionsTest() = default;

    const ifc::def::schema::Entity& entity(const char* name) const { return entityOf(*schema, name); }

    Texts setsToEntity(const char* name, bool includeUnrestricted) const {
        return namesOf(sets.getXmlSetsToEntity(entity(name), includeUnrestricted));
    }
    Texts setsAllToEntity(const char* name, bool includeUnrestricted) const {
        return namesOf(sets.getXmlSetsAllToEntity(entity(name), includeUnrestricted));
    }

    std::string sDefOf(std::uint8_t guid) const {
        const auto* const def = sets.getXmlDefFromIfd(guidOf(guid));
        return def ? def->getConcept() : std::string("none");
    }

    std::unique_ptr<ifc::def::SchemaPset> schema = schemaPsetFromText(StoreSchema);
    SchemaPropertySetDefinitions sets;
    XmlSetErrors errors;
};

TEST_F(SchemaPropertySetDefinitionsTest, EmptyFindsNothing) {
    EXPECT_EQ(sets.getXmlSetFromName("Pset_A"), nullptr);
    EXPECT_EQ(sets.getXmlSetFromName(""), nullptr);
    EXPECT_EQ(sets.getXmlSetFromNameUpper("PSET_A"), nullptr);
    EXPECT_EQ(sets.getXmlDefFromIfd(guidOf(1)), nullptr);
    EXPECT_EQ(sets.getXmlDefFromIfd(kiv::Guid()), nullptr);
    EXPECT_EQ(namesOf(sets.getXmlSets()), Texts());
    EXPECT_EQ(setsToEntity("IfcWall", true), Texts());
    EXPECT_EQ(setsAllToEntity("IfcWall", true), Texts());
}

TEST_F(SchemaPropertySetDefinitionsTest, ASetThatPassesIsTaken) {
    auto set = pSetFromText(sPropertySet("Pset_A"));
    const auto* const taken = set.get();
    EXPECT_TRUE(sets.xmlSetAdd(*schema, std::move(set), errors));
    EXPECT_EQ(set, nullptr);
    EXPECT_EQ(sets.getXmlSetFromName("Pset_A"), taken);
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST_F(SchemaPropertySetDefinitionsTest, ASetWithRecordsThatIsNotRefusedIsTaken) {
    EXPECT_TRUE(sets.xmlSetAdd(*schema, pSetFromText(sPropertySet("Pset_A", {"IfcWal"})), errors));
    EXPECT_NE(sets.getXmlSetFromName("Pset_A"), nullptr);
    EXPECT_EQ(errors.getSetName(), "Pset_A");
    EXPECT_EQ(errors.getRecords(),
              Records{error("IfcWal",
                            "Applicable class in xml set is not defined in schema (contain spaces?)", 1)});
}

/// An attribute PredefinedType that is of no defined type is what makes a check fail.
TEST_F(SchemaPropertySetDefinitionsTest, ASetThatFailsItsCheckStaysWithTheCallerAndNothingOfItIsIndexed) {
    schema = schemaPsetFromText("ENTITY IfcOdd;\n  PredefinedType : STRING;\nEND_ENTITY;\n");
    auto set = pSetFromText(sPropertySet("Pset_A", {"IfcOdd/X"}, sProperty("P", "", sGuid(1))));
    const auto* const refused = set.get();
    EXPECT_FALSE(sets.xmlSetAdd(*schema, std::move(set), errors));
    EXPECT_EQ(set.get(), refused);
    EXPECT_EQ(errors.getSetName(), "Pset_A");
    EXPECT_EQ(errors.getRecords(),
              Records{error("IfcOdd/X", "Attribute predefinedType is doesnt exist on entity", 1)});
    EXPECT_EQ(sets.getXmlSetFromName("Pset_A"), nullptr);
    EXPECT_EQ(sDefOf(1), "none");
    EXPECT_EQ(namesOf(sets.getXmlSets()), Texts());
    EXPECT_EQ(setsToEntity("IfcOdd", true), Texts());
}

TEST_F(SchemaPropertySetDefinitionsTest, TheNameOfARefusedSetStaysFree) {
    schema = schemaPsetFromText("ENTITY IfcOdd;\n  PredefinedType : STRING;\nEND_ENTITY;\n");
    EXPECT_FALSE(sets.xmlSetAdd(*schema, pSetFromText(sPropertySet("Pset_A", {"IfcOdd/X"})), errors));
    vSetsAdd(sets, *schema, {sPropertySet("PSET_A")});
    EXPECT_EQ(namesOf(sets.getXmlSets()), Texts{"PSET_A"});
}

TEST_F(SchemaPropertySetDefinitionsTest, SecondSetOfTheSameNameInAnotherCaseIsDropped) {
    EXPECT_TRUE(sets.xmlSetAdd(*schema, pSetFromText(sPropertySet("Pset_A")), errors));
    auto second = pSetFromText(sPropertySet("PSET_A"));
    EXPECT_TRUE(sets.xmlSetAdd(*schema, std::move(second), errors));
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(errors.getRecords(), Records());
    ASSERT_NE(sets.getXmlSetFromName("pset_a"), nullptr);
    EXPECT_EQ(sets.getXmlSetFromName("pset_a")->getName(), "Pset_A");
    EXPECT_EQ(namesOf(sets.getXmlSets()), Texts{"Pset_A"});
}

TEST_F(SchemaPropertySetDefinitionsTest, ASecondSetOfTheSameNameIsCheckedBeforeItIsDropped) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A")});
    auto second = pSetFromText(sPropertySet("PSET_A", {"IfcWal"}));
    EXPECT_TRUE(sets.xmlSetAdd(*schema, std::move(second), errors));
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(errors.getSetName(), "PSET_A");
    EXPECT_EQ(errors.getRecords(),
              Records{error("IfcWal",
                            "Applicable class in xml set is not defined in schema (contain spaces?)", 1)});
    EXPECT_EQ(namesOf(sets.getXmlSets()), Texts{"Pset_A"});
}

TEST_F(SchemaPropertySetDefinitionsTest, ASecondSetOfTheSameNameThatFailsItsCheckStaysWithTheCaller) {
    schema = schemaPsetFromText("ENTITY IfcOdd;\n  PredefinedType : STRING;\nEND_ENTITY;\n");
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A")});
    auto second = pSetFromText(sPropertySet("PSET_A", {"IfcOdd/X"}));
    const auto* const refused = second.get();
    EXPECT_FALSE(sets.xmlSetAdd(*schema, std::move(second), errors));
    EXPECT_EQ(second.get(), refused);
    EXPECT_EQ(errors.getSetName(), "PSET_A");
    EXPECT_EQ(namesOf(sets.getXmlSets()), Texts{"Pset_A"});
}

TEST_F(SchemaPropertySetDefinitionsTest, AQuantitySetAndAPropertySetShareTheirNames) {
    vSetsAdd(sets, *schema, {sQuantitySet("Set_A"), sPropertySet("Set_A")});
    EXPECT_EQ(sets.getXmlSets().size(), 1U);
    EXPECT_STREQ(sets.getXmlSetFromName("Set_A")->pXmlElementName(), "QtoSetDef");
}

TEST_F(SchemaPropertySetDefinitionsTest, ADroppedDuplicateLeavesNoGuidAndNoClassBehind) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A", {"IfcRoot"}, sProperty("P", "", sGuid(1)))});
    vSetsAdd(sets, *schema,
             {sPropertySet("PSET_a", {"IfcWall"}, sProperty("Q", "", sGuid(2)) + sProperty("R")),
              sPropertySet("pset_a", {}, sProperty("S", "", sGuid(1)))});
    EXPECT_EQ(sDefOf(1), "Pset_A.P");
    EXPECT_EQ(sDefOf(2), "none");
    EXPECT_EQ(sDefOf(0), "none");
    EXPECT_EQ(setsAllToEntity("IfcWall", true), Texts{"Pset_A"});
}

TEST_F(SchemaPropertySetDefinitionsTest, TheGuidOfADroppedDuplicateIsFreeForALaterSet) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_A"), sPropertySet("PSET_A", {}, sProperty("P", "", sGuid(1))),
              sPropertySet("Pset_B", {}, sProperty("Q", "", sGuid(1)))});
    EXPECT_EQ(sDefOf(1), "Pset_B.Q");
}

TEST_F(SchemaPropertySetDefinitionsTest, OfTwoPropertiesWithOneGuidTheOneAddedFirstIsFound) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_B", {}, sProperty("First", "", sGuid(1)) + sProperty("Twin", "", sGuid(1))),
              sPropertySet("Pset_A", {}, sProperty("Second", "", sGuid(1)))});
    EXPECT_EQ(sDefOf(1), "Pset_B.First");
}

TEST_F(SchemaPropertySetDefinitionsTest, PropertiesAndQuantitiesShareTheGuids) {
    vSetsAdd(sets, *schema,
             {sQuantitySet("Qto_A", {}, sQuantity("Q", "", sGuid(1)) + sQuantity("R", "", sGuid(2))),
              sPropertySet("Pset_A", {}, sProperty("P", "", sGuid(1)) + sProperty("S", "", sGuid(3)))});
    EXPECT_EQ(sDefOf(1), "Qto_A.Q");
    EXPECT_EQ(sDefOf(2), "Qto_A.R");
    EXPECT_EQ(sDefOf(3), "Pset_A.S");
    EXPECT_EQ(sDefOf(4), "none");
}

TEST_F(SchemaPropertySetDefinitionsTest, TheFirstDefinitionWithoutGuidOwnsTheNullGuid) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A", {}, sProperty("P", "", sGuid(1)))});
    EXPECT_EQ(sDefOf(0), "none");
    vSetsAdd(sets, *schema,
             {sQuantitySet("Qto_A", {}, sQuantity("Q") + sQuantity("R")),
              sPropertySet("Pset_B", {}, sProperty("S"))});
    EXPECT_EQ(sDefOf(0), "Qto_A.Q");
}

TEST_F(SchemaPropertySetDefinitionsTest, TheGuidOfTheSetItselfIsNotIndexed) {
    vSetsAdd(sets, *schema,
             {"<PropertySetDef ifdguid='" + sGuid(1) + "'><Name>Pset_A</Name></PropertySetDef>"});
    EXPECT_EQ(sets.getXmlSetFromName("Pset_A")->getIfdGuid(), guidOf(1));
    EXPECT_EQ(sDefOf(1), "none");
}

TEST_F(SchemaPropertySetDefinitionsTest, ThePartsOfAComplexPropertyAreNotIndexed) {
    const auto part = sProperty("Part", "", sGuid(2));
    vSetsAdd(
        sets, *schema,
        {sPropertySet("Pset_A", {},
                      sProperty("P", "<TypeComplexProperty>" + part + "</TypeComplexProperty>", sGuid(1)))});
    EXPECT_EQ(sDefOf(1), "Pset_A.P");
    EXPECT_EQ(sDefOf(2), "none");
}

TEST_F(SchemaPropertySetDefinitionsTest, ASetOfAnotherKindIsFoundByNameAndEntity) {
    const XmlFromText document(sSet("PlainSet", "Members", "Set_A", {"IfcWall"}, ""));
    EXPECT_TRUE(sets.xmlSetAdd(*schema, std::make_unique<PlainSet>(document.root(), errors), errors));
    EXPECT_NE(sets.getXmlSetFromName("Set_A"), nullptr);
    EXPECT_EQ(setsToEntity("IfcWall", false), Texts{"Set_A"});
    EXPECT_EQ(sDefOf(0), "none");
}

TEST_F(SchemaPropertySetDefinitionsTest, NamesAreFoundInAnyCaseOfAsciiLetters) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_Az{`@[\xC3\xA9")});
    const struct {
        const char* name;
        bool found;
        bool foundAsUpper;
    } rows[] = {
        {"Pset_Az{`@[\xC3\xA9", true, false},
        {"PSET_AZ{`@[\xC3\xA9", true, true},
        {"pset_az{`@[\xC3\xA9", true, false},
        {"PSET_AZ[`@[\xC3\xA9", false, false},
        {"PSET_AZ{@@[\xC3\xA9", false, false},
        {"PSET_AZ{`@[\xC3\x89", false, false},
        {"PSET_AZ{`@[", false, false},
        {" PSET_AZ{`@[\xC3\xA9", false, false},
        {"", false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(sets.getXmlSetFromName(row.name) != nullptr, row.found);
        EXPECT_EQ(sets.getXmlSetFromNameUpper(row.name) != nullptr, row.foundAsUpper);
    }
}

TEST_F(SchemaPropertySetDefinitionsTest, ASetWithoutNameIsFoundUnderTheEmptyName) {
    vSetsAdd(sets, *schema,
             {sPropertySet("", {}, sProperty("First")), sPropertySet("", {}, sProperty("Second"))});
    ASSERT_NE(sets.getXmlSetFromName(""), nullptr);
    EXPECT_EQ(sDefOf(0), ".First");
    EXPECT_EQ(sets.getXmlSets().size(), 1U);
}

TEST_F(SchemaPropertySetDefinitionsTest, NamesLongerThanAnyBufferAreFound) {
    const std::string name(1000, 'p');
    vSetsAdd(sets, *schema, {sPropertySet(name)});
    EXPECT_NE(sets.getXmlSetFromName(name), nullptr);
    EXPECT_NE(sets.getXmlSetFromName(std::string(1000, 'P')), nullptr);
    EXPECT_EQ(sets.getXmlSetFromName(std::string(999, 'p')), nullptr);
}

/// By the bytes of the upper-cased name: "A" 41, "B" 42, "_" 5F, then bytes from 80 on.
TEST_F(SchemaPropertySetDefinitionsTest, SetsAreListedByUpperCasedNameByteByByte) {
    const Texts ordered{"", "a", "A-", "a1", "AA", "ab", "A_", "A\xC3\x84", "b", "_"};
    for (auto name = ordered.rbegin(); name != ordered.rend(); ++name)
        vSetsAdd(sets, *schema, {sPropertySet(*name, {"IfcWall"})});
    EXPECT_EQ(namesOf(sets.getXmlSets()), ordered);
    EXPECT_EQ(setsToEntity("IfcWall", false), ordered);
}

TEST_F(SchemaPropertySetDefinitionsTest, SetsThatNameTheEntityItselfAreListedByName) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_D", {"IfcWall"}), sPropertySet("Pset_A", {"IfcRoot", "IfcWall"}),
              sPropertySet("Pset_C", {"IfcElement"}), sQuantitySet("Qto_B", {"IfcWall"}),
              sPropertySet("Pset_E", {"IfcWallStandardCase"})});
    EXPECT_EQ(setsToEntity("IfcWall", false), (Texts{"Pset_A", "Pset_D", "Qto_B"}));
    EXPECT_EQ(setsToEntity("IfcRoot", false), Texts{"Pset_A"});
    EXPECT_EQ(setsToEntity("IfcElement", false), Texts{"Pset_C"});
}

TEST_F(SchemaPropertySetDefinitionsTest, UnrestrictedSetsStandAmongTheOthersByName) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_C"), sPropertySet("Pset_B", {"IfcWall"}), sPropertySet("Pset_A"),
              sPropertySet("Pset_D", {"IfcWall"}), sPropertySet("pset_e"), sPropertySet("Pset_F")});
    EXPECT_EQ(setsToEntity("IfcWall", true),
              (Texts{"Pset_A", "Pset_B", "Pset_C", "Pset_D", "pset_e", "Pset_F"}));
    EXPECT_EQ(setsToEntity("IfcWall", false), (Texts{"Pset_B", "Pset_D"}));
    EXPECT_EQ(setsToEntity("IfcRoot", true), (Texts{"Pset_A", "Pset_C", "pset_e", "Pset_F"}));
}

TEST_F(SchemaPropertySetDefinitionsTest, ThePredefinedTypeOfAClassPlaysNoPart) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A", {"IfcWall/SOLIDWALL"})});
    EXPECT_EQ(setsToEntity("IfcWall", false), Texts{"Pset_A"});
}

TEST_F(SchemaPropertySetDefinitionsTest, ASetThatNamesAnEntityTwiceIsListedOnce) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A", {"IfcWall/SOLIDWALL", "IfcWall", "IfcWall/PARAPET"})});
    EXPECT_EQ(setsToEntity("IfcWall", true), Texts{"Pset_A"});
    EXPECT_EQ(setsAllToEntity("IfcWall", true), Texts{"Pset_A"});
}

/// The two mentions of one class need not be side by side.
TEST_F(SchemaPropertySetDefinitionsTest, ASetThatNamesAnotherEntityInBetweenIsListedOnce) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A", {"IfcWall", "IfcElement", "IfcWall"})});
    EXPECT_EQ(setsToEntity("IfcWall", true), Texts{"Pset_A"});
    EXPECT_EQ(setsToEntity("IfcElement", true), Texts{"Pset_A"});
    EXPECT_EQ(setsAllToEntity("IfcWall", false), (Texts{"Pset_A", "Pset_A"})) << "once for each level";
}

TEST_F(SchemaPropertySetDefinitionsTest, ClassesAreComparedWithTheEntitysNameAsWritten) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_A", {"ifcwall"}), sPropertySet("Pset_B", {"IFCWALL"}),
              sPropertySet("Pset_C", {"IfcWall "}), sPropertySet("Pset_D", {"IfcWall\t"}),
              sPropertySet("Pset_E", {"IfcWal"})});
    EXPECT_EQ(setsToEntity("IfcWall", true), Texts{"Pset_C"}) << "blanks around a class are not part of it";
}

/// "/X" names the empty class: that is a restriction, to nothing.
TEST_F(SchemaPropertySetDefinitionsTest, ASetWithAnEmptyClassIsListedNowhere) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A", {"/X"}), sPropertySet("Pset_B", {"   "})});
    EXPECT_EQ(setsToEntity("IfcWall", true), Texts{"Pset_B"}) << "a class of blanks is none";
}

/// The entity's name hashes to 811C9DC5 when it is empty, the class's to 0.
TEST_F(SchemaPropertySetDefinitionsTest, AnEmptyClassIsNotTheEntityWithoutName) {
    schema = schemaPsetFromText("ENTITY ;\nEND_ENTITY;\n");
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A", {"/X"})});
    EXPECT_EQ(setsToEntity("", false), Texts());
}

TEST_F(SchemaPropertySetDefinitionsTest, TheEntityMayBelongToAnotherSchema) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A", {"IfcWall"})});
    const auto other = schemaFromText("ENTITY IfcWall;\nEND_ENTITY;\n");
    EXPECT_EQ(namesOf(sets.getXmlSetsAllToEntity(entityOf(*other, "IfcWall"), false)), Texts{"Pset_A"});
}

TEST_F(SchemaPropertySetDefinitionsTest, WithSupertypesTheTopmostComesFirst) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_A", {"IfcWallStandardCase"}), sPropertySet("Pset_B", {"IfcWall"}),
              sPropertySet("Pset_C", {"IfcElement"}), sPropertySet("Pset_D", {"IfcRoot"}),
              sPropertySet("Pset_E", {"IfcWall"})});
    EXPECT_EQ(setsAllToEntity("IfcWallStandardCase", false),
              (Texts{"Pset_D", "Pset_C", "Pset_B", "Pset_E", "Pset_A"}));
    EXPECT_EQ(setsAllToEntity("IfcElement", false), (Texts{"Pset_D", "Pset_C"}));
    EXPECT_EQ(setsAllToEntity("IfcRoot", false), Texts{"Pset_D"});
}

TEST_F(SchemaPropertySetDefinitionsTest, ASetThatNamesSeveralLevelsIsListedOncePerLevel) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_A", {"IfcWallStandardCase", "IfcRoot", "IfcWall"}),
              sPropertySet("Pset_B", {"IfcRoot", "IfcWall"})});
    EXPECT_EQ(setsAllToEntity("IfcWallStandardCase", false),
              (Texts{"Pset_A", "Pset_B", "Pset_A", "Pset_B", "Pset_A"}));
}

TEST_F(SchemaPropertySetDefinitionsTest, AnUnrestrictedSetIsListedOnceHoweverDeepTheEntity) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A")});
    EXPECT_EQ(setsAllToEntity("IfcWallStandardCase", true), Texts{"Pset_A"});
    EXPECT_EQ(setsAllToEntity("IfcWallStandardCase", false), Texts());
    EXPECT_EQ(setsToEntity("IfcWallStandardCase", false), Texts());
}

TEST_F(SchemaPropertySetDefinitionsTest, UnrestrictedSetsStandAmongThoseOfTheTopmostSupertype) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_A", {"IfcWall"}), sPropertySet("Pset_B"),
              sPropertySet("Pset_C", {"IfcRoot"}), sPropertySet("Pset_D"),
              sPropertySet("Pset_E", {"IfcElement"})});
    EXPECT_EQ(setsAllToEntity("IfcWall", true), (Texts{"Pset_B", "Pset_C", "Pset_D", "Pset_E", "Pset_A"}));
    EXPECT_EQ(setsAllToEntity("IfcRoot", true), (Texts{"Pset_B", "Pset_C", "Pset_D"}));
}

/// Everything that a collection answers: for the names that the tests here give to sets, for GUIDs and for
/// all entities of the schema.
struct Answers {
    Answers(const SchemaPropertySetDefinitions& sets, const ifc::def::schema::Schema& schema) :
        lists{sets.getXmlSets()} {
        for (const auto* name : {"pset_a", "pset_b", "pset_c", "qto_a"})
            named.push_back(sets.getXmlSetFromName(name));
        for (std::uint8_t guid = 0; guid < 10; ++guid)
            defs.push_back(sets.getXmlDefFromIfd(guidOf(guid)));
        for (const auto* const name : {"IfcRoot", "IfcElement", "IfcWall", "IfcWallStandardCase"}) {
            for (const bool includeUnrestricted : {false, true}) {
                const auto& entity = entityOf(schema, name);
                lists.push_back(sets.getXmlSetsToEntity(entity, includeUnrestricted));
                lists.push_back(sets.getXmlSetsAllToEntity(entity, includeUnrestricted));
            }
        }
    }

    bool operator==(const Answers&) const = default;

    /// The same as text, "-" for what is not found.
    Texts names() const {
        Texts names;
        for (const auto* const set : named)
            names.push_back(set ? set->getName() : "-");
        for (const auto* const def : defs)
            names.push_back(def ? def->getConcept() : "-");
        for (const auto& list : lists) {
            for (const auto* const set : list)
                names.push_back(set->getName());
            names.emplace_back("end of the list");
        }
        return names;
    }

    std::vector<const SetDef*> named;
    std::vector<const ifc::def::xml::Def*> defs;
    std::vector<std::vector<const SetDef*>> lists;
};

TEST_F(SchemaPropertySetDefinitionsTest, PointersStayValidWhenTheCollectionIsMoved) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_A", {"IfcWall"}, sProperty("P", "", sGuid(1))), sPropertySet("Pset_B"),
              sPropertySet("Pset_C", {"IfcElement"})});
    const Answers before(sets, *schema);
    const auto* const def = sets.getXmlDefFromIfd(guidOf(1));
    ASSERT_NE(def, nullptr);
    ASSERT_EQ(setsToEntity("IfcWall", true), (Texts{"Pset_A", "Pset_B"}));

    SchemaPropertySetDefinitions constructed(std::move(sets));
    EXPECT_TRUE(Answers(constructed, *schema) == before);
    EXPECT_EQ(def->getConcept(), "Pset_A.P");

    auto assigned =
        collectionOf(*schema, {sPropertySet("Pset_A", {"IfcWall"}, sProperty("Old", "", sGuid(1)))});
    assigned = std::move(constructed);
    EXPECT_TRUE(Answers(assigned, *schema) == before);
    EXPECT_EQ(def->getConcept(), "Pset_A.P");
}

TEST_F(SchemaPropertySetDefinitionsTest, ACollectionMovedOntoItselfKeepsItsContents) {
    vSetsAdd(sets, *schema,
             {sPropertySet("Pset_A", {"IfcWall"}, sProperty("P", "", sGuid(1))), sPropertySet("Pset_B")});
    const Answers before(sets, *schema);
    ASSERT_EQ(setsToEntity("IfcWall", true), (Texts{"Pset_A", "Pset_B"}));
    auto& itself = sets;
    sets = std::move(itself);
    EXPECT_TRUE(Answers(sets, *schema) == before);
    EXPECT_EQ(setsToEntity("IfcWall", true), (Texts{"Pset_A", "Pset_B"}));
    EXPECT_EQ(sDefOf(1), "Pset_A.P");
}

TEST_F(SchemaPropertySetDefinitionsTest, AMovedCollectionTakesFurtherSets) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_B", {"IfcWall"}, sProperty("P", "", sGuid(1)))});
    auto moved = std::move(sets);
    vSetsAdd(moved, *schema,
             {sPropertySet("Pset_A", {"IfcWall"}, sProperty("Q", "", sGuid(1))), sPropertySet("PSET_B")});
    EXPECT_EQ(namesOf(moved.getXmlSetsToEntity(entity("IfcWall"), true)), (Texts{"Pset_A", "Pset_B"}));
    EXPECT_EQ(moved.getXmlDefFromIfd(guidOf(1))->getName(), "P");
}

TEST_F(SchemaPropertySetDefinitionsTest, AMovedFromCollectionIsEmptyAndTakesSetsAgain) {
    vSetsAdd(sets, *schema, {sPropertySet("Pset_A", {"IfcWall"}, sProperty("P", "", sGuid(1)))});
    const auto moved = std::move(sets);
    EXPECT_EQ(sets.getXmlSetFromName("Pset_A"),
              nullptr); // NOLINT(bugprone-use-after-move): that is what is tested
    EXPECT_EQ(sets.getXmlSetFromNameUpper("PSET_A"), nullptr);
    EXPECT_EQ(sets.getXmlDefFromIfd(guidOf(1)), nullptr);
    EXPECT_TRUE(sets.getXmlSets().empty());
    EXPECT_TRUE(sets.getXmlSetsToEntity(entity("IfcWall"), true).empty());
    EXPECT_TRUE(sets.getXmlSetsAllToEntity(entity("IfcWall"), true).empty());
    vSetsAdd(sets, *schema, {sPropertySet("Pset_B", {"IfcWall"})});
    EXPECT_EQ(namesOf(sets.getXmlSets()), Texts{"Pset_B"});
    EXPECT_EQ(namesOf(moved.getXmlSets()), Texts{"Pset_A"});
}

/// Adds the set with fewer allocations than it takes, one more each time; returns how often that failed.
/// Whenever it does, the collection must answer as before, with the set still in the caller's hands.
std::size_t failedAdditions(SchemaPropertySetDefinitions& sets, const ifc::def::schema::Schema& schema,
                            const std::string& text) {
    const Answers before(sets, schema);
    for (std::size_t count = 0;; ++count) {
        auto set = pSetFromText(text);
        const auto* const given = set.get();
        XmlSetErrors errors;
        if (boRunWith(count, [&] { sets.xmlSetAdd(schema, std::move(set), errors); })) {
            EXPECT_EQ(set, nullptr);
            return count;
        }
        EXPECT_EQ(set.get(), given);
        set.reset();
        EXPECT_TRUE(Answers(sets, schema) == before) << count;
    }
}

TEST_F(SchemaPropertySetDefinitionsTest, WhenMemoryRunsOutNothingHasChanged) {
    const struct {
        const char* what;
        std::string text;
        /// Of the key at least, of the list of members, and of each place in the index of classes or of sets
        /// without any.
        std::size_t allocations;
    } rows[] = {
        {"classes and GUIDs, old and new ones",
         sPropertySet("Pset_C", {"IfcWall", "IfcRoot", "IfcElement/X", "IfcNowhere"},
                      sProperty("Old", "", sGuid(1)) + sProperty("New", "", sGuid(2)) + sProperty("None")),
         1 + 1 + 4},
        {"no classes", sQuantitySet("Qto_A", {}, sQuantity("New", "", sGuid(3)) + sQuantity("None")),
         1 + 1 + 1},
        {"a long name", sPropertySet("Pset_" + std::string(100, 'x'), {"IfcWall"}), 2 + 1},
        {"a name that is there already", sPropertySet("pset_" + std::string(100, 'Y'), {"IfcRoot"}), 1},
    };
    const Texts there{sPropertySet("Pset_A", {"IfcWall", "IfcRoot"}, sProperty("P", "", sGuid(1))),
                      sPropertySet("Pset_B"), sPropertySet("Pset_" + std::string(100, 'y'))};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        auto filled = collectionOf(*schema, there);
        EXPECT_GE(failedAdditions(filled, *schema, row.text), row.allocations);

        auto atOnce = collectionOf(*schema, there);
        vSetsAdd(atOnce, *schema, {row.text});
        EXPECT_EQ(Answers(filled, *schema).names(), Answers(atOnce, *schema).names());
    }
}

TEST_F(SchemaPropertySetDefinitionsTest, WhenMemoryRunsOutInAnEmptyCollectionItStaysEmpty) {
    const auto text = sPropertySet("Pset_A", {"IfcWall"}, sProperty("P", "", sGuid(1)));
    EXPECT_GE(failedAdditions(sets, *schema, text), 3U);
    EXPECT_EQ(sDefOf(1), "Pset_A.P");
    EXPECT_EQ(setsToEntity("IfcWall", false), Texts{"Pset_A"});
}

/// Names whose hashes are all the same. Each is put together of blocks; for each block there are two texts
/// that lead from the same hash to the same hash.
class CollidingNames {
public:
    explicit CollidingNames(std::size_t count) {
        std::string begin;
        for (std::size_t names = 1; names < count; names *= 2) {
            pairs_.push_back(pairBehind(begin));
            begin += pairs_.back().first;
        }
    }

    std::string operator[](std::size_t index) const {
        std::string name;
        for (const auto& [first, second] : pairs_) {
            name += index % 2 == 0 ? first : second;
            index /= 2;
        }
        return name;
    }

private:
    using Pair = std::pair<std::string, std::string>;

    static Pair pairBehind(const std::string& begin) {
        std::unordered_map<std::uint32_t, std::string> seen;
        std::mt19937 random;
        while (true) {
            std::string block(8, ' ');
            for (char& letter : block)
                letter = static_cast<char>('a' + random() % 26);
            const auto [other, isNew] = seen.try_emplace(kiv::nameHash(begin + block), block);
            if (!isNew && other->second != block)
                return {other->second, block};
        }
    }

    std::vector<Pair> pairs_;
};

TEST_F(SchemaPropertySetDefinitionsTest, ClassesWhoseHashesAreTheSameAreDistinguished) {
    constexpr std::size_t Count = 16;
    const CollidingNames names(Count);
    std::string statements;
    for (std::size_t index = 0; index < Count; ++index) {
        ASSERT_EQ(kiv::nameHash(names[index]), kiv::nameHash(names[0]));
        statements += "ENTITY " + names[index] + ";\nEND_ENTITY;\n";
    }
    schema = schemaPsetFromText(statements);
    // The last entity has no set.
    for (std::size_t index = 0; index + 1 < Count; ++index)
        vSetsAdd(sets, *schema, {sPropertySet("Pset_" + std::to_string(index), {names[index]})});
    for (std::size_t index = 0; index + 1 < Count; ++index)
        EXPECT_EQ(setsToEntity(names[index].c_str(), false), Texts{"Pset_" + std::to_string(index)});
    EXPECT_EQ(setsToEntity(names[Count - 1].c_str(), false), Texts());
}

TEST_F(SchemaPropertySetDefinitionsTest, ManyClassesAreFoundEach) {
    constexpr std::size_t Count = 300;
    std::string statements;
    for (std::size_t index = 0; index < Count; ++index)
        statements += "ENTITY E" + std::to_string(index) + ";\nEND_ENTITY;\n";
    schema = schemaPsetFromText(statements);
    for (std::size_t index = 0; index < Count; ++index) {
        const auto number = std::to_string(index);
        vSetsAdd(sets, *schema, {sPropertySet("Pset_" + number, {"E" + number, "E0"})});
    }
    EXPECT_EQ(setsToEntity("E0", false).size(), Count);
    for (std::size_t index = 1; index < Count; ++index) {
        const auto number = std::to_string(index);
        EXPECT_EQ(setsToEntity(("E" + number).c_str(), false), Texts{"Pset_" + number});
    }
}

TEST_F(SchemaPropertySetDefinitionsTest, ClassesWhoseHashesAreTheSameCostNoMoreThanOthers) {
    constexpr std::size_t Size = 4096;
    const CollidingNames names(64 * Size);
    const auto entities = schemaPsetFromText("ENTITY " + names[0] + ";\nEND_ENTITY;\n");
    const auto& named = entityOf(*entities, names[0]);
    const double growth = growthFrom(Size, [&](std::size_t count) {
        Texts classes;
        for (std::size_t index = 0; index < count; ++index)
            classes.push_back(names[index]);
        const auto document = std::make_shared<XmlFromText>(sPropertySet("Pset_A", classes));
        return [this, count, document, &named] {
            XmlSetErrors ignored;
            SchemaPropertySetDefinitions collection;
            collection.xmlSetAdd(*schema,
                                 std::make_unique<ifc::def::pset::PropertySetDef>(document->root(), ignored),
                                 ignored);
            for (std::size_t question = 0; question < count; ++question)
                ASSERT_EQ(collection.getXmlSetsToEntity(named, false).size(), 1U);
        };
    });
    EXPECT_LE(growth, ProportionalGrowth);
}

} // namespace

} // namespace kiv::test
