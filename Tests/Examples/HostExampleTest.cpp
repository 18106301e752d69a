#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Host/Xml/KivXml.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string sText(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string sQuoted(const fs::path& path) {
    return '\'' + path.string() + '\'';
}

/// A new folder, which no other run of the test has.
fs::path temporaryFolder() {
    auto pattern = (fs::temp_directory_path() / "kiv-host-example-XXXXXX").native();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder could be made");
    return pattern;
}

/// Runs the example host in a folder of its own.
class HostExample : public testing::Test {
protected:
    ~HostExample() override { fs::remove_all(folder_); }

    int run(const char* schema, const char* sets, const char* entity, const char* question) {
        const fs::path data = KIV_PROJECT "/Examples/Data";
        const auto command = sQuoted(KIV_HOST_EXAMPLE) + ' ' + sQuoted(data) + ' ' + schema + ' ' +
                             sQuoted(data / sets) + ' ' + sQuoted(out_) + ' ' + entity + ' ' + question +
                             " >" + sQuoted(folder_ / "stdout") + " 2>" + sQuoted(folder_ / "stderr");
        const auto status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string sOutput() const { return sText(folder_ / "stdout"); }
    std::string sErrors() const { return sText(folder_ / "stderr"); }

    std::vector<std::string> filesWritten() const {
        std::vector<std::string> names;
        for (const auto& file : fs::directory_iterator(out_))
            names.push_back(file.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path folder_ = temporaryFolder();
    fs::path out_ = folder_ / "out";
};

TEST_F(HostExample, ShowsTheSetsOfAnEntityAndTheTypeOfAMember) {
    ASSERT_EQ(run("Building", "Sets", "bldstandardwall", "pset_bldwall.Mark"), 0) << sErrors();
    // First those for every class, then those of BldWall, then those that name BldStandardWall too.
    EXPECT_EQ(sOutput(), "Pset_BldSubstance\nQto_BldAny\n"
                         "Pset_BldWall\nQto_BldWall\n"
                         "Pset_BldWall\nQto_BldWall\n"
                         "pset_bldwall.Mark: BldLabel\n");
    EXPECT_EQ(sErrors(), "");
}

TEST_F(HostExample, ExportsEverySetAndAnEmptyReport) {
    ASSERT_EQ(run("Building", "Sets", "BldWall", "Pset_BldWall.Tolerance"), 0) << sErrors();
    EXPECT_EQ(filesWritten(),
              (std::vector<std::string>{"Pset_BldDoor.xml", "Pset_BldFlowPart.xml", "Pset_BldSpace.xml",
                                        "Pset_BldStair.xml", "Pset_BldStorey.xml", "Pset_BldSubstance.xml",
                                        "Pset_BldWall.xml", "Qto_BldAny.xml", "Qto_BldStair.xml",
                                        "Qto_BldWall.xml", "report.txt"}));
    EXPECT_EQ(sText(out_ / "report.txt"), "");
    std::ifstream exported(out_ / "Pset_BldWall.xml");
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    const auto root = file.parse(exported, "Pset_BldWall.xml", nullptr);
    ASSERT_TRUE(root);
    EXPECT_TRUE(root->boNodeNameIs("PropertySetDef"));
}

TEST_F(HostExample, GoesOnAfterBrokenSetsAndReportsThem) {
    ASSERT_EQ(run("Building", "BrokenSets", "BldSite", "Nothing.AtAll"), 0) << sErrors();
    EXPECT_EQ(sOutput().substr(sOutput().rfind('\n', sOutput().size() - 2) + 1),
              "Nothing.AtAll: no single type\n");
    const auto errors = sErrors();
    EXPECT_NE(errors.find("Broken_ForeignRoot.xml: not a set\n"), std::string::npos) << errors;
    EXPECT_NE(errors.find("Broken_NotXml.xml: "), std::string::npos) << errors;
    const auto report = sText(out_ / "report.txt");
    EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 45) << report;
    EXPECT_NE(
        report.find(";Error;BldWal;Applicable class in xml set is not defined in schema (contain spaces?)\n"),
        std::string::npos)
        << report;
    // Two of the eight sets are refused, so they are not kept and not written.
    EXPECT_EQ(filesWritten().size(), 6U + 1U);
}

TEST_F(HostExample, SaysWhatItDoesNotFind) {
    EXPECT_EQ(run("NoSuch", "Sets", "BldWall", "A.B"), 2);
    EXPECT_EQ(sErrors(), "NoSuch: no such schema\n");
    EXPECT_EQ(run("Building", "Sets", "BldWal", "A.B"), 2);
    EXPECT_EQ(sErrors(), "BldWal: no such entity\n");
}

} // namespace
