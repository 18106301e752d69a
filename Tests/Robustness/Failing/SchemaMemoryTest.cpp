#include "Format/Ifc/Def/Schema/IfcSchemaAttributeSearch.h"
#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "MemoryFailures.h"
#include "Support/ExpressionText.h"
#include "Support/ModelText.h"
#include "Support/SampleData.h"
#include "Support/SampleStore.h"
#include "Support/SchemaFromText.h"
#include "kiv/Base/Exception.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"
#include "kiv/Format/Ifc/Def/SchemaLoader.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>

namespace kiv::test {

namespace {

using ifc::SchemaLoader;
using ifc::def::SchemaPset;

/// Looks at reports and keeps nothing of them, so that nothing can fail in it.
class CountingSink final : public assert::Sink {
public:
    void vReport(const assert::AssertInfo& info) override { size_ += info.message.size(); }
    std::size_t getSize() const { return size_; }

private:
    std::size_t size_ = 0;
};

struct Reading {
    std::unique_ptr<std::istringstream> stream;
    std::unique_ptr<SchemaPset> schema;
};

std::string sModelOf(const Reading& reading) {
    return reading.schema ? sModelText(*reading.schema) : "none";
}

/// Reading what comes after the header line, which is read by the host that calls.
Operation<Reading> statementsReading(const std::string& text) {
    const auto header = text.find("SCHEMA ");
    const auto body = text.find('\n', header) + 1;
    const auto line = text.substr(header, body - header - 1);
    return {.prepare =
                [=] {
                    return Reading{std::make_unique<std::istringstream>(text), nullptr};
                },
            .run =
                [=](Reading& reading) {
                    reading.stream->clear();
                    reading.stream->seekg(static_cast<std::streamoff>(body));
                    reading.schema = std::make_unique<SchemaPset>(*reading.stream, line, 0);
                },
            .answers = sModelOf};
}

Operation<Reading> textReading(const std::string& text) {
    auto operation = statementsReading(text);
    operation.run = [](Reading& reading) {
        reading.stream->clear();
        reading.stream->seekg(0);
        reading.schema = SchemaPset::pStepStreamRead(*reading.stream);
    };
    return operation;
}

TEST(SchemaMemory, StatementsOfTheSample) {
    EXPECT_GT(failuresOf(statementsReading(sSampleText("Building.exp"))), 100U);
}

TEST(SchemaMemory, StatementsThatAreReportedOf) {
    CountingSink sink;
    const assert::ScopedSink installed(sink);
    EXPECT_GT(failuresOf(statementsReading(sSampleText("Broken.exp"))), 50U);
    EXPECT_GT(sink.getSize(), 0U);
}

TEST(SchemaMemory, TextWithLongLinesBeforeItsHeader) {
    EXPECT_GT(failuresOf(textReading("(* a comment that no short string can hold *)\n"
                                     "SCHEMA A_NAME_THAT_NO_SHORT_STRING_CAN_HOLD;\n"
                                     "ENTITY Wall;\nEND_ENTITY;\nEND_SCHEMA;\n"
                                     "(* and one behind it that is no shorter *)\n")),
              5U);
}

/// Looking for many attributes among many takes more steps than a schema is walked through.
TEST(SchemaMemory, StatementsWhoseAttributesAreFoundInATable) {
    constexpr std::size_t Attributes = 130;
    static_assert(Attributes * Attributes > ifc::def::schema::AttributeStepsMax);
    std::string text = "SCHEMA TABLE;\nENTITY E;\n";
    for (std::size_t i = 0; i != Attributes; ++i)
        text += "A" + std::to_string(i) + " : E;\n";
    text += "END_ENTITY;\nENTITY F\n SUBTYPE OF (E);\n DERIVE\n";
    for (std::size_t i = 0; i != Attributes; ++i)
        text += "SELF\\E.B : E := 1;\n";
    text += "SELF\\E.A1 : E := 1;\nEND_ENTITY;\nEND_SCHEMA;\n";
    EXPECT_GT(failuresOf(statementsReading(text)), Attributes);
}

TEST(SchemaMemory, WholeSample) {
    EXPECT_GT(failuresOf(textReading(sSampleText("Building.exp"))), 100U);
}

/// The current loader, gone with it.
struct Loading {
    struct Free {
        void operator()(SchemaLoader*) const { SchemaLoader::vCurrFree(); }
    };
    std::unique_ptr<SchemaLoader, Free> loader;
};

constexpr const char* FirstName = "a name that was asked for before";
constexpr const char* SecondName = "a name that is asked for the first time";

SchemaPset* pSmallSchema(const std::string& name) {
    std::istringstream stream("ENTITY Wall;\nEND_ENTITY;\nEND_SCHEMA;\n");
    return std::make_unique<SchemaPset>(stream, "SCHEMA " + name + ";", 0).release();
}

TEST(SchemaLoaderMemory, NothingIsCachedAndTheNextRequestMakesTheSchema) {
    const Operation<Loading> operation{
        .prepare =
            [] {
                SchemaLoader::vCurrFree();
                auto& loader = SchemaLoader::curr();
                loader.newSchemaCallback = pSmallSchema;
                loader.pSchemaFromName(FirstName);
                return Loading{.loader = std::unique_ptr<SchemaLoader, Loading::Free>(&loader)};
            },
        .run = [](Loading& loading) { loading.loader->pSchemaFromName(SecondName); },
        .answers =
            [](const Loading& loading) {
                std::string made;
                loading.loader->newSchemaCallback = [&made](const std::string& name) {
                    made += name + ' ';
                    return nullptr;
                };
                for (const auto* const name : {FirstName, SecondName}) {
                    const auto* const schema = loading.loader->pSchemaFromName(name);
                    made += schema ? std::string(schema->getName()) : "none";
                }
                loading.loader->newSchemaCallback = pSmallSchema;
                return made;
            }};
    EXPECT_GT(failuresOf(operation), 10U);
}

TEST(SchemaLoaderMemory, LackOfACallbackNeedsMemoryToBeReported) {
    // The loader, and the message. The loader stays when the message fails, as if it had been asked for.
    const auto held = allocationsHeld();
    SchemaLoader::curr();
    SchemaLoader::vCurrFree();
    EXPECT_EQ(allocationsHeld(), held);
    EXPECT_FALSE(boRunWith(0, [&] { SchemaLoader::curr(); }));
    EXPECT_FALSE(boRunWith(1, [&] { SchemaLoader::pSchemaGet({}, FirstName); }));
    EXPECT_THROW(SchemaLoader::pSchemaGet({}, FirstName), kiv::exception);
    SchemaLoader::vCurrFree();
    EXPECT_EQ(allocationsHeld(), held);
}

/// A clause that was parsed three times for one schema, and another schema that knows nothing of its names.
struct Clause {
    explicit Clause(const std::string& lines) :
        text(" WHERE\n" + lines),
        first(schemaFromText("TYPE Kind = ENUMERATION OF (A1, B1);\nEND_TYPE;")),
        other(schemaFromText("ENTITY Other;\nEND_ENTITY;")),
        where(*first, text.line, 6, text.stream) {
        for (int time = 0; time != 3; ++time)
            where.parseRules(*first);
    }

    LineAndStream text;
    std::unique_ptr<ifc::def::schema::Schema> first;
    std::unique_ptr<ifc::def::schema::Schema> other;
    ifc::def::schema::Where where;
};

std::string sRulesOf(const std::unique_ptr<Clause>& clause) {
    std::string rules;
    for (const auto& rule : clause->where.getRules())
        rules.append(rule.label).append(" : ").append(sExpressionText(*rule.expression)).append(1, '\n');
    return rules;
}

/// Its rules are there as often as before, and never twice for one time.
TEST(SchemaMemory, ClauseParsedForAnotherSchemaHasAllItsRulesOrNoneMore) {
    std::string lines;
    for (int rule = 0; rule != 20; ++rule)
        lines += "ALabelThatNeedsMemoryOfItsOwn" + std::to_string(rule) +
                 " : Kind.A1 = " + std::to_string(rule) + " + x;\n";
    for (const auto* const last : {"END_ENTITY;\n", "WR : );\nEND_ENTITY;\n"}) {
        SCOPED_TRACE(last);
        CountingSink reports;
        const assert::ScopedSink installed(reports);
        const Operation<std::unique_ptr<Clause>> operation{
            .prepare = [&] { return std::make_unique<Clause>(lines + last); },
            .run = [](std::unique_ptr<Clause>& clause) { clause->where.parseRules(*clause->other); },
            .answers = sRulesOf};
        EXPECT_GT(failuresOf(operation), 5U);
        auto clause = std::make_unique<Clause>(lines + last);
        clause->where.parseRules(*clause->other);
        EXPECT_EQ(clause->where.getRules().size(), 4U * 20);
    }
}

} // namespace

} // namespace kiv::test
