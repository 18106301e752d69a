// What the kit makes of hostile input: readings, texts of expressions and types, nearest names.

#include "Robustness/Growth/GrowthRow.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"
#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Express/ExpressTypeText.h"
#include "kiv/Kit/Express/ExpressionText.h"
#include "kiv/Kit/Express/ExpressionWalk.h"
#include "kiv/Kit/Findings/SchemaFindings.h"
#include "kiv/Kit/Names/NearestName.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

std::string sRule(const std::string& expression) {
    return "SCHEMA S;\nENTITY Wall;\n WHERE\n R : " + expression + ";\nEND_ENTITY;\nEND_SCHEMA;\n";
}

class NodeCounter final : public kit::ExpressionWalk {
public:
    std::size_t count = 0;

protected:
    void vLeave(const ifc::def::schema::Expression& /*node*/) override { ++count; }
};

/// Reads the schema, writes its types and rules, and walks these.
void vSchemaWrite(const std::string& text) {
    const auto file = kit::schemaTextRead(text, "s.exp");
    ASSERT_TRUE(file.schema);
    const auto* entity = ifc::def::schema::Entity::pFrom(file.schema->pObjectFromName("Wall"));
    ASSERT_TRUE(entity && entity->pWhere() && entity->pWhere()->getRules().size() == 1);
    const auto& rule = *entity->pWhere()->getRules()[0].expression;
    EXPECT_FALSE(kit::sExpression(rule).empty());
    NodeCounter counter;
    counter.vWalk(rule);
    EXPECT_GT(counter.count, 0U);
}

void vTypeWrite(const std::string& text) {
    const auto file = kit::schemaTextRead(text, "s.exp");
    ASSERT_TRUE(file.schema);
    EXPECT_FALSE(kit::sTypeResolved(file.schema->pObjectFromName("T0")).empty());
}

/// With what is found of the reports.
void vReportsRead(const std::string& text) {
    const auto file = kit::schemaTextRead(text, "s.exp");
    ASSERT_TRUE(file.schema);
    EXPECT_GE(file.assertions.size(), 500U);
    EXPECT_FALSE(kit::schemaFindingsOf(file.schema.get(), file.assertions, file.text, file.path).empty());
}

void vDocumentRead(const std::string& text) {
    EXPECT_FALSE(kit::setTextRead(text, "s.xml").failure);
}

/// Looks for the first word of the text among all of them.
void vNearestFind(const std::string& text) {
    std::vector<std::string_view> words;
    for (std::size_t begin = 0; begin < text.size();) {
        const auto end = std::min(text.find(' ', begin), text.size());
        words.push_back(std::string_view(text).substr(begin, end - begin));
        begin = end + 1;
    }
    kit::nearestName(words.front(), std::span(words).subspan(1));
    EXPECT_LE(kit::nearestNames(words.front(), std::span(words).subspan(1)).size(), 3U);
}

} // namespace

TEST(KitGrowthTest, ExpressionsAreReadWrittenAndWalked) {
    vGrowthExpect(
        {{"sum", 100'000, [](std::size_t count) { return sRule("a" + sTimes("+a", count) + " = 1"); }},
         {"path", 100'000, [](std::size_t count) { return sRule("a" + sTimes(".a", count) + " = 1"); }},
         {"indexes", 100'000, [](std::size_t count) { return sRule("a" + sTimes("[1]", count) + " = 1"); }},
         {"list", 100'000, [](std::size_t count) { return sRule("1 IN [0" + sTimes(",'x'", count) + "]"); }},
         {"sum in brackets", 50'000,
          [](std::size_t count) { return sRule("[" + sTimes("(a+b)*c,", count) + "0] = 1"); }}},
        vSchemaWrite);
}

TEST(KitGrowthTest, ChainsOfTypesAreWritten) {
    vGrowthExpect({{"names", 20'000,
                    [](std::size_t count) {
                        return "SCHEMA S;\n" +
                               sJoined(count,
                                       [](std::size_t number) {
                                           return "TYPE T" + std::to_string(number) + " = T" +
                                                  std::to_string(number + 1) + ";\nEND_TYPE;\n";
                                       }) +
                               "END_SCHEMA;\n";
                    }},
                   {"circle", 20'000,
                    [](std::size_t count) {
                        return "SCHEMA S;\n" +
                               sJoined(count,
                                       [count](std::size_t number) {
                                           return "TYPE T" + std::to_string(number) + " = T" +
                                                  std::to_string((number + 1) % count) + ";\nEND_TYPE;\n";
                                       }) +
                               "END_SCHEMA;\n";
                    }}},
                  vTypeWrite);
}

TEST(KitGrowthTest, ReportsThatAreTheSameAreKeptOnce) {
    const auto types = [](std::size_t count) {
        return sJoined(count, [](std::size_t number) {
            return "TYPE T" + std::to_string(number) + " = T;\nEND_TYPE;\n";
        });
    };
    // A clause as long as all that is made of its type, which is reported once for each of them.
    const auto schema = [=](const std::string& rules, std::size_t count) {
        return "SCHEMA S;\nTYPE T = REAL;\n WHERE\n" + rules + "END_TYPE;\n" + types(count) + "END_SCHEMA;\n";
    };
    vGrowthExpect({{"refused rule and types that are made of its type", 20'000,
                    [=](std::size_t count) {
                        return schema("  R : SELF > 0" + sTimes(" + 1", 4 * count) + " < ;\n", count);
                    }},
                   {"many rules, of which the last is refused", 20'000,
                    [=](std::size_t count) {
                        return schema(sTimes("  R : SELF > 0;\n", count) + "  Q : < ;\n", count);
                    }}},
                  vReportsRead);
}

TEST(KitGrowthTest, DocumentsAreRead) {
    const auto set = [](const std::string& children) {
        return "<PropertySetDef><Name>A</Name>" + children + "</PropertySetDef>";
    };
    vGrowthExpect(
        {{"records", 50'000, [=](std::size_t count) { return set(sTimes("<Odd/>", count)); }},
         {"members", 20'000,
          [=](std::size_t count) {
              return set("<PropertyDefs>" + sTimes("<PropertyDef><Name>A</Name></PropertyDef>", count) +
                         "</PropertyDefs>");
          }},
         {"text", 500'000,
          [=](std::size_t count) { return set("<Definition>" + sTimes("a", count) + "</Definition>"); }},
         {"lines", 500'000, [=](std::size_t count) { return set(sTimes("\n", count)); }}},
        vDocumentRead);
}

TEST(KitGrowthTest, NamesAreCompared) {
    vGrowthExpect(
        {{"near", 20'000, [](std::size_t count) { return "IfcWall" + sTimes(" IfcWlal", count); }},
         {"words", 20'000,
          [](std::size_t count) {
              return "IfcAaaaaaaa" + sTimes(" IfcAaaaAaaaAaaaAaaaAaaaAaaaAaaaAaaa", count);
          }},
         {"longest", 5'000,
          [](std::size_t count) {
              return std::string(100, 'a') + sTimes(' ' + std::string(50, 'A') + std::string(50, 'b'), count);
          }},
         {"one very long", 500'000, [](std::size_t count) { return "IfcWall " + sTimes("a", count); }}},
        vNearestFind);
}

} // namespace kiv::test
