// The kit when memory runs out: a reading gives a failure or throws, and everything else throws.
#include "MemoryFailures.h"
#include "Support/SampleData.h"
#include "Support/SchemaFromText.h"
#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Documents/SetCollection.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Express/ExpressTypeText.h"
#include "kiv/Kit/Express/ExpressionText.h"
#include "kiv/Kit/Express/ExpressionWalk.h"
#include "kiv/Kit/Names/NearestName.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

using kit::FailureKind;

/// Throws when memory ran out in a reading, which else says so in its result.
template <class Result>
Result memoryChecked(Result result) {
    if (result.failure && result.failure->kind == FailureKind::OutOfMemory)
        throw std::bad_alloc();
    return result;
}

std::string sDocument(const kit::SetDocument& document) {
    std::string text = document.path + '|' + document.text + '|';
    if (document.failure)
        return text + document.failure->reason;
    text += document.pSet() ? std::string(document.pSet()->getName()) : "no set";
    for (const auto& record : document.errors.getRecords())
        text += '|' + record.item + ';' + record.message;
    for (const auto& assertion : document.assertions)
        text += '|' + std::string(assertion.record.message) + std::to_string(assertion.recordsBefore);
    return text + '|' + std::to_string(document.positions ? document.positions->getElements().size() : 0);
}

TEST(KitMemory, SetDocuments) {
    const auto schema = schemaFromWholeText(sSampleText("Building.exp"));
    for (const auto* path : {"BrokenSets/Broken_Reports.xml", "BrokenSets/Broken_Classes.xml",
                             "BrokenSets/Broken_NotXml.xml", "BrokenSets/Broken_ForeignRoot.xml"}) {
        const auto text = sSampleText(path);
        const Operation<kit::SetDocument> operation{.prepare = [] { return kit::SetDocument(); },
                                                    .run =
                                                        [&](kit::SetDocument& document) {
                                                            document = memoryChecked(
                                                                kit::setTextCheck(text, path, *schema));
                                                        },
                                                    .answers = sDocument};
        EXPECT_GT(failuresOf(operation), 10U) << path;
    }
}

TEST(KitMemory, Schemas) {
    const std::string text =
        "SCHEMA ONE;\nEND_SCHEMA;\nSCHEMA TWO;\nENTITY A\n SUBTYPE OF (Missing);\n WHERE\n"
        "  W : NOTHING(;\nEND_ENTITY;\nEND_SCHEMA;\n";
    const Operation<kit::SchemaFile> operation{
        .prepare = [] { return kit::SchemaFile(); },
        .run = [&](kit::SchemaFile& file) { file = memoryChecked(kit::schemaTextRead(text, "two.exp")); },
        .answers =
            [](const kit::SchemaFile& file) {
                auto answer = file.text + '|' + std::to_string(file.names.size());
                for (const auto& record : file.assertions)
                    answer += '|' + std::string(record.message);
                return answer;
            }};
    EXPECT_GT(failuresOf(operation), 10U);
}

TEST(KitMemory, CollectionIsAsItWasWhenASetFindsNoRoom) {
    const auto schema = schemaFromWholeText(sSampleText("Building.exp"));
    const auto documentOf = [](const std::string& name) {
        return memoryChecked(
            kit::setTextRead("<PropertySetDef><Name>" + name + "</Name></PropertySetDef>", name + ".xml"));
    };
    struct State {
        kit::SetCollection collection;
        std::vector<kit::SetDocument> documents;
    };
    // A set that is taken, and one whose name is.
    for (const auto* name : {"Pset_B", "Pset_A"}) {
        const Operation<State> operation{
            .prepare =
                [&] {
                    State state;
                    kit::vSetAdd(state.collection, *schema, documentOf("Pset_A"));
                    return state;
                },
            .run = [&](State& state) { kit::vSetAdd(state.collection, *schema, documentOf(name)); },
            .answers =
                [](const State& state) {
                    std::string answer;
                    for (const auto* set : state.collection.definitions.getXmlSets())
                        answer += std::string(set->getName()) + ' ' + state.collection.paths.at(set) + '|';
                    for (const auto& problem : state.collection.problems)
                        answer += problem.reason + '|';
                    return answer;
                }};
        EXPECT_GT(failuresOf(operation), 5U) << name;
    }
}

class Counter final : public kit::ExpressionWalk {
public:
    std::size_t left = 0;

protected:
    void vLeave(const ifc::def::schema::Expression& /*node*/) override { ++left; }
};

TEST(KitMemory, TextsAndWalksOfExpressions) {
    const auto schema = schemaFromText("TYPE T = LIST [1:?] OF SELECT (A, B);\nEND_TYPE;\nENTITY A;\n WHERE\n"
                                       "  R : SIZEOF(QUERY(x <* SELF\\A.b[1:2] | x - [0.5:3] = 'y')) > 0;\n"
                                       "END_ENTITY;");
    const auto& rule = *entityOf(*schema, "A").pWhere()->getRules()[0].expression;
    const Operation<std::string> operation{.prepare = [] { return std::string(); },
                                           .run =
                                               [&](std::string& text) {
                                                   Counter counter;
                                                   counter.vWalk(rule);
                                                   text = kit::sExpression(rule) +
                                                          kit::sTypeResolved(&typeOf(*schema, "T")) +
                                                          std::to_string(counter.left);
                                               },
                                           .answers = [](const std::string& text) { return text; }};
    EXPECT_GT(failuresOf(operation), 10U);
}

TEST(KitMemory, NearestNameNeedsNone) {
    const std::vector<std::string_view> names{"IfcWallStandardCase", "IfcThermalTransmittanceMeasure",
                                              "IfcWall"};
    std::optional<kit::NameMatch> match;
    EXPECT_TRUE(boRunWith(0, [&] { match = kit::nearestName("IfcThermlaTransmitanceMeasure", names); }));
    ASSERT_TRUE(match);
    EXPECT_EQ(match->name, names[1]);
}

} // namespace

} // namespace kiv::test
