#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAggregate.h"

#include "Format/Ifc/Def/Schema/DataTypeTools.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::IsEmpty;

kiv::assert::AssertRecord elementNotFound(int kind) {
    return {0, "Type not found",
            "kiv::ifc::def::schema::DataTypeListBase<" + std::to_string(kind) + ">::vUpdate",
            "Source/Format/Ifc/Def/Schema/IfcSchemaDataType", 228};
}

struct AggregateRow {
    std::string text;
    Bound lower;
    Bound upper;
    std::string element;
};

constexpr Bound NotGiven{};
constexpr Bound Unbounded{0, Bound::State::Unbounded};

constexpr Bound given(std::uint32_t value) {
    return {value, Bound::State::Given};
}

void vAggregatesCheck(std::initializer_list<AggregateRow> rows) {
    for (const auto& row : rows)
        for (const auto form : BothForms) {
            SCOPED_TRACE(row.text);
            const Declared declared(form, row.text);
            const auto* list = DataTypeListInterface::pFrom(declared.type);
            ASSERT_NE(list, nullptr);
            EXPECT_EQ(list->getLowerBound().value, row.lower.value);
            EXPECT_EQ(list->getLowerBound().state, row.lower.state);
            EXPECT_EQ(list->getUpperBound().value, row.upper.value);
            EXPECT_EQ(list->getUpperBound().state, row.upper.state);
            EXPECT_EQ(list->getElementText(), row.element);
        }
}

TEST(AggregateTest, BoundStatesHaveTheirNumbers) {
    EXPECT_EQ(static_cast<std::uint32_t>(Bound::State::NotGiven), 0U);
    EXPECT_EQ(static_cast<std::uint32_t>(Bound::State::Given), 1U);
    EXPECT_EQ(static_cast<std::uint32_t>(Bound::State::Unbounded), 2U);
}

TEST(AggregateTest, BoundsOfAnAggregateStandInBrackets) {
    vAggregatesCheck({
        {"LIST [1:?] OF Label;", given(1), Unbounded, "Label"},
        {"ARRAY [1:3] OF Label;", given(1), given(3), "Label"},
        {"SET [0:4294967295] OF Label;", given(0), given(4294967295U), "Label"},
        {"SET [?:?] OF Label;", Unbounded, Unbounded, "Label"},
        {"SET [?x:?y] OF Label;", Unbounded, Unbounded, "Label"},
        {"SET [:] OF Label;", NotGiven, NotGiven, "Label"},
        {"SET [1:] OF Label;", given(1), NotGiven, "Label"},
        {"SET [:1] OF Label;", NotGiven, given(1), "Label"},
        {"SET OF Label;", NotGiven, NotGiven, "Label"},
        {"SET [ 1: 3 ] OF Label;", given(1), given(3), "Label"},
        {"SET x [1:2] y OF Label;", given(1), given(2), "Label"},
        {"SET [1]:2] OF Label;", given(1), given(2), "Label"},
    });
}

TEST(AggregateTest, WithoutAllOfBracketColonAndBracketBoundsAreNotGiven) {
    vAggregatesCheck({
        {"SET [1:3 OF Label;", NotGiven, NotGiven, "Label"},
        {"SET 1:3] OF Label;", NotGiven, NotGiven, "Label"},
        {"SET [1] OF Label;", NotGiven, NotGiven, "Label"},
        {"SET ]:[ OF Label;", NotGiven, NotGiven, "Label"},
        {"SET :[1] OF Label;", NotGiven, NotGiven, "Label"},
    });
}

TEST(AggregateTest, UnreadableBoundsAreAsAStreamLeavesThem) {
    vAggregatesCheck({
        {"SET [a:b] OF Label;", given(0), given(0), "Label"},
        {"SET [1x:2y] OF Label;", given(1), given(2), "Label"},
        // Only a '?' that comes first is unbounded.
        {"SET [1: ?] OF Label;", given(1), given(0), "Label"},
        {"SET [0:4294967296] OF Label;", given(0), given(4294967295U), "Label"},
        {"SET [0:99999999999999999999] OF Label;", given(0), given(4294967295U), "Label"},
        {"SET [+1:+2] OF Label;", given(1), given(2), "Label"},
        {"SET [ : ] OF Label;", given(0), given(0), "Label"},
    });
}

TEST(AggregateTest, ElementTextRunsFromOfToTheSemicolon) {
    vAggregatesCheck({
        {"SET [1:2] OF Label", given(1), given(2), "Label"},
        {"SET [1:2] OF Label; more", given(1), given(2), "Label"},
        {"SET [1:2] OF  Label ;", given(1), given(2), " Label "},
        {"SET [1:2] PROOF Label;", given(1), given(2), "Label"},
        {"SET [1:2] OF SET OF Label;", given(1), given(2), "SET OF Label"},
        // "OF " before the bounds is passed by when there are bounds.
        {"SET OF [1:2] OF Label;", given(1), given(2), "Label"},
        {"SET OF LIST [1:2] OF Label;", given(1), given(2), "Label"},
        {"SET [1:2] Label;", given(1), given(2), ""},
        {"SET [1:2] of Label;", given(1), given(2), ""},
        {"SET [1:2] OF;", given(1), given(2), ""},
        {"SET [1:2] OF ;", given(1), given(2), ""},
        {"SET;", NotGiven, NotGiven, ""},
        {"SET", NotGiven, NotGiven, ""},
    });
}

TEST(AggregateTest, AggregateOfATypeLineTakesTheRestOfItsLineOnly) {
    const auto schema = schemaFromText("TYPE T = LIST\n [1:2] OF REAL;\nEND_TYPE;");
    const auto* list = DataTypeListInterface::pFrom(typeOf(*schema, "T").pDataType());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->getElementText(), "");
    EXPECT_EQ(list->getLowerBound().state, Bound::State::NotGiven);
}

struct UniqueRow {
    std::string text;
    bool unique;
    std::string element;
};

void vUniqueCheck(std::initializer_list<UniqueRow> rows) {
    for (const auto& row : rows)
        for (const auto form : BothForms) {
            const Declared declared(form, row.text);
            EXPECT_EQ(declared.as<DataTypeList>().isUnique(), row.unique) << row.text;
            EXPECT_EQ(declared.as<DataTypeList>().getElementText(), row.element) << row.text;
        }
}

TEST(AggregateTest, ListOfUniqueElementsIsUnique) {
    const Declared declared(InAttribute, "LIST [1:?] OF UNIQUE Label;");
    const auto& list = declared.as<DataTypeList>();
    EXPECT_EQ(list.getLowerBound().value, 1U);
    EXPECT_EQ(list.getLowerBound().state, Bound::State::Given);
    EXPECT_EQ(list.getUpperBound().state, Bound::State::Unbounded);
    EXPECT_TRUE(list.isUnique());
    EXPECT_EQ(list.getElementText(), "Label");
    EXPECT_EQ(list.pElement(), &typeOf(*declared.schema, "Label"));
    vUniqueCheck({{"LIST OF UNIQUE Label;", true, "Label"}, {"LIST OF Label;", false, "Label"}});
}

TEST(AggregateTest, ListOfListsIsNotUniqueItself) {
    vUniqueCheck({
        {"LIST [1:?] OF LIST [2:3] OF REAL;", false, "LIST [2:3] OF REAL"},
        {"LIST [1:?] OF LIST [1:4] OF UNIQUE Label;", false, "LIST [1:4] OF UNIQUE Label"},
        {"LIST OF SET OF UNIT;", false, "SET OF UNIT"},
        {"LIST [0:?] OF ARRAY [1:2] OF UNIT;", false, "ARRAY [1:2] OF UNIT"},
        // In front of the nested aggregate it counts.
        {"LIST [3:?] OF UNIQUE LIST [3:3] OF Label;", true, "LIST [3:3] OF Label"},
    });
}

TEST(AggregateTest, ListOfListsBuildsANestedList) {
    const Declared declared(InAttribute, "LIST [1:?] OF LIST [2:3] OF UNIQUE REAL;");
    const auto* inner = dynamic_cast<const DataTypeList*>(declared.as<DataTypeList>().pElement());
    ASSERT_NE(inner, nullptr);
    EXPECT_TRUE(inner->isUnique());
    EXPECT_EQ(inner->getLowerBound().value, 2U);
    EXPECT_EQ(inner->getUpperBound().value, 3U);
    ASSERT_NE(inner->pElement(), nullptr);
    EXPECT_EQ(inner->pElement()->getName(), "REAL");
}

TEST(AggregateTest, AnyThreeCapitalsUniAfterOfMakeAListUnique) {
    vUniqueCheck({
        {"LIST OF UNICODETEXT;", true, "TEXT"},
        {"LIST [1:2] OF xUNIQUE Label;", true, "Label"},
        {"LIST OF Label UNIQUE x;", true, "x"},
        {"LIST OF BAG OF UNIQUE Label;", true, "Label"},
        {"LIST OF  LIST OF UNIQUE Label;", true, "Label"},
        {"LIST OF LISTS UNIQUE Label;", true, "Label"},
        // Seven characters after the place there may be nothing left.
        {"LIST OF UNI;", true, ""},
        {"LIST OF UNIT", true, ""},
        {"LIST OF UNIQUE", true, ""},
        {"LIST OF UNIQUE;", true, ""},
        {"LIST OF UNIQUE ;", true, ""},
    });
}

TEST(AggregateTest, UniInAnotherLetterCaseOrBeforeOfDoesNotCount) {
    vUniqueCheck({
        {"LIST OF IfcUnitAssignment;", false, "IfcUnitAssignment"},
        {"LIST OF unique Label;", false, "unique Label"},
        {"LIST UNIQUE OF Label;", false, "Label"},
        {"LIST OF UN IQUE;", false, "UN IQUE"},
    });
}

TEST(AggregateTest, BoundsOfANestedAggregateAreTakenWhenThereAreNoOthers) {
    // The first brackets of the text are searched, and what precedes them is passed by.
    vUniqueCheck({{"LIST OF LIST [1:2] OF UNIQUE Label;", true, "Label"}});
}

TEST(AggregateTest, TheWholeRestOfATypeLineIsSearchedForUni) {
    const Declared declared(InType, "LIST OF Label; -- UNIQUE x");
    EXPECT_TRUE(declared.as<DataTypeList>().isUnique());
    EXPECT_EQ(declared.as<DataTypeList>().getElementText(), "x");
}

TEST(AggregateTest, SetAndArrayDoNotRecordUnique) {
    vAggregatesCheck({{"SET [1:?] OF UNIQUE Label;", given(1), Unbounded, "UNIQUE Label"},
                      {"ARRAY [1:2] OF UNIQUE Label;", given(1), given(2), "UNIQUE Label"}});
}

TEST(AggregateTest, ElementOfASetOfUniqueIsNotFound) {
    AssertCollector reports;
    const Declared declared(InAttribute, "SET [1:?] OF UNIQUE Label;");
    EXPECT_EQ(declared.as<DataTypeSet>().pElement(), nullptr);
    EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(11)));
}

TEST(AggregateTest, ElementIsAnObjectOfTheSchemaOrADataType) {
    struct {
        std::string text;
        std::string element;
    } const rows[] = {
        {"SET OF Ent;", "Ent"},
        {"SET OF ENT;", "Ent"},
        {"SET OF Label;", "Label"},
        {"SET OF REAL;", "REAL"},
        {"SET OF STRING(5);", "STRING(5)"},
        {"SET OF ARRAY OF REAL;", "ARRAY"},
    };
    for (const auto& row : rows)
        for (const auto form : BothForms) {
            AssertCollector reports;
            const Declared declared(form, row.text);
            const auto* element = declared.as<DataTypeSet>().pElement();
            ASSERT_NE(element, nullptr) << row.text;
            EXPECT_EQ(element->getName(), row.element) << row.text;
            EXPECT_THAT(reports.getRecords(), IsEmpty()) << row.text;
        }
}

TEST(AggregateTest, ElementThatIsNotFoundIsReportedWithTheKindOfTheAggregate) {
    const std::pair<std::string, int> rows[] = {
        {"ARRAY [1:2] OF Missing;", 9}, {"LIST [1:2] OF Missing;", 10},
        {"SET [1:2] OF Missing;", 11},  {"ARRAY;", 9},
        {"LIST [1:2] OF ;", 10},        {"SET [1:2];", 11},
        {"LIST OF UNIQUE;", 10},
    };
    for (const auto& [text, kind] : rows)
        for (const auto form : BothForms) {
            AssertCollector reports;
            const Declared declared(form, text);
            EXPECT_EQ(DataTypeListInterface::pFrom(declared.type)->pElement(), nullptr) << text;
            EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(kind))) << text;
        }
}

TEST(AggregateTest, OfNestedAggregatesTheInnermostReports) {
    AssertCollector reports;
    const Declared declared(InAttribute, "ARRAY [1:2] OF LIST OF SET OF Missing;");
    EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(11)));
    EXPECT_NE(declared.as<DataTypeArray>().pElement(), nullptr);
}

TEST(AggregateTest, AggregateOfItsOwnTypeEnds) {
    AssertCollector reports;
    const auto schema = schemaFromText("TYPE T = LIST OF T;\nEND_TYPE;");
    const auto* list = DataTypeListInterface::pFrom(typeOf(*schema, "T").pDataType());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->pElement(), &typeOf(*schema, "T"));
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(AggregateTest, BaseTypeIsTheTypeOfOneValue) {
    const auto base = [](const std::string& text) {
        const Declared declared(InAttribute, text);
        const auto* type = declared.type->pBaseType();
        return std::string(type ? type->getName() : "null");
    };
    EXPECT_EQ(base("REAL;"), "REAL");
    EXPECT_EQ(base("STRING(5);"), "STRING(5)");
    EXPECT_EQ(base("ENUMERATION OF (A);"), "ENUMERATION");
    EXPECT_EQ(base("LIST OF Label;"), "Label");
    EXPECT_EQ(base("LIST OF SET OF Ent;"), "Ent");
    EXPECT_EQ(base("LIST OF SET OF REAL;"), "REAL");
    EXPECT_EQ(base("LIST OF SET OF Missing;"), "null");
}

// ---- Nesting

/// "LIST OF LIST OF ... REAL;"
std::string nestedLists(std::size_t count) {
    return repeated("LIST OF ", count) + "REAL;";
}

TEST(AggregateTest, AggregatesNest256Levels) {
    for (const auto form : BothForms) {
        AssertCollector reports;
        const Declared declared(form, nestedLists(256));
        ASSERT_NE(declared.type, nullptr);
        ASSERT_NE(declared.type->pBaseType(), nullptr);
        EXPECT_EQ(declared.type->pBaseType()->getName(), "REAL");
        EXPECT_THAT(reports.getRecords(), IsEmpty());
    }
    EXPECT_EQ(entityOf(*Declared(InAttribute, nestedLists(256)).schema, "X")
                  .getAttributes()[0]
                  .getResolvedTypes()
                  .size(),
              257U);
}

TEST(AggregateTest, AggregateBelow256LevelsIsNotFound) {
    for (const std::size_t levels : {257U, 1000U})
        for (const auto form : BothForms) {
            AssertCollector reports;
            const Declared declared(form, nestedLists(levels));
            ASSERT_NE(declared.type, nullptr);
            EXPECT_EQ(declared.type->pBaseType(), nullptr);
            EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(10))) << levels;
        }
}

TEST(AggregateTest, NestingIsCountedAnewForEachType) {
    AssertCollector reports;
    const auto schema =
        schemaFromText("ENTITY X;\n  A1 : " + nestedLists(300) + "\n  A2 : " + nestedLists(256) +
                       "\n  A3 : " + nestedLists(256) + "\nEND_ENTITY;");
    EXPECT_THAT(reports.getRecords(), ElementsAre(elementNotFound(10)));
}

TEST(AggregateTest, AggregateWhoseElementIsResolvedStaysAsItIs) {
    Declared declared(InType, "LIST OF SET OF REAL;");
    const auto& list = declared.as<DataTypeList>();
    const auto* const element = list.pElement();
    const auto typeCount = declared.schema->getDataTypes().size();
    const_cast<DataTypeList&>(list).vUpdate(*declared.schema);
    EXPECT_EQ(list.pElement(), element);
    EXPECT_EQ(declared.schema->getDataTypes().size(), typeCount);
}

} // namespace
