#include "Kit/Findings/LibraryReports.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Kit/Findings/CheckedSet.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

namespace def = ifc::def;
using def::RecordMessage;
using def::Report;
using test::CheckedSet;

constexpr std::string_view Schema = "ENTITY IfcPropertySingleValue;\nEND_ENTITY;\n"
                                    "ENTITY IfcWall;\nEND_ENTITY;\n"
                                    "TYPE IfcLabel = STRING;\nEND_TYPE;\n";

/// Each report as "CODE VALUE LINE:COLUMN".
std::vector<std::string> linesOf(const std::vector<LibraryReport>& reports) {
    std::vector<std::string> lines;
    for (const auto& report : reports)
        lines.push_back(std::string(report.code) + ' ' + report.value + ' ' +
                        std::to_string(report.position.line) + ':' + std::to_string(report.position.column));
    return lines;
}

std::vector<std::string> linesOf(const std::string& text) {
    const auto schema = test::schemaFromText(Schema);
    const CheckedSet set(*schema, text);
    return linesOf(libraryReportsOf(set.run()));
}

using Lines = std::vector<std::string>;

// The kit may not include the table of the library, so that it names the places of its reports once more.
// These are the codes that they have, each worked out from what the report is about.
std::map<Report, std::string_view> codesOfReports() {
    return {{Report::PropertyEntityNotFound, "R011"}, {Report::PropertyTypeUnknown, "R012"},
            {Report::DataTypeNotFound, "R013"},       {Report::UnitTypeEndsWithBlank, "R014"},
            {Report::UnitTypeNotGiven, "R015"},       {Report::LowerBoundNotFound, "R016"},
            {Report::UpperBoundNotFound, "R017"},     {Report::ComplexPropertyChildUnknown, "R018"},
            {Report::QuantityTypeUnknown, "R019"},    {Report::QuantityTypeNotGiven, "R020"}};
}

std::map<RecordMessage, std::string_view> codesOfRecords() {
    return {{RecordMessage::UnknownNode, "R001"},
            {RecordMessage::UnknownNodeInRange, "R002"},
            {RecordMessage::IllegalGuid, "R003"},
            {RecordMessage::IllegalTemplateType, "R004"},
            {RecordMessage::ClassNotFound, "R005"},
            {RecordMessage::PredefinedTypeNotDeclared, "R006"},
            {RecordMessage::PredefinedTypeNotDefinedType, "R007"},
            {RecordMessage::PredefinedTypeIllegal, "R008"}};
}

TEST(LibraryReports, EveryReportOfTheLibraryIsKnownByItsPlace) {
    const auto schema = test::schemaFromText(Schema);
    const auto codes = codesOfReports();
    for (const auto& place : def::ReportPlaces) {
        CheckedSet set(*schema, "<PropertySetDef/>");
        set.document.errors = {};
        set.document.assertions = {{{0, place.message, place.function, place.file, place.line}, 0}};
        const auto reports = libraryReportsOf(set.run());
        ASSERT_EQ(reports.size(), 1U);
        const auto code = codes.find(place.report);
        EXPECT_EQ(reports[0].code, code == codes.end() ? "R021" : code->second) << place.function;
        EXPECT_EQ(reports[0].message, place.message);
        ASSERT_TRUE(reports[0].origin);
        EXPECT_EQ(reports[0].origin->function, place.function);
        EXPECT_EQ(reports[0].origin->file, place.file);
        EXPECT_EQ(reports[0].origin->line, place.line);
        EXPECT_EQ(reports[0].isHarmless,
                  place.report == Report::LowerBoundNotFound || place.report == Report::UpperBoundNotFound);
    }
}

TEST(LibraryReports, EveryRecordOfTheLibraryIsKnownByItsMessage) {
    const auto schema = test::schemaFromText(Schema);
    const auto codes = codesOfRecords();
    ASSERT_EQ(codes.size(), static_cast<std::size_t>(RecordMessage::Count));
    for (const auto& message : def::RecordMessages) {
        CheckedSet set(*schema, "<PropertySetDef/>");
        set.document.errors = {};
        set.document.errors.vErrorAdd(def::xml::ErrorKind::Error, "item", std::string(message.text), 7);
        const auto reports = libraryReportsOf(set.run());
        ASSERT_EQ(reports.size(), 1U);
        EXPECT_EQ(reports[0].code, codes.at(message.id)) << message.text;
        EXPECT_EQ(reports[0].value, "item");
        EXPECT_FALSE(reports[0].origin);
    }
}

TEST(LibraryReports, AnUnknownRecordHasTheLineThatItGives) {
    const auto schema = test::schemaFromText(Schema);
    CheckedSet set(*schema, "<PropertySetDef/>");
    set.document.errors = {};
    set.document.errors.vErrorAdd(def::xml::ErrorKind::Error, "x", "of another release", 3);
    EXPECT_EQ(linesOf(libraryReportsOf(set.run())), Lines{"R009 x 3:0"});
}

TEST(LibraryReports, AFaultlessSetHasNone) {
    EXPECT_EQ(linesOf("<PropertySetDef><IfcVersion version='T'/><Name>Pset_A</Name></PropertySetDef>"),
              Lines());
}

// Two of a kind: the first report is about the first place.
TEST(LibraryReports, EachIsFoundInTheDocument) {
    EXPECT_EQ(linesOf("<PropertySetDef ifdguid='no'>\n"
                      "<Nam>A</Nam>\n"
                      " <Nmae/>\n"
                      "<ApplicableClasses><ClassName>IfcWal</ClassName></ApplicableClasses>\n"
                      "<PropertyDefs><PropertyDef><Name>P</Name><PropertyType><TypePropertySingleValue>\n"
                      "<DataType type='IfcLabl'/><UnitType type='A '/>\n"
                      "</TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs>\n"
                      "</PropertySetDef>"),
              (Lines{"R003 no 1:26", "R001 Nam 2:6", "R001 Nmae 3:3", "R005 IfcWal 4:31", "R014 A  6:43",
                     "R013 IfcLabl 6:17"}));
}

TEST(LibraryReports, WhatTheSchemaLacksIsThereOnceOfEachKind) {
    const auto property = [](const std::string& kind) {
        return "<PropertyDef><Name>P</Name><PropertyType><" + kind + "/></PropertyType></PropertyDef>\n";
    };
    EXPECT_EQ(linesOf("<PropertySetDef><PropertyDefs>\n" + property("TypePropertyBoundedValue") +
                      property("TypePropertyListValue") + property("TypeComplexProperty") +
                      property("TypePropertyBoundedValue") + property("TypePropertyListValue") +
                      "</PropertyDefs></PropertySetDef>"),
              (Lines{"R011 TypePropertyBoundedValue 2:43", "R011 TypePropertyListValue 3:43",
                     "R011 TypeComplexProperty 4:43"}));
}

TEST(LibraryReports, ATypeMayBeUnknownAfterAnyRecord) {
    const auto schema = test::schemaFromText(Schema);
    const auto typed = [&](const std::string& type, const std::string& more) {
        return setTextCheck("<PropertySetDef><PropertyDefs><PropertyDef><Name>P</Name><PropertyType>"
                            "<TypePropertySingleValue><DataType type='" +
                                type + "'/></TypePropertySingleValue></PropertyType></PropertyDef>" +
                                "</PropertyDefs>" + more + "</PropertySetDef>",
                            "Set.xml", *schema);
    };
    EXPECT_FALSE(boMayHaveUnknownType(typed("IfcLabel", "")));
    EXPECT_TRUE(boMayHaveUnknownType(typed("IfcLabl", "")));
    EXPECT_TRUE(boMayHaveUnknownType(typed("IfcLabel", "<Unknown/>")));
}

} // namespace

} // namespace kiv::kit
