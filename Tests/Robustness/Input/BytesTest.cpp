// Bytes that no schema text should hold: it is read all the same, and what was read keeps them.

#include "Format/Ifc/Def/Schema/SampleText.h"
#include "Robustness/Input/Mutation.h"
#include "Robustness/Input/Reading.h"
#include "Support/ExpressionText.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/IfcDefApplicableClasses.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def::schema;
using namespace std::string_view_literals;

/// NUL, a lone carriage return, control characters, and UTF-8 that is good, cut, too long or out of range.
constexpr std::string_view AllBytes[] = {
    "\0"sv,           "\r"sv,        "\x01"sv, "\x7F"sv,     "\x80"sv,         "\xE9"sv,
    "\xFF"sv,         "\xC3\xA9"sv,  "\xC3"sv, "\xC0\x80"sv, "\xED\xA0\x80"sv, "\xF5\x80\x80\x80"sv,
    "\xEF\xBB\xBF"sv, "\0\r\xFF\0"sv};

std::string sShown(std::string_view bytes) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string text;
    for (const char byte : bytes)
        text.append("\\x").append(
            {Digits[static_cast<unsigned char>(byte) >> 4U], Digits[static_cast<unsigned char>(byte) & 15U]});
    return text;
}

/// All names that the schema has taken out of its text.
std::vector<std::string_view> namesOf(const Schema& schema) {
    std::vector<std::string_view> names{schema.getName()};
    for (const auto* object : schema.getObjects()) {
        names.push_back(object->getName());
        const auto* entity = Entity::pFrom(object);
        if (!entity)
            continue;
        for (const auto& attribute : entity->getAttributes())
            names.insert(names.end(), {attribute.getName(), attribute.getTypeText()});
        for (const auto& attribute : entity->getAttributesInverse())
            names.insert(names.end(), {attribute.getName(), attribute.getForAttributeName()});
        names.insert(names.end(), entity->getSupertypeOfNames().begin(), entity->getSupertypeOfNames().end());
    }
    return names;
}

TEST(BytesTest, TheyMayBeBeforeInsideAndAfterEachToken) {
    const Reading reading{std::string(SampleText)};
    // Without it the comment before the header does not end.
    const auto commentEnd = SampleText.find("*)");
    for (const auto& token : tokensOf(SampleText)) {
        for (const auto at : {token.begin, token.begin + token.size / 2, token.begin + token.size}) {
            for (const auto bytes : AllBytes) {
                auto text = std::string(SampleText);
                text.insert(at, bytes);
                const auto place = sShown(bytes) + " at byte " + std::to_string(at) + " of the sample";
                EXPECT_EQ(reading.sSchemaFault(text, true), "") << place;
                const bool isAllComment = at == commentEnd || at == commentEnd + 1;
                const auto schema = schemaFromWholeText(text);
                ASSERT_EQ(schema == nullptr, isAllComment) << place;
                if (!schema)
                    continue;
                for (const auto name : namesOf(*schema))
                    EXPECT_NE(text.find(name), std::string::npos) << place << ": " << name;
            }
        }
    }
}

TEST(BytesTest, NamesKeepThem) {
    for (const auto bytes : AllBytes) {
        SCOPED_TRACE(sShown(bytes));
        const auto with = [bytes](std::string_view before, std::string_view after) {
            return std::string(before).append(bytes).append(after);
        };
        const auto schema = schemaFromText(
            "ENTITY " + with("Wa", "ll") + "\n SUPERTYPE OF (ONEOF (" + with("Do", "or") + "));\n  " +
            with("Le", "ngth") + " : OPTIONAL " + with("Ki", "nd") + ";\n INVERSE\n  " + with("Of", "It") +
            " : SET OF " + with("Wa", "ll") + " FOR " + with("Le", "ngth") + ";\n UNIQUE\n  " +
            with("U", "R") + " : " + with("Le", "ngth") + ";\nEND_ENTITY;\nENTITY " + with("Do", "or") +
            "\n SUBTYPE OF (" + with("Wa", "ll") + ");\nEND_ENTITY;\nTYPE " + with("Ki", "nd") +
            " = ENUMERATION OF (" + with("SO", "LID") + ", HOLLOW);\nEND_TYPE;\nTYPE Some = SELECT (" +
            with("Do", "or") + ");\nEND_TYPE;\nFUNCTION " + with("Pla", "in") + " : REAL;\n  " +
            with("x :=", " y;") + "\nEND_FUNCTION;");
        const auto& wall = entityOf(*schema, with("wA", "LL"));
        EXPECT_EQ(wall.getName(), with("Wa", "ll"));
        EXPECT_EQ(wall.getNameUpper(), with("WA", "LL"));
        const auto& door = entityOf(*schema, with("DO", "or"));
        EXPECT_EQ(door.getSupertypeName(), with("Wa", "ll"));
        EXPECT_EQ(door.pSupertype(), &wall);
        ASSERT_EQ(wall.getSubtypes().size(), 1U);
        EXPECT_EQ(wall.getSubtypes()[0], &door);
        const auto& kind = typeOf(*schema, with("KI", "ND"));
        const auto* length = schema->pAttributeGet(with("wa", "LL"), with("LE", "NGTH"));
        ASSERT_NE(length, nullptr);
        EXPECT_EQ(length->getName(), with("Le", "ngth"));
        EXPECT_EQ(length->getTypeText(), with("Ki", "nd"));
        EXPECT_EQ(length->pFirstType(), &kind);
        EXPECT_EQ(wall.pAttributeFromName(AttributeName(with("Le", "ngth")), false), length);
        const auto* inverse = wall.pAttributeInverseFromName(with("oF", "iT"), false);
        ASSERT_NE(inverse, nullptr);
        EXPECT_EQ(inverse->pReferredAttribute(), length);
        EXPECT_EQ(wall.pUnique()->getRules().at(0).label, with("U", "R"));
        const auto& items = dynamic_cast<const DataTypeEnum&>(*kind.pDataType());
        EXPECT_THAT(items.getItems(), ::testing::ElementsAre(with("SO", "LID"), "HOLLOW"));
        EXPECT_TRUE(items.boContains(with("SO", "LID")));
        EXPECT_TRUE(
            dynamic_cast<const DataTypeSelect&>(*typeOf(*schema, "Some").pDataType()).isCompatible(door));
        const auto& function = dynamic_cast<const Function&>(objectOf(*schema, with("pLA", "IN")));
        EXPECT_EQ(function.getBodyLines().at(0), "  " + with("x :=", " y;"));
    }
}

TEST(BytesTest, LiteralsOfRulesKeepThem) {
    for (const auto bytes : AllBytes) {
        // A NUL byte ends the text of a rule.
        if (bytes.find('\0') != std::string_view::npos)
            continue;
        const auto literal = "x" + std::string(bytes) + "y";
        const auto schema = schemaFromText("ENTITY X;\n WHERE\n  WR1 : '" + literal + "';\nEND_ENTITY;");
        const auto& rules = entityOf(*schema, "X").pWhere()->getRules();
        ASSERT_EQ(rules.size(), 1U) << sShown(bytes);
        EXPECT_NE(sExpressionText(*rules[0].expression).find(literal), std::string::npos) << sShown(bytes);
    }
}

TEST(BytesTest, HashesOfNamesExtendTheSignOfEachByte) {
    // 0x811C9DC5 XOR 0xFFFFFFE9 is 0x7EE3622C; 0x01000193 is 2 to the power of 24 and 403; 403 times
    // 0x7EE3622C is 0xBFF38B44 modulo 2 to the power of 32, to which 0x2C000000 is added: 0xEBF38B44. Without
    // the sign the first step gave 0x811C9D2C.
    const auto schema = schemaFromText("ENTITY \xE9;\nEND_ENTITY;\nENTITY \x80;\nEND_ENTITY;");
    const auto& accented = entityOf(*schema, "\xE9");
    EXPECT_EQ(accented.getNameHash(), 0xEBF38B44U);
    EXPECT_EQ(accented.getNameUpperHash(), 0xEBF38B44U) << "no byte beyond ASCII has a capital";
    EXPECT_EQ(ifc::def::xml::ApplicableClasses("\xE9").getClassNameHash(), 0xEBF38B44U);
    // 0x811C9DC5 XOR 0xFFFFFF80 is 0x7EE36245; 403 times that is 0xBFF3B29F, and 0x45000000 added 0x04F3B29F,
    // modulo 2 to the power of 32 each.
    EXPECT_EQ(entityOf(*schema, "\x80").getNameHash(), 0x04F3B29FU);
    EXPECT_EQ(ifc::def::xml::ApplicableClasses("\x80").getClassNameHash(), 0x04F3B29FU);
}

TEST(BytesTest, HashesOfAttributesExtendTheSignOfEachByte) {
    // "L": 0x811C9DC5 XOR 0x4C is 0x811C9D89; 403 times that is 0x400BFEAB, to which 0x89000000 is added:
    // 0xC90BFEAB. After it: XOR 0xFFFFFFE9 is 0x36F40142; 403 times that is 0x821DFAE6, to which 0x42000000
    // is added: 0xC41DFAE6.
    const auto schema =
        schemaFromText("ENTITY X;\n  \xE9 : REAL;\n  L\xE9 : REAL;\n INVERSE\n  \x80 : X FOR \xE9;\n"
                       "END_ENTITY;");
    const auto& entity = entityOf(*schema, "X");
    ASSERT_EQ(entity.getAttributes().size(), 2U);
    EXPECT_EQ(entity.getAttributes()[0].getNameHash(), 0xEBF38B44U) << "as the entity of this name";
    EXPECT_EQ(AttributeName("\xE9").getHash(), 0xEBF38B44U);
    EXPECT_EQ(entity.getAttributes()[1].getNameHash(), 0xC41DFAE6U);
    EXPECT_EQ(AttributeName("L\xE9").getHash(), 0xC41DFAE6U);
    ASSERT_EQ(entity.getAttributesInverse().size(), 1U);
    EXPECT_EQ(entity.getAttributesInverse()[0].getNameHash(), 0x04F3B29FU);
}

} // namespace

} // namespace kiv::test
