#include "Messages/MessageTable.h"
#include "Messages/SourceMessages.h"

#include "Support/AssertCollector.h"
#include "Support/SchemaPsetFromText.h"
#include "Support/SetFromText.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <sstream>
#include <string>

namespace kiv::test {

void PrintTo(const Message& message, std::ostream* stream) {
    *stream << '"' << message.text << "\" from \"" << message.function << '"';
}

namespace {

using Messages = std::set<Message>;
namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;
namespace xml = ifc::def::xml;

/// A schema that itself gives no report.
std::unique_ptr<ifc::def::SchemaPset> sampleSchema() {
    return schemaPsetFromText("TYPE Kinds = ENUMERATION OF (B, C);\n"
                              "END_TYPE;\n"
                              "ENTITY Plain;\n"
                              "END_ENTITY;\n"
                              "ENTITY Text;\n"
                              "  PredefinedType : STRING;\n"
                              "  Of : Kind;\n"
                              "END_ENTITY;\n"
                              "ENTITY Kind;\n"
                              "  PredefinedType : Kinds;\n"
                              " INVERSE\n"
                              "  Texts : SET OF Text FOR Of;\n"
                              "END_ENTITY;\n");
}

void vConfigRead(const std::string& text) {
    std::istringstream stream(text);
    sampleSchema()->vXmlSchemaConfigInit(stream);
}

/// Checks the set and all that is in it; gives the records.
Messages recordsOf(const std::string& text) {
    const auto schema = sampleSchema();
    const XmlFromText document(text);
    xml::XmlSetErrors errors;
    const auto set = pSetFromElement(document.root(), errors);
    set->checkForErrors(*schema, errors);
    if (const auto* quantities = dynamic_cast<const qto::QuantitySetDef*>(set.get())) {
        for (const auto& quantity : quantities->getQuantities())
            quantity.checkForErrors(*schema, errors);
    }
    Messages records;
    for (const auto& record : errors.getRecords())
        records.insert({record.message, ""});
    return records;
}

void vTypeNameAsk(const std::string& text) {
    const auto schema = sampleSchema();
    xml::XmlSetErrors errors;
    ifc::def::SchemaPropertySetDefinitions sets;
    sets.xmlSetAdd(*schema, pSetFromElement(XmlFromText(text).root(), errors), errors);
    auto& registry = ifc::def::SchemaContextAndPropertySetDefinitions::instance();
    registry.addPropertySets({"host", false}, std::move(sets));
    ifc::findPropertyTypeName("S.M", *schema);
    registry.clear();
}

/// The records that the input gives; the reports go to whom they may concern.
Messages recordsOf(InputKind kind, const std::string& input) {
    switch (kind) {
    case InputKind::Schema:
        schemaPsetFromText(input);
        return {};
    case InputKind::Set:
        return recordsOf(input);
    case InputKind::Config:
        vConfigRead("<cnf:c xmlns:cnf='c' id='TEST'>" + input + "</cnf:c>");
        return {};
    case InputKind::WholeConfig:
        vConfigRead(input);
        return {};
    case InputKind::TypeName:
        vTypeNameAsk(input);
        return {};
    }
    return {};
}

Messages messagesOf(InputKind kind, const std::string& input) {
    const AssertCollector reports;
    auto messages = recordsOf(kind, input);
    for (const auto& report : reports.getRecords())
        messages.insert({report.message, report.function});
    return messages;
}

/// The messages of the table, without what differs from input to input behind them.
bool boInTable(const std::string& text) {
    return std::ranges::any_of(messageTable(), [&](const MessageRow& row) {
        return row.message == text ||
               (!row.function.empty() && row.message.find(text) != std::string_view::npos);
    });
}

bool boFunctionInTable(const std::string& function) {
    constexpr std::string_view configurations = "kiv::ifc::def::xmlschema::";
    return std::ranges::any_of(messageTable(), [&](const MessageRow& row) {
        return row.function.starts_with(function) ||
               row.function.starts_with(std::string(configurations) + function);
    });
}

TEST(Messages, SampleSchemaGivesNone) {
    const AssertCollector reports;
    sampleSchema();
    EXPECT_THAT(reports.getMessages(), testing::IsEmpty());
}

TEST(Messages, EachIsGivenForItsInput) {
    for (const auto& row : messageTable()) {
        SCOPED_TRACE(std::string(row.input));
        EXPECT_THAT(messagesOf(row.kind, std::string(row.input)),
                    testing::Contains(Message{std::string(row.message), std::string(row.function)}));
    }
}

TEST(Messages, EachOfTheSourcesIsInTheTable) {
    const auto found = messagesInSources(KIV_FORMAT_FOLDER);
    EXPECT_GE(found.texts.size(), 25U);
    for (const auto& text : found.texts)
        EXPECT_TRUE(boInTable(text)) << text;
}

TEST(Messages, EachFunctionOfTheSourcesIsInTheTable) {
    const auto found = messagesInSources(KIV_FORMAT_FOLDER);
    EXPECT_GE(found.functions.size(), 18U);
    for (const auto& function : found.functions)
        EXPECT_TRUE(boFunctionInTable(function)) << function;
}

// Where no literal stands, a message is handed on, or the operation is declared. What hands a message on is itself among the
// operations that are searched for, but for the clause of a rule, whose message begins with a text of the table.
TEST(Messages, NoneIsHiddenFromTheSearch) {
    const std::set<std::string> known{"addAssert: assert::AssertInfo{0, message, function, file, line}",
                                      "vAssertReport: message",
                                      "vAssertReport: std::string_view message",
                                      "vConfigReport: std::string_view message",
                                      "vErrorAdd: finding->message",
                                      "vErrorAdd: std::string message",
                                      "vFail: const std::string& message",
                                      "SyntaxError: const SyntaxError& other",
                                      "SyntaxError: message + \" at \" + std::to_string(current_.line) + "
                                      "\":\" + std::to_string(current_.column)",
                                      "SyntaxError: std::string message",
                                      "SyntaxError: "};
    EXPECT_EQ(messagesInSources(KIV_FORMAT_FOLDER).indirect, known);
}

} // namespace

} // namespace kiv::test
