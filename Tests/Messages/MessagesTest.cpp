#include "Messages/MessageTable.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
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
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

/// What the library has to say about an input.
struct Answer {
    /// The error records, which name no function.
    Messages records;
    std::vector<kiv::assert::AssertRecord> reports;
};

Answer answerOf(const MessageRow& row) {
    const AssertCollector reports;
    auto records = recordsOf(row.kind, std::string(row.input));
    return {std::move(records), reports.getRecords()};
}

/// What it has to say about all inputs of the table.
Answer answerOfAll() {
    Answer all;
    for (const auto& row : messageTable()) {
        auto answer = answerOf(row);
        all.records.merge(answer.records);
        all.reports.insert(all.reports.end(), answer.reports.begin(), answer.reports.end());
    }
    return all;
}

/// Whether a report is that of the library's table. What differs from input to input may follow the message.
bool isOf(const ifc::def::ReportPlace& place, const kiv::assert::AssertRecord& report) {
    const bool isRule = place.report == ifc::def::Report::RuleRefused;
    const auto begins = std::string_view(report.message).starts_with(place.message);
    return (isRule ? begins : report.message == place.message) && report.function == place.function &&
           report.file == place.file && report.line == place.line;
}

std::string_view folderless(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

TEST(Messages, SampleSchemaGivesNone) {
    const AssertCollector reports;
    sampleSchema();
    EXPECT_THAT(reports.getMessages(), testing::IsEmpty());
}

TEST(Messages, EachIsGivenForItsInput) {
    for (const auto& row : messageTable()) {
        SCOPED_TRACE(std::string(row.input));
        auto [messages, reports] = answerOf(row);
        for (const auto& report : reports)
            messages.insert({report.message, report.function});
        EXPECT_THAT(messages,
                    testing::Contains(Message{std::string(row.message), std::string(row.function)}));
    }
}

TEST(Messages, EachReportOfTheLibraryIsSeen) {
    const auto answer = answerOfAll();
    for (const auto& place : ifc::def::ReportPlaces) {
        const auto isSeen = std::ranges::any_of(
            answer.reports, [&](const kiv::assert::AssertRecord& report) { return isOf(place, report); });
        EXPECT_TRUE(isSeen) << place.message << " from " << place.function << " in " << folderless(place.file)
                            << ':' << place.line;
    }
}

TEST(Messages, NoReportIsMadePastTheTableOfTheLibrary) {
    for (const auto& report : answerOfAll().reports) {
        const auto isKnown = std::ranges::any_of(
            ifc::def::ReportPlaces, [&](const ifc::def::ReportPlace& place) { return isOf(place, report); });
        EXPECT_TRUE(isKnown) << testing::PrintToString(report);
    }
}

TEST(Messages, EachRecordOfTheLibraryIsSeenAndNoOther) {
    Messages known;
    for (const auto& message : ifc::def::RecordMessages)
        known.insert({std::string(message.text), ""});
    EXPECT_EQ(answerOfAll().records, known);
}

TEST(Messages, EachSyntaxErrorOfTheLibraryIsSeen) {
    const auto answer = answerOfAll();
    for (const auto& message : ifc::def::SyntaxMessages) {
        const auto text = std::string(placeOf(ifc::def::Report::RuleRefused).message).append(message.text);
        const auto isSeen = std::ranges::any_of(answer.reports, [&](const kiv::assert::AssertRecord& report) {
            return report.message.starts_with(text);
        });
        EXPECT_TRUE(isSeen) << message.text;
    }
}

/// The files of the library that have the text, without folders and suffixes.
std::set<std::string> filesWith(std::string_view text) {
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(KIV_FORMAT_FOLDER)) {
        std::ifstream stream(entry.path());
        if (entry.is_regular_file() &&
            std::string(std::istreambuf_iterator<char>(stream), {}).find(text) != std::string::npos)
            files.insert(entry.path().stem());
    }
    return files;
}

// The tests above see what is in the tables; this one, that there is no way past them.
TEST(Messages, TheTablesAreTheOnlyWay) {
    using testing::ElementsAre;
    EXPECT_THAT(filesWith("addAssert("), ElementsAre("IfcReports"));
    EXPECT_THAT(filesWith("vErrorAdd("), ElementsAre("IfcDefErrors", "IfcDefXmlNodes"));
    EXPECT_THAT(filesWith("vFail(\""), ElementsAre());
    EXPECT_THAT(filesWith("SyntaxError(\""), ElementsAre());
}

} // namespace

} // namespace kiv::test
