#include "kivifc/Pictures/CheckSummary.h"

#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

TEST(CheckSummary, OfNothingIsAllZero) {
    EXPECT_EQ(CheckSummary().sText(), "documents        0\n"
                                      "property sets    0\n"
                                      "quantity sets    0\n"
                                      "members          0 (0 properties, 0 quantities)\n"
                                      "records          0\n"
                                      "refused sets     0\n"
                                      "assertions       0\n");
}

TEST(CheckSummary, SetsMembersAndRecordsAreCounted) {
    const auto schema = kiv::test::schemaFromText("");
    const auto check = [&](const std::string& text, const std::string& path) {
        return kit::setTextCheck(text, path, *schema);
    };
    CheckSummary summary;
    summary.vAdd(check("<PropertySetDef><Name>Pset_A</Name><x/><y/><PropertyDefs><PropertyDef/><PropertyDef/>"
                       "</PropertyDefs></PropertySetDef>",
                       "a.xml"));
    summary.vAdd(check("<QtoSetDef><Name>Qto_A</Name><z/><QtoDefs><QtoDef/></QtoDefs></QtoSetDef>", "b.xml"));
    summary.vAdd(check("<QtoSetDef ifdguid='no'><Name>Qto_B</Name></QtoSetDef>", "c.xml"));
    summary.vAdd(check("<Qto", "d.xml"));
    const auto text = summary.sText();
    EXPECT_TRUE(text.starts_with("documents        4 (1 not read)\n"
                                 "property sets    1\n"
                                 "quantity sets    2\n"
                                 "members          3 (2 properties, 1 quantities)\n"
                                 "records          4\n"
                                 "               3 Unknown xml node\n"
                                 "               1 Illegal ifdguid in xml file\n"))
        << text;
}

TEST(CheckSummary, RefusedSetsAreNamed) {
    const auto schema = kiv::test::schemaFromText("");
    auto document = kit::setTextCheck("<QtoSetDef><Name>Qto_A</Name></QtoSetDef>", "a.xml", *schema);
    document.isRefused = true;
    document.assertions.resize(2);
    CheckSummary summary;
    summary.vAdd(document);
    EXPECT_TRUE(summary.sText().ends_with("refused sets     1\n"
                                          "                 Qto_A (a.xml)\n"
                                          "assertions       2\n"))
        << summary.sText();
}

TEST(CheckSummary, JsonHasTheSameNumbers) {
    const auto schema = kiv::test::schemaFromText("");
    CheckSummary summary;
    summary.vAdd(
        kit::setTextCheck("<QtoSetDef><z/><QtoDefs><QtoDef/></QtoDefs></QtoSetDef>", "b.xml", *schema));
    const auto json = summary.getJson();
    EXPECT_EQ(json.at("documents"), 1);
    EXPECT_EQ(json.at("documentsFailed"), 0);
    EXPECT_EQ(json.at("propertySets"), 0);
    EXPECT_EQ(json.at("quantitySets"), 1);
    EXPECT_EQ(json.at("quantities"), 1);
    EXPECT_EQ(json.at("recordsByMessage").at("Unknown xml node"), 1);
    EXPECT_TRUE(json.at("refusedSets").empty());
}

} // namespace

} // namespace kiv::kivifc
