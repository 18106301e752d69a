// The examples for pipelines, run as far as that is possible without the services they are for.
#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/Findings/Validation.h"
#include "Tools/kivifc/KivifcRun.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using nlohmann::json;
using testing::HasSubstr;

/// A project with kivifc.toml, a schema and two sets, one of which has a mistake.
class CiExample : public testing::Test {
protected:
    CiExample() {
        fs::copy_file(KIVIFC_SAMPLES "/Building.exp", folder_.sPath("Building.exp"));
        folder_.sWrite("kivifc.toml", "schema = \"Building.exp\"\nsets = [\"Sets\"]\n");
        fs::create_directory(folder_.sPath("Sets"));
        fs::copy_file(KIVIFC_SAMPLES "/Sets/Pset_BldWall.xml", folder_.sPath("Sets/Good.xml"));
        fs::copy_file(KIVIFC_SAMPLES "/BrokenSets/Broken_Refused.xml", folder_.sPath("Sets/Bad.xml"));
    }

    /// Runs a shell in the project; kivifc is what is tested here.
    test::Run shellRun(const std::string& script) const {
        const auto program = fs::path(KIVIFC_PROGRAM).parent_path().native();
        return kivifcRun({"-c", "PATH=" + program + ":$PATH; " + script},
                         {.program = "/bin/sh", .folder = folder_.sPath("")});
    }

    /// The line of an example that runs kivifc, from there on.
    static std::string sCommandOf(const std::string& example) {
        for (const auto& line : linesOf(sFileText(std::string(KIVIFC_CI) + '/' + example))) {
            const auto begin = line.find("kivifc check");
            if (begin != std::string::npos && line.find('#') == std::string::npos)
                return line.substr(begin);
        }
        return "false # no line runs kivifc check";
    }

    const TemporaryFolder folder_;
};

TEST_F(CiExample, WorkflowMakesALogWithTheFindings) {
    const auto run = shellRun(sCommandOf("github.yml"));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(sFileText(std::string(KIVIFC_CI) + "/github.yml"), HasSubstr("sarif_file: kivifc.sarif"));
    const auto log = json::parse(sFileText(folder_.sPath("kivifc.sarif")));
    ASSERT_FALSE(log["runs"][0]["results"].empty());
    EXPECT_EQ(log["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"],
              "Sets/Bad.xml");
}

TEST_F(CiExample, GitlabJobMakesTestResults) {
    const auto run = shellRun(sCommandOf("gitlab.yml"));
    EXPECT_EQ(run.status, 1);
    const auto text = sFileText(folder_.sPath("kivifc.xml"));
    EXPECT_THAT(text, HasSubstr("name=\"Sets/Bad.xml\">\n      <failure "));
    EXPECT_THAT(text, HasSubstr("name=\"Sets/Good.xml\""));
}

class CommitHook : public CiExample {
protected:
    void SetUp() override {
        if (shellRun("git --version").status != 0)
            GTEST_SKIP() << "there is no git, which calls the hook";
    }

    test::Run commit(const std::string& files) const {
        return shellRun("export HOME=. GIT_AUTHOR_NAME=a GIT_AUTHOR_EMAIL=a@b GIT_COMMITTER_NAME=a "
                        "GIT_COMMITTER_EMAIL=a@b; git init -q . && cp " KIVIFC_CI
                        "/pre-commit .git/hooks/pre-commit && git add " +
                        files + " && git commit -q -m sets");
    }
};

TEST_F(CommitHook, RefusesWhatHasFindings) {
    const auto run = commit("Sets");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out + run.err, HasSubstr("Sets/Bad.xml:7:"));
}

TEST_F(CommitHook, LetsPassWhatHasNone) {
    EXPECT_EQ(commit("Sets/Good.xml").status, 0);
}

/// The hook is about sets; a project has other XML too.
TEST_F(CommitHook, LetsPassWhatIsNoSet) {
    folder_.sWrite("Other.xml", "<?xml version=\"1.0\"?>\n<!-- <PropertySetDef> -->\n<Config/>\n");
    folder_.sWrite("Inside.xml", "<List><PropertySetDef/></List>\n");
    folder_.sWrite("Empty.xml", "");
    EXPECT_EQ(commit("Other.xml Inside.xml Empty.xml Sets/Good.xml").status, 0);
}

TEST_F(CommitHook, FindsSetsByTheirRoot) {
    const std::pair<std::string, std::string> rows[] = {
        {"Begin.xml", "<PropertySetDef><Nam/></PropertySetDef>"},
        {"Comment.XML", "<!-- a > b -->\n<!-- <List> -->\r\n<QtoSetDef\n><Nam/></QtoSetDef>"},
        {"Declared type.xml", "<?xml version=\"1.0\"?><!DOCTYPE x [<!ENTITY a \"b\">]>"
                              "<PropertySetDef><Nam/></PropertySetDef>"},
        {"Prefixed.xml", "<p:PropertySetDef xmlns:p=\"urn:x\"/>"},
        {"Unfinished.xml", "<PropertySetDef "},
        {"Wide.xml", std::string("\xFF\xFE<\0P\0r\0o\0p\0e\0r\0t\0y\0S\0e\0t\0D\0e\0f\0/\0>\0", 36)},
    };
    for (const auto& [name, text] : rows) {
        folder_.sWrite("kivifc.toml", "schema = \"Building.exp\"\n");
        folder_.sWrite(name, text);
        const auto run = commit("'" + name + "'");
        EXPECT_EQ(run.status, 1) << name;
        EXPECT_THAT(run.out + run.err, HasSubstr(name)) << name;
        fs::remove_all(folder_.sPath(".git"));
    }
}

/// A document may get a new name and a mistake at once.
TEST_F(CommitHook, LooksAtRenamedDocuments) {
    ASSERT_EQ(commit("Sets/Good.xml").status, 0);
    shellRun("git mv Sets/Good.xml Sets/Better.xml && echo '<a/>' >> Sets/Better.xml");
    EXPECT_EQ(commit("Sets/Better.xml").status, 1);
}

/// What is checked is what would be committed.
TEST_F(CommitHook, LooksAtTheIndexAndNotAtTheFolder) {
    shellRun("git init -q . && git add Sets/Bad.xml && cp Sets/Good.xml Sets/Bad.xml");
    EXPECT_EQ(commit("kivifc.toml").status, 1);
}

} // namespace

} // namespace kiv::kivifc::test
