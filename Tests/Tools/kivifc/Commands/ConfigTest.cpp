#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::kivifc::test {

namespace {

using kiv::test::TemporaryFolder;
using testing::HasSubstr;

constexpr const char* Children =
    "<cnf:option concrete-attribute='attribute-content' entity-attribute='double-tag'/>"
    "<cnf:schema targetNamespace='urn:building'><cnf:namespace prefix='b' alias='urn:b'/></cnf:schema>"
    "<cnf:uosElement name='building'/>"
    "<cnf:entity select='BldRoot'><cnf:attribute select='Name' exp-attribute='double-tag' keep='true'/>"
    "</cnf:entity>"
    "<cnf:entity select='BldElement'><cnf:inverse select='OnLayer' exp-attribute='attribute-tag'/>"
    "</cnf:entity>";

std::string sConfigWrite(const TemporaryFolder& folder, const std::string& id) {
    return folder.sWrite("config.xml", "<cnf:configuration xmlns:cnf='c' id='" + id + "'>" + Children +
                                           "</cnf:configuration>");
}

TEST(ConfigCommand, ShowsWhatTheConfigurationSays) {
    const TemporaryFolder folder;
    const auto run = kivifcRun({"config", "Building.exp", sConfigWrite(folder, "BUILDING1")});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "target namespace urn:building\n"
                       "prefix           b\n"
                       "alias            urn:b\n"
                       "concrete         attribute-content\n"
                       "entity           double-tag\n"
                       "uos element      building\n"
                       "records          1 of attributes, 1 of inverses\n"
                       "attributes       2\n"
                       "  BldRoot.Name  double-tag, keep\n"
                       "  BldElement.OnLayer  attribute-tag (inverse)\n"
                       "reports          0\n");
}

TEST(ConfigCommand, WhatIsNotGivenIsSaid) {
    const TemporaryFolder folder;
    const auto run =
        kivifcRun({"config", "Building.exp", folder.sWrite("config.xml", "<configuration id='BUILDING1'/>")});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "target namespace not given\n"
                       "prefix           not given\n"
                       "alias            not given\n"
                       "concrete         not given\n"
                       "entity           not given\n"
                       "uos element      not given\n"
                       "records          0 of attributes, 0 of inverses\n"
                       "attributes       0\n"
                       "reports          0\n");
}

TEST(ConfigCommand, ReportsAreStatusOne) {
    const TemporaryFolder folder;
    const auto path = sConfigWrite(folder, "OTHER");
    const auto run = kivifcRun({"config", "Building.exp", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out, HasSubstr("reports          1\n  Illegal ifc version ("));
    const auto document = nlohmann::json::parse(kivifcRun({"config", "Building.exp", path, "--json"}).out);
    EXPECT_EQ(document["prefix"], "b");
    EXPECT_EQ(document["attributes"].size(), 2U);
    EXPECT_EQ(document["reports"][0]["message"], "Illegal ifc version");
}

TEST(ConfigCommand, WhatIsNotWellFormedIsAFailureWithItsPlace) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("open.xml", "<a>");
    const auto run = kivifcRun({"config", "Building.exp", path});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kivifc: " + path + ":1:4: no element found\n");
    EXPECT_EQ(kivifcRun({"config", "Building.exp", "none.xml"}).err,
              "kivifc: none.xml: No such file or directory\n");
}

} // namespace

} // namespace kiv::kivifc::test
