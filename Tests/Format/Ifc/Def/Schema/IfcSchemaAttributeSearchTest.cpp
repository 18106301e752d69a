#include "Format/Ifc/Def/Schema/IfcSchemaAttributeSearch.h"

#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;

/// With no steps everything comes from the table, with some the table takes over on the way up or between two
/// questions.
constexpr std::size_t StepCounts[] = {0, 1, 2, 3, 5, 8, 13, 21, 34, AttributeStepsMax};

constexpr std::string_view Family = "ENTITY Root;\n"
                                    "  Name : STRING;\n"
                                    "  Tag : STRING;\n"
                                    "  Name : REAL;\n"
                                    " INVERSE\n"
                                    "  Of : Root FOR Name;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Mid\n SUBTYPE OF (Root);\n"
                                    "  tag : REAL;\n"
                                    "  Tag : REAL;\n"
                                    "  Extra : REAL;\n"
                                    " INVERSE\n"
                                    "  oF : Root FOR Name;\n"
                                    "  OF : Root FOR Name;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Leaf\n SUBTYPE OF (Mid);\n"
                                    "  Own : REAL;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Side\n SUBTYPE OF (Root);\n"
                                    "  Own : REAL;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Empty;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY Below\n SUBTYPE OF (Empty);\n"
                                    "  Name : REAL;\n"
                                    "END_ENTITY;\n";

/// The entity and the place of an attribute among its attributes, as "Root 0"; "-" for null.
template <class Kind>
std::string placeOf(const Kind* attribute, std::span<const Kind> attributes) {
    return std::string(attribute->getEntity().getName()) + ' ' +
           std::to_string(attribute - attributes.data());
}

std::string placeOf(const Attribute* attribute) {
    return attribute ? placeOf<Attribute>(attribute, attribute->getEntity().getAttributes()) : "-";
}

std::string placeOf(const AttributeInverse* attribute) {
    return attribute ? placeOf<AttributeInverse>(attribute, attribute->getEntity().getAttributesInverse())
                     : "-";
}

struct Row {
    std::string_view entity;
    std::string_view name;
    std::string_view place;
};

constexpr Row Rows[] = {
    // Of two of one name in an entity the first counts; else the nearest; letter case included.
    {"Root", "Name", "Root 0"},
    {"Leaf", "Name", "Root 0"},
    {"Root", "Tag", "Root 1"},
    {"Mid", "Tag", "Mid 1"},
    {"Leaf", "Tag", "Mid 1"},
    {"Leaf", "tag", "Mid 0"},
    {"Side", "Tag", "Root 1"},
    {"Leaf", "Extra", "Mid 2"},
    {"Leaf", "Own", "Leaf 0"},
    {"Side", "Own", "Side 0"},
    {"Below", "Name", "Below 0"},
    // Those of subtypes, of siblings and of other roots are not found, nor what nobody has.
    {"Root", "tag", "-"},
    {"Root", "Own", "-"},
    {"Mid", "Own", "-"},
    {"Side", "Extra", "-"},
    {"Below", "Tag", "-"},
    {"Below", "Own", "-"},
    {"Empty", "Name", "-"},
    {"Leaf", "name", "-"},
    {"Leaf", "TAG", "-"},
    {"Leaf", "Of", "-"},
    {"Leaf", "Missing", "-"},
    {"Leaf", "", "-"},
};

TEST(AttributeSearchTest, FindsTheNearestOfExactlyThisName) {
    const auto schema = schemaFromText(Family);
    for (const auto steps : StepCounts) {
        AttributeSearch<Attribute> downwards(steps);
        AttributeSearch<Attribute> upwards(steps);
        for (std::size_t i = 0; i != std::size(Rows); ++i) {
            SCOPED_TRACE(testing::Message() << steps << " steps, row " << i);
            const auto& row = Rows[i];
            EXPECT_EQ(placeOf(downwards.pFind(entityOf(*schema, row.entity), AttributeName(row.name))),
                      row.place);
            const auto& other = Rows[std::size(Rows) - 1 - i];
            EXPECT_EQ(placeOf(upwards.pFind(entityOf(*schema, other.entity), AttributeName(other.name))),
                      other.place);
        }
    }
}

TEST(AttributeSearchTest, FindsInverseAttributesByUpperCasedNames) {
    const auto schema = schemaFromText(Family);
    constexpr Row rows[] = {{"Leaf", "OF", "Mid 0"},  {"Mid", "OF", "Mid 0"},  {"Side", "OF", "Root 0"},
                            {"Root", "OF", "Root 0"}, {"Below", "OF", "-"},    {"Leaf", "Of", "-"},
                            {"Leaf", "NAME", "-"},    {"Leaf", "MISSING", "-"}};
    for (const auto steps : StepCounts) {
        AttributeSearch<AttributeInverse> search(steps);
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message() << steps << " steps, " << row.entity << ' ' << row.name);
            EXPECT_EQ(placeOf(search.pFind(entityOf(*schema, row.entity), std::string(row.name))), row.place);
        }
    }
}

TEST(AttributeSearchTest, NamesThatAreMetLaterAreNoneOfAnEntityThatWasMetBefore) {
    const auto schema = schemaFromText("ENTITY First;\n  A : REAL;\nEND_ENTITY;\n"
                                       "ENTITY Second;\n  B : REAL;\n  C : REAL;\n  D : REAL;\nEND_ENTITY;\n"
                                       "ENTITY Third\n SUBTYPE OF (First);\n  D : REAL;\nEND_ENTITY;\n");
    AttributeSearch<Attribute> search(0);
    constexpr Row rows[] = {{"First", "A", "First 0"}, {"Second", "C", "Second 1"}, {"First", "B", "-"},
                            {"First", "C", "-"},       {"First", "D", "-"},         {"Third", "D", "Third 0"},
                            {"Third", "A", "First 0"}, {"Third", "B", "-"},         {"First", "A", "First 0"},
                            {"Second", "A", "-"},      {"Second", "D", "Second 2"}, {"Third", "C", "-"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.entity << ' ' << row.name);
        EXPECT_EQ(placeOf(search.pFind(entityOf(*schema, row.entity), AttributeName(row.name))), row.place);
    }
}

/// Entities whose supertypes are any of them, themselves included, with attributes of few names.
std::string sRandomEntities(std::mt19937& random, std::size_t count) {
    const auto below = [&](std::size_t end) { return std::to_string(random() % end); };
    const auto attributes = [&](std::string_view end) {
        std::string text;
        for (auto left = random() % 5; left > 0; --left)
            text.append("  ").append(random() % 2 == 0 ? "A" : "a").append(below(9)).append(end);
        return text;
    };
    std::string text;
    for (std::size_t i = 0; i != count; ++i) {
        text += "ENTITY E" + std::to_string(i) + '\n';
        if (random() % 8 != 0)
            text += " SUBTYPE OF (E" + below(count) + ");\n";
        text += attributes(" : REAL;\n") + " INVERSE\n" + attributes(" : E0 FOR A0;\n") + "END_ENTITY;\n";
    }
    return text;
}

TEST(AttributeSearchTest, AnswersAsTheLookUpsOfEntitiesDo) {
    std::mt19937 random(20);
    for (int run = 0; run != 100; ++run) {
        const AssertCollector reports;
        const auto schema = schemaFromText(sRandomEntities(random, 30));
        AttributeSearch<Attribute> search(random() % 200);
        AttributeSearch<AttributeInverse> searchInverse(random() % 200);
        for (int question = 0; question != 400; ++question) {
            const auto& entity = *Entity::pFrom(schema->getObjects()[random() % 30]);
            const auto digit = std::to_string(random() % 10);
            const auto name = (random() % 2 == 0 ? "A" : "a") + digit;
            SCOPED_TRACE(testing::Message() << run << ": " << entity.getName() << ' ' << name);
            ASSERT_EQ(search.pFind(entity, AttributeName(name)),
                      entity.pAttributeFromName(AttributeName(name), true));
            ASSERT_EQ(searchInverse.pFind(entity, "A" + digit),
                      entity.pAttributeInverseFromNameUpper("A" + digit, true));
        }
    }
}

} // namespace
