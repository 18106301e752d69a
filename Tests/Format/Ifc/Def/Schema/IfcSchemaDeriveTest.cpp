#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDerive.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::IsEmpty;

const kiv::assert::AssertRecord NotFound{0, "Attribute not found",
                                         "kiv::ifc::def::schema::DeriveValue::update",
                                         "Source/Format/Ifc/Def/Schema/IfcSchemaDerive", 30};

constexpr std::string_view Family = "ENTITY Root\n SUPERTYPE OF (ONEOF (Mid));\n"
                                    "  Name : STRING;\n"
                                    "  Tag : STRING;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Mid\n SUPERTYPE OF (ONEOF (Leaf)) SUBTYPE OF (Root);\n"
                                    "  Tag : REAL;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Leaf\n SUBTYPE OF (Mid);\n"
                                    "  Own : REAL;\n"
                                    "END_ENTITY;";

/// The name of the entity that declares the attribute; "-" for null.
std::string ownerOf(const Attribute* attribute) {
    return std::string(attribute ? attribute->getEntity().getName() : "-");
}

struct UpdateRow {
    std::string_view name;
    std::string_view owner;
    bool reported;
};

TEST(DeriveTest, NameWithAPointFindsTheAttributeInTheEntityAndAbove) {
    const auto schema = schemaFromText(Family);
    const UpdateRow rows[] = {
        {"SELF\\Root.Name", "Root", false},
        {"SELF\\Leaf.Own", "Leaf", false},
        // The entity before the point is not looked at: the nearest attribute of the name is taken.
        {"SELF\\Root.Tag", "Mid", false},
        {"SELF\\Missing.Tag", "Mid", false},
        {".Own", "Leaf", false},
        // Attribute names are compared as written.
        {"SELF\\Root.name", "-", true},
        {"SELF\\Root.Missing", "-", true},
        {"SELF\\Root.Name ", "-", true},
        {"SELF\\Root.", "-", true},
        // Without a point there is nothing to find.
        {"Own", "-", false},
        {"Name", "-", false},
        {"SELF\\Root", "-", false},
        {"", "-", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        AssertCollector reports;
        DeriveValue value(row.name, "REAL := 1.0;");
        EXPECT_EQ(value.pRedeclared(), nullptr);
        value.update(entityOf(*schema, "Leaf"));
        EXPECT_EQ(ownerOf(value.pRedeclared()), row.owner);
        EXPECT_EQ(reports.getRecords(),
                  row.reported ? std::vector{NotFound} : std::vector<kiv::assert::AssertRecord>{});
    }
}

TEST(DeriveTest, AttributeOfASubtypeIsNotFound) {
    const auto schema = schemaFromText(Family);
    AssertCollector reports;
    DeriveValue value("SELF\\Leaf.Own", "");
    value.update(entityOf(*schema, "Mid"));
    EXPECT_EQ(value.pRedeclared(), nullptr);
    EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound));
}

TEST(DeriveTest, KeepsNameAndRestAsTheyAreGiven) {
    const DeriveValue value(" SELF\\A.B \t", " REAL := 1.0; ");
    EXPECT_EQ(value.getName(), " SELF\\A.B \t");
    EXPECT_EQ(value.getRest(), " REAL := 1.0; ");
}

TEST(DeriveTest, AppendsOneValueAfterTheOther) {
    Derive derive;
    EXPECT_THAT(derive.getValues(), IsEmpty());
    derive.vDeriveAdd("B", "REAL := 1.0;");
    derive.vDeriveAdd("A", "REAL := 2.0;");
    derive.vDeriveAdd("B", "REAL := 3.0;");
    ASSERT_EQ(derive.getValues().size(), 3U);
    EXPECT_EQ(derive.getValues()[0].getName(), "B");
    EXPECT_EQ(derive.getValues()[1].getName(), "A");
    EXPECT_EQ(derive.getValues()[2].getRest(), "REAL := 3.0;");
}

TEST(DeriveTest, ClauseOfAnEntityIsResolvedWithTheEntity) {
    AssertCollector reports;
    const auto schema = schemaFromText("ENTITY Leaf\n SUBTYPE OF (Root);\n"
                                       "  Own : REAL;\n"
                                       " DERIVE\n"
                                       "  SELF\\Root.Name : STRING := 'x';\n"
                                       "  SELF\\Leaf.Own : REAL := 1.0;\n"
                                       "  Plain : REAL := Own.x;\n"
                                       "  SELF\\Root.Missing : REAL := 1.0;\n"
                                       "END_ENTITY;\n"
                                       "ENTITY Root;\n"
                                       "  Name : STRING;\n"
                                       "END_ENTITY;");
    const auto* derive = entityOf(*schema, "Leaf").pDerive();
    ASSERT_NE(derive, nullptr);
    ASSERT_EQ(derive->getValues().size(), 4U);
    EXPECT_EQ(derive->getValues()[0].pRedeclared(), &entityOf(*schema, "Root").getAttributes()[0]);
    EXPECT_EQ(derive->getValues()[1].pRedeclared(), &entityOf(*schema, "Leaf").getAttributes()[0]);
    EXPECT_EQ(derive->getValues()[2].pRedeclared(), nullptr);
    EXPECT_EQ(derive->getValues()[3].pRedeclared(), nullptr);
    EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound));
}

TEST(DeriveTest, RedeclaredAttributeIsFoundHoweverFarUpWhateverTheNames) {
    // Entities are resolved in the order of their names' hashes; twenty names put every level before every
    // other.
    for (int number = 0; number < 20; ++number) {
        const auto suffix = std::to_string(number);
        AssertCollector reports;
        const auto schema = schemaFromText(
            "ENTITY Leaf" + suffix + "\n SUBTYPE OF (Middle" + suffix +
            ");\n DERIVE\n  SELF\\Root.Name : STRING := 'x';\nEND_ENTITY;\nENTITY Middle" + suffix +
            "\n SUBTYPE OF (Upper" + suffix + ");\nEND_ENTITY;\nENTITY Upper" + suffix +
            "\n SUBTYPE OF (Root);\nEND_ENTITY;\n" + "ENTITY Root;\n  Name : STRING;\nEND_ENTITY;");
        const auto* derive = entityOf(*schema, "Leaf" + suffix).pDerive();
        EXPECT_EQ(derive->getValues()[0].pRedeclared(), &entityOf(*schema, "Root").getAttributes()[0]);
        EXPECT_THAT(reports.getRecords(), testing::IsEmpty());
    }
}

/// Entities E0 to E<count>, each but the first a subtype of the one before it.
std::string sLine(int count, const std::string& rootLines, const std::string& lines) {
    std::string text = "ENTITY E0" + rootLines + "\nEND_ENTITY;\n";
    for (int number = 1; number <= count; ++number)
        text += "ENTITY E" + std::to_string(number) + "\n SUBTYPE OF (E" + std::to_string(number - 1) +
                ");\n" + lines + "END_ENTITY;\n";
    return text;
}

TEST(DeriveTest, OfALineOfHundredsOfSupertypesTheNearestAttributeIsRedeclared) {
    // More steps than are walked: some are answered by walks, others by the table.
    AssertCollector reports;
    constexpr int Count = 800;
    auto text = sLine(Count, "\n  A : REAL;\n  B : REAL;\n  A : REAL;",
                      " DERIVE\n  SELF\\E0.A : REAL := 1;\n  SELF\\E0.B : REAL := 1;\n");
    const auto middle = text.find(" DERIVE", text.find("ENTITY E400\n"));
    text.insert(middle, "  A : REAL;\n");
    const auto schema = schemaFromText(text);
    const auto* const root = &entityOf(*schema, "E0");
    const auto* const nearer = &entityOf(*schema, "E400");
    for (int number = 1; number <= Count; ++number) {
        SCOPED_TRACE(number);
        const auto& values = entityOf(*schema, "E" + std::to_string(number)).pDerive()->getValues();
        EXPECT_EQ(values[0].pRedeclared(), &(number < 400 ? root : nearer)->getAttributes()[0]);
        EXPECT_EQ(values[1].pRedeclared(), &root->getAttributes()[1]);
    }
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(DeriveTest, OfALineOfHundredsOfSupertypesWhatIsMissingIsReportedInTurn) {
    AssertCollector reports;
    constexpr int Count = 500;
    schemaFromText(sLine(Count, "\n  A : REAL;",
                         "  B : LIST OF Missing;\n DERIVE\n  SELF\\E0.a : REAL := 1;\n"
                         "  SELF\\E0.A : REAL := 1;\n WHERE\n  WR1 : );\n"));
    std::vector<std::string> expected;
    for (int number = 1; number <= Count; ++number)
        expected.insert(expected.end(), {"Type not found", "Attribute not found",
                                         "Got SyntaxError when parsing an express rule"});
    auto messages = reports.getMessages();
    for (auto& message : messages)
        message.resize(std::min(message.find(':'), message.size()));
    EXPECT_EQ(messages, expected);
}

TEST(DeriveTest, OfALineOfHundredsOfSupertypesThatIsACircleItIsLookedForUpToTheCut) {
    AssertCollector reports;
    constexpr int Count = 500;
    const auto schema = schemaFromText(
        sLine(Count, "\n SUBTYPE OF (E500);\n  A : REAL;", " DERIVE\n  SELF\\E0.A : REAL := 1;\n"));
    // From the cut down to the end of the line nobody is below E0.
    std::size_t found = 0;
    for (int number = 1; number <= Count; ++number) {
        SCOPED_TRACE(number);
        const auto& entity = entityOf(*schema, "E" + std::to_string(number));
        const auto* const redeclared = entity.pDerive()->getValues()[0].pRedeclared();
        EXPECT_EQ(redeclared != nullptr, entity.isSameOrSubtypeOf(entityOf(*schema, "E0")));
        found += redeclared ? 1U : 0U;
    }
    const auto messages = reports.getMessages();
    EXPECT_EQ(std::count(messages.begin(), messages.end(), "Entity not found"), 1);
    EXPECT_EQ(messages.size(), 1 + Count - found);
}

TEST(DeriveTest, AttributesOfTheOwnEntityAreFoundAmongHundreds) {
    AssertCollector reports;
    constexpr int Count = 500;
    std::string attributes;
    std::string derived;
    for (int number = 0; number < Count; ++number) {
        attributes += "  A" + std::to_string(number) + " : REAL;\n";
        derived += "  SELF\\X.A" + std::to_string(Count - 1 - number) + " : REAL := 1;\n";
    }
    const auto schema = schemaFromText("ENTITY X;\n" + attributes + " DERIVE\n" + derived + "END_ENTITY;");
    const auto& entity = entityOf(*schema, "X");
    for (std::size_t number = 0; number < Count; ++number)
        EXPECT_EQ(entity.pDerive()->getValues()[number].pRedeclared(),
                  &entity.getAttributes()[Count - 1 - number]);
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(DeriveTest, BlankAfterARedeclaredNameHidesItsAttribute) {
    // Only what precedes the name is trimmed.
    AssertCollector reports;
    const auto schema =
        schemaFromText("ENTITY A;\n  Own : REAL;\n DERIVE\n  SELF\\A.Own  : REAL := 1.0;\nEND_ENTITY;");
    EXPECT_EQ(entityOf(*schema, "A").pDerive()->getValues()[0].getName(), "SELF\\A.Own ");
    EXPECT_THAT(reports.getRecords(), ElementsAre(NotFound));
}

} // namespace
