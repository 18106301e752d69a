// Texts that nobody would write but somebody may send: deep, long, circular, cut and broken ones.

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include "Format/Ifc/Def/Schema/SampleText.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/AssertCollector.h"
#include "Support/ExpressionText.h"
#include "Support/Growth.h"
#include "Support/ModelText.h"
#include "Support/SchemaFromText.h"
#include "kiv/Base/Exception.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::ElementsAre;
using testing::IsEmpty;

/// More than any of these texts takes, and less than what grows with the square of one, or worse.
constexpr std::uint64_t Soon = 250'000'000;

/// Counts the work since it was made, as Support/Growth.h does; 0 under a sanitizer.
class WorkMeter {
public:
    std::uint64_t getWork() const { return sum(workDone()) - sum(before_); }

private:
    static std::uint64_t sum(const Work& work) { return work.blocks + work.bytes + work.allocatedBytes; }

    Work before_ = workDone();
};

std::string sNumbered(std::string_view name, std::size_t number) {
    return std::string(name) + std::to_string(number);
}

/// True when the text is read or refused as promised: by `kiv::exception`, or by a literal that is out of
/// range.
bool boEndsAsPromised(const std::string& text) {
    try {
        const auto schema = schemaFromWholeText(text);
        if (schema)
            sModelText(*schema);
    } catch (const kiv::exception&) {
    } catch (const std::out_of_range&) {
    } catch (...) {
        return false;
    }
    return true;
}

// ---- Inheritance

/// Entities E0 to E<n - 1>, each a subtype of the one before it and listed by it, in this or in the reverse
/// order.
std::string inheritanceLine(std::size_t count, bool reverse) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = reverse ? count - 1 - i : i;
        text += "ENTITY " + sNumbered("E", number) + '\n';
        if (number + 1 < count)
            text += " SUPERTYPE OF (ONEOF (" + sNumbered("E", number + 1) + "))";
        if (number > 0)
            text += " SUBTYPE OF (" + sNumbered("E", number - 1) + ");\n";
        text += '\n' + sNumbered("  A", number) + " : REAL;\nEND_ENTITY;\n";
    }
    return text;
}

TEST(SchemaHostileTest, LineOf20000EntitiesIsReadAndNumberedSoon) {
    constexpr std::size_t Count = 20000;
    for (const bool reverse : {false, true}) {
        AssertCollector reports;
        const WorkMeter meter;
        const auto schema = schemaFromText(inheritanceLine(Count, reverse));
        EXPECT_LT(meter.getWork(), Soon);
        EXPECT_THAT(reports.getRecords(), IsEmpty());
        for (const std::size_t i : {std::size_t{0}, Count / 2, Count - 1}) {
            const auto& entity = entityOf(*schema, sNumbered("E", i));
            EXPECT_EQ(entity.getFirstNumber(), i + 1);
            EXPECT_EQ(entity.getLastNumber(), Count);
        }
    }
}

TEST(SchemaHostileTest, DeepestOf20000EntitiesFindsWhatTheRootDeclares) {
    constexpr std::size_t Count = 20000;
    const auto schema = schemaFromText(inheritanceLine(Count, false));
    const auto& root = entityOf(*schema, "E0");
    const auto& deepest = entityOf(*schema, sNumbered("E", Count - 1));
    EXPECT_EQ(deepest.pAttributeFromName(AttributeName("A0"), true), &root.getAttributes()[0]);
    EXPECT_EQ(deepest.pAttributeFromNameUpper("A0", true), &root.getAttributes()[0]);
    EXPECT_EQ(deepest.pAttributeInverseFromName("A0", true), nullptr);
    EXPECT_EQ(Entity::pCommonBaseGet(deepest, root), &root);
    EXPECT_TRUE(deepest.isSameOrSubtypeOf(root));
    EXPECT_FALSE(root.isSameOrSubtypeOf(deepest));
}

TEST(SchemaHostileTest, LineOf20000EntitiesThatEachDeriveIsReadSoon) {
    std::string text = "ENTITY E0;\n  A : REAL;\nEND_ENTITY;\n";
    for (int i = 1; i < 20000; ++i)
        text += "ENTITY E" + std::to_string(i) + "\n SUBTYPE OF (E" + std::to_string(i - 1) +
                ");\n DERIVE\n  D : REAL := 1.0;\nEND_ENTITY;\n";
    const WorkMeter meter;
    const auto schema = schemaFromText(text);
    EXPECT_LT(meter.getWork(), Soon);
    EXPECT_EQ(entityOf(*schema, "E19999").pDerive()->getValues().size(), 1U);
}

TEST(SchemaHostileTest, LineWithoutListsIsReadSoon) {
    std::string text = "ENTITY E0;\nEND_ENTITY;\n";
    for (std::size_t i = 1; i < 20000; ++i)
        text +=
            "ENTITY " + sNumbered("E", i) + "\n SUBTYPE OF (" + sNumbered("E", i - 1) + ");\nEND_ENTITY;\n";
    const WorkMeter meter;
    const auto schema = schemaFromText(text);
    EXPECT_LT(meter.getWork(), Soon);
    EXPECT_TRUE(entityOf(*schema, "E19999").isSameOrSubtypeOf(entityOf(*schema, "E0")));
}

TEST(SchemaHostileTest, CircleOf20000SupertypesIsFoundSoon) {
    AssertCollector reports;
    std::string text;
    for (std::size_t i = 0; i < 20000; ++i)
        text += "ENTITY " + sNumbered("E", i) + "\n SUBTYPE OF (" + sNumbered("E", (i + 1) % 20000) +
                ");\nEND_ENTITY;\n";
    const WorkMeter meter;
    const auto schema = schemaFromText(text);
    EXPECT_LT(meter.getWork(), Soon);
    EXPECT_THAT(reports.getMessages(), ElementsAre("Entity not found"));
    std::size_t roots = 0;
    for (const auto* object : schema->getObjects())
        roots += Entity::pFrom(object)->pSupertype() ? 0 : 1;
    EXPECT_EQ(roots, 1U);
}

TEST(SchemaHostileTest, ManyCirclesOfSupertypesAreEachReportedOnce) {
    AssertCollector reports;
    std::string text;
    for (std::size_t i = 0; i < 1000; ++i)
        text += "ENTITY " + sNumbered("A", i) + "\n SUBTYPE OF (" + sNumbered("B", i) + ");\nEND_ENTITY;\n" +
                "ENTITY " + sNumbered("B", i) + "\n SUBTYPE OF (" + sNumbered("A", i) + ");\nEND_ENTITY;\n";
    schemaFromText(text);
    EXPECT_EQ(reports.getMessages(), Strings(1000, "Entity not found"));
}

TEST(SchemaHostileTest, EntitiesThatListEachOtherAreNumberedOnce) {
    const auto schema = schemaFromText("ENTITY A\n SUPERTYPE OF (ONEOF (B));\nEND_ENTITY;\n"
                                       "ENTITY B\n SUPERTYPE OF (ONEOF (A));\nEND_ENTITY;");
    EXPECT_EQ(entityOf(*schema, "A").getFirstNumber(), 1);
    EXPECT_EQ(entityOf(*schema, "A").getLastNumber(), 2);
    EXPECT_EQ(entityOf(*schema, "B").getFirstNumber(), 2);
    EXPECT_EQ(entityOf(*schema, "B").getLastNumber(), 2);
}

TEST(SchemaHostileTest, EntityThatListsItselfIsNumberedOnce) {
    const auto schema = schemaFromText("ENTITY A\n SUPERTYPE OF (ONEOF (A, A));\nEND_ENTITY;");
    EXPECT_EQ(entityOf(*schema, "A").getFirstNumber(), 1);
    EXPECT_EQ(entityOf(*schema, "A").getLastNumber(), 1);
}

TEST(SchemaHostileTest, ListsOf40LevelsOfDiamondsEnd) {
    // Both entities of a level list both of the next one: 2 to the power of 40 ways from the top to the
    // bottom.
    std::string text = "ENTITY Top\n SUPERTYPE OF (ONEOF (A0, B0));\nEND_ENTITY;\n";
    for (std::size_t i = 0; i < 40; ++i)
        for (const auto* side : {"A", "B"}) {
            text += "ENTITY " + sNumbered(side, i) + "\n SUPERTYPE OF (ONEOF (" + sNumbered("A", i + 1) +
                    ", " + sNumbered("B", i + 1) + "));\n SUBTYPE OF (" +
                    (i == 0 ? "Top" : sNumbered("A", i - 1)) + ");\nEND_ENTITY;\n";
        }
    text += "ENTITY A40;\n SUBTYPE OF (A39);\nEND_ENTITY;\nENTITY B40;\n SUBTYPE OF (A39);\nEND_ENTITY;\n";
    const WorkMeter meter;
    const auto schema = schemaFromText(text);
    EXPECT_LT(meter.getWork(), Soon);
    for (const auto* object : schema->getObjects())
        EXPECT_NE(Entity::pFrom(object)->getFirstNumber(), 0) << object->getName();
}

TEST(SchemaHostileTest, MoreEntitiesThanNumbersAreReadAndFound) {
    // The numbers have 16 bits and wrap around.
    std::string text = "ENTITY Root\n SUPERTYPE OF (ONEOF (E0";
    for (std::size_t i = 1; i < 70000; ++i)
        text += "\n," + sNumbered("E", i);
    text += "));\nEND_ENTITY;\n";
    for (std::size_t i = 0; i < 70000; ++i)
        text += "ENTITY " + sNumbered("E", i) + "\n SUBTYPE OF (Root);\nEND_ENTITY;\n";
    const auto schema = schemaFromText(text);
    EXPECT_EQ(schema->getObjects().size(), 70001U);
    EXPECT_EQ(entityOf(*schema, "Root").getSubtypes().size(), 70000U);
    EXPECT_TRUE(entityOf(*schema, "E69999").isSameOrSubtypeOf(entityOf(*schema, "Root")));
    EXPECT_FALSE(entityOf(*schema, "E69999").isSameOrSubtypeOf(entityOf(*schema, "E1")));
    EXPECT_EQ(Entity::pCommonBaseGet(entityOf(*schema, "E1"), entityOf(*schema, "E65537")),
              &entityOf(*schema, "Root"));
}

// ---- Types

TEST(SchemaHostileTest, LineOf100000TypesIsResolvedSoon) {
    std::string text;
    for (std::size_t i = 0; i < 100000; ++i)
        text += "TYPE " + sNumbered("T", i) + " = " + sNumbered("T", i + 1) + ";\nEND_TYPE;\n";
    text += "TYPE T100000 = REAL;\nEND_TYPE;\n";
    AssertCollector reports;
    const WorkMeter meter;
    const auto schema = schemaFromText(text);
    EXPECT_LT(meter.getWork(), Soon);
    EXPECT_THAT(reports.getRecords(), IsEmpty());
    for (const auto* name : {"T0", "T50000", "T99999"})
        EXPECT_EQ(typeOf(*schema, name).pDataType(), typeOf(*schema, "T100000").pDataType()) << name;
    EXPECT_THAT(namesOf(typeOf(*schema, "T1").getDerivedTypes()), ElementsAre("T0"));
}

TEST(SchemaHostileTest, CircleOf100000TypesEnds) {
    std::string text;
    for (std::size_t i = 0; i < 100000; ++i)
        text += "TYPE " + sNumbered("T", i) + " = " + sNumbered("T", (i + 1) % 100000) + ";\nEND_TYPE;\n";
    const auto schema = schemaFromText(text);
    EXPECT_EQ(typeOf(*schema, "T0").pDataType(), nullptr);
    EXPECT_EQ(typeOf(*schema, "T99999").pDataType(), nullptr);
}

TEST(SchemaHostileTest, SelectsOf40LevelsOfDiamondsAnswerSoon) {
    std::string text = "ENTITY E;\nEND_ENTITY;\nENTITY Other;\nEND_ENTITY;\n";
    for (std::size_t i = 0; i < 40; ++i)
        for (const auto* side : {"A", "B"})
            text += "TYPE " + sNumbered(side, i) + " = SELECT (" + sNumbered("A", i + 1) + ", " +
                    sNumbered("B", i + 1) + ");\nEND_TYPE;\n";
    text += "TYPE A40 = SELECT (E);\nEND_TYPE;\nTYPE B40 = SELECT (E);\nEND_TYPE;\n";
    const auto schema = schemaFromText(text);
    const auto* select = dynamic_cast<const DataTypeSelect*>(typeOf(*schema, "A0").pDataType());
    ASSERT_NE(select, nullptr);
    const WorkMeter meter;
    EXPECT_TRUE(select->isCompatible(entityOf(*schema, "E")));
    EXPECT_FALSE(select->isCompatible(entityOf(*schema, "Other")));
    EXPECT_LT(meter.getWork(), Soon);
}

TEST(SchemaHostileTest, LineOf10000SelectsAnswers) {
    std::string text =
        "ENTITY E;\nEND_ENTITY;\nENTITY Other;\nEND_ENTITY;\nTYPE S10000 = SELECT (E);\nEND_TYPE;\n";
    for (std::size_t i = 0; i < 10000; ++i)
        text += "TYPE " + sNumbered("S", i) + " = SELECT (" + sNumbered("S", i + 1) + ");\nEND_TYPE;\n";
    const auto schema = schemaFromText(text);
    const auto* select = dynamic_cast<const DataTypeSelect*>(typeOf(*schema, "S0").pDataType());
    ASSERT_NE(select, nullptr);
    const WorkMeter meter;
    EXPECT_TRUE(select->isCompatible(entityOf(*schema, "E")));
    EXPECT_FALSE(select->isCompatible(entityOf(*schema, "Other")));
    EXPECT_LT(meter.getWork(), Soon);
}

TEST(SchemaHostileTest, VeryDeepAggregatesAreRefusedSoon) {
    AssertCollector reports;
    const WorkMeter meter;
    const auto nested = repeated("LIST OF ", 20000) + "REAL;";
    schemaFromText("ENTITY X;\n  A1 : " + nested + "\nEND_ENTITY;\nTYPE T = " + nested + "\nEND_TYPE;");
    // Each level that is allowed may copy the rest of the text.
    EXPECT_LT(meter.getWork(), 2 * Soon);
    EXPECT_THAT(reports.getMessages(), ElementsAre("Type not found", "Type not found"));
}

// ---- Length

TEST(SchemaHostileTest, LineOfOneMegabyteIsRead) {
    const std::string mega(1000000, 'x');
    const auto check = [](const std::string& statements, std::string_view name, std::size_t length) {
        const WorkMeter meter;
        const auto schema = schemaFromText(statements);
        EXPECT_LT(meter.getWork(), Soon) << name;
        EXPECT_EQ(objectOf(*schema, name).getName().size(), length) << name.substr(0, 10);
    };
    check("ENTITY " + mega + ";\nEND_ENTITY;", mega, mega.size());
    check(mega + "\nENTITY A;\n" + mega + "\n" + mega + " : " + mega + ";\nEND_ENTITY;", "A", 1);
    check("TYPE A = " + mega + ";\n" + mega + "\nEND_TYPE;", "A", 1);
    check("TYPE A = ENUMERATION OF (" + mega + ");\nEND_TYPE;", "A", 1);
    check("ENTITY A\n SUBTYPE OF (" + mega + ");\n WHERE\n WR1 : " + mega + ";\nEND_ENTITY;", "A", 1);
    check("FUNCTION A : REAL;\n" + mega + "\nEND_FUNCTION;", "A", 1);
    check("TYPE A = SET [" + mega + ':' + mega + "] OF " + mega + ";\nEND_TYPE;", "A", 1);
    check("ENTITY A;\n B : STRING(" + std::string(1000000, '9') + ");\nEND_ENTITY;", "A", 1);
}

TEST(SchemaHostileTest, LineOfOneMegabyteOfBracketsAndBlanksIsReadSoon) {
    const auto many = [](std::string_view text) { return repeated(text, 1000000 / text.size()); };
    for (const auto& line :
         {many("("), many("["), many(" "), many(" : "), many(","), many("UNI"), many("OF "), many(";"),
          many("'"), many("(*"), many("--"), many("SUBTYPE OF "), many("SUPERTYPE OF (ONEOF ")}) {
        const WorkMeter meter;
        for (const auto& text :
             {"ENTITY A\n" + line + "\n)\nEND_ENTITY;", "TYPE A = LIST " + line + ";\nEND_TYPE;",
              "ENTITY A\n X : LIST " + line + ";\n WHERE\n WR1 : " + line + ";\nEND_ENTITY;"})
            EXPECT_TRUE(boEndsAsPromised("SCHEMA TEST;\n" + text)) << line.substr(0, 20);
        EXPECT_LT(meter.getWork(), Soon) << line.substr(0, 20);
    }
}

TEST(SchemaHostileTest, LongListsAreReadSoon) {
    const auto list = "(A" + repeated("\n,A", 200000) + ");\n";
    const WorkMeter meter;
    AssertCollector reports;
    const auto schema =
        schemaFromText("TYPE T = ENUMERATION OF " + list + "END_TYPE;\nTYPE S = SELECT " + list +
                       "END_TYPE;\nENTITY A\n SUPERTYPE OF (ONEOF " + list + "END_ENTITY;");
    EXPECT_LT(meter.getWork(), Soon);
    EXPECT_EQ(entityOf(*schema, "A").getSubtypes().size(), 200001U);
    const auto* enumeration = dynamic_cast<const DataTypeEnum*>(typeOf(*schema, "T").pDataType());
    ASSERT_NE(enumeration, nullptr);
    EXPECT_EQ(enumeration->getItems().size(), 200001U);
    EXPECT_EQ(enumeration->getItemsOrdered().size(), 1U);
    EXPECT_THAT(reports.getRecords(), IsEmpty());
}

TEST(SchemaHostileTest, EntityWithManyOfEverythingIsReadSoon) {
    constexpr std::size_t Many = 5000;
    std::string text = "ENTITY X;\n";
    for (std::size_t i = 0; i < Many; ++i)
        text += sNumbered("  A", i) + " : LIST OF REAL;\n";
    text += " DERIVE\n";
    for (std::size_t i = 0; i < Many; ++i)
        text += sNumbered("  SELF\\X.A", i) + " : REAL := 1.0;\n";
    text += " INVERSE\n";
    for (std::size_t i = 0; i < 100; ++i)
        text += sNumbered("  I", i) + " : SET OF X FOR A0;\n";
    text += " UNIQUE\n";
    for (std::size_t i = 0; i < Many; ++i)
        text += sNumbered("  UR", i) + " : A0, A1;\n";
    text += " WHERE\n";
    for (std::size_t i = 0; i < Many; ++i)
        text += sNumbered("  WR", i) + " : A0 > 1;\n";
    AssertCollector reports;
    const WorkMeter meter;
    const auto schema = schemaFromText(text + "END_ENTITY;");
    EXPECT_LT(meter.getWork(), Soon);
    EXPECT_THAT(reports.getRecords(), IsEmpty());
    const auto& entity = entityOf(*schema, "X");
    EXPECT_EQ(entity.getAttributes().size(), Many);
    EXPECT_EQ(entity.pDerive()->getValues().back().pRedeclared(), &entity.getAttributes().back());
    EXPECT_EQ(entity.pUnique()->getRules().size(), Many);
    EXPECT_EQ(entity.pWhere()->getRules().size(), Many);
}

TEST(SchemaHostileTest, DeriveOverManyLinesIsJoinedSoon) {
    const WorkMeter meter;
    const auto schema = schemaFromText("ENTITY X;\n DERIVE\n D1 : REAL := 1.0" +
                                       repeated("\n + 1.0", 200000) + ";\nEND_ENTITY;");
    EXPECT_LT(meter.getWork(), Soon);
    EXPECT_EQ(entityOf(*schema, "X").pDerive()->getValues().at(0).getRest().size(), 12U + 200000U * 6U);
}

TEST(SchemaHostileTest, RuleOf100000OperandsIsKeptByItsEntity) {
    AssertCollector reports;
    const auto schema =
        schemaFromText("ENTITY X;\n WHERE\n  WR1 : a" + repeated("\n + a", 100000) + ";\nEND_ENTITY;");
    EXPECT_THAT(reports.getRecords(), IsEmpty());
    const auto& rules = entityOf(*schema, "X").pWhere()->getRules();
    ASSERT_EQ(rules.size(), 1U);
    EXPECT_EQ(sExpressionText(*rules[0].expression).size(), 1U + 100000U * 6U);
}

// ---- Bytes

TEST(SchemaHostileTest, ZeroBytesAreBytesLikeOthers) {
    const auto zero = std::string("\0", 1);
    const auto schema =
        schemaFromText("EN" + zero + "TITY No;\nENTITY A" + zero + "B;\n  C" + zero + " : D" + zero +
                       ";\nEND_ENTITY;\n" + zero + "\nFUNCTION F : REAL;\n" + zero + "\nEND_FUNCTION;");
    EXPECT_THAT(namesOf(schema->getObjects()), ElementsAre("A" + zero + "B", "F"));
    const auto& entity = entityOf(*schema, "a" + zero + "b");
    EXPECT_EQ(entity.getAttributes()[0].getName(), "C" + zero);
    EXPECT_EQ(entity.getAttributes()[0].getTypeText(), "D" + zero);
    EXPECT_EQ(schema->pObjectFromName("A"), nullptr);
    EXPECT_EQ(dynamic_cast<const Function&>(objectOf(*schema, "F")).getBodyLines().at(0), zero);
}

TEST(SchemaHostileTest, EveryByteMayStandAnywhere) {
    for (int value = 0; value < 256; ++value) {
        const std::string byte(1, static_cast<char>(value));
        const auto text = "TYPE T" + byte + " = " + byte + "STRING(" + byte + ");\n" + byte +
                          "\nEND_TYPE;\nENTITY " + byte + "E\n SUBTYPE OF (" + byte + ");\n A" + byte +
                          " : SET [" + byte + ":" + byte + "] OF " + byte + ";\n UNIQUE\n UR1 : " + byte +
                          ";\n WHERE\n WR1 : a " + byte + " b;\nEND_ENTITY;";
        EXPECT_NO_THROW(schemaFromText(text)) << value;
    }
}

TEST(SchemaHostileTest, TextThatEndsAnywhereEndsAsPromised) {
    for (std::size_t size = 0; size <= SampleText.size(); ++size)
        EXPECT_TRUE(boEndsAsPromised(std::string(SampleText.substr(0, size)))) << size;
}

TEST(SchemaHostileTest, TextWithoutOneOfItsLinesEndsAsPromised) {
    for (std::size_t start = 0; start < SampleText.size();) {
        const auto end = SampleText.find('\n', start) + 1;
        EXPECT_TRUE(
            boEndsAsPromised(std::string(SampleText.substr(0, start)) + std::string(SampleText.substr(end))))
            << SampleText.substr(start, end - start);
        start = end;
    }
}

TEST(SchemaHostileTest, ChangedTextEndsAsPromised) {
    std::mt19937 random(4711);
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    constexpr std::string_view Bytes("\0\t\n\r ()*,-.:;=?[]{}<>|'\\_aAEFTUW019\x80\xFF", 37);
    for (int round = 0; round < 1000; ++round) {
        std::string text(SampleText);
        for (auto changes = 1 + below(8); changes > 0; --changes) {
            const auto at = below(text.size());
            switch (below(4)) {
            case 0:
                text[at] = Bytes[below(Bytes.size())];
                break;
            case 1:
                text.erase(at, 1 + below(20));
                break;
            case 2:
                text.insert(at, 1, Bytes[below(Bytes.size())]);
                break;
            default:
                text.insert(at, text.substr(below(text.size()), below(60)));
            }
        }
        EXPECT_TRUE(boEndsAsPromised(text)) << text;
    }
}

TEST(SchemaHostileTest, TheSameTextIsReadTheSameWay) {
    EXPECT_EQ(sModelText(*schemaFromWholeText(SampleText)), sModelText(*schemaFromWholeText(SampleText)));
}

} // namespace
