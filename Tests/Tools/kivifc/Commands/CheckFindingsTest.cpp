// What `kivifc check` finds, as it is chosen and shown; what it finds is the business of the kit's tests.
#include "Support/CountOf.h"
#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/Findings/Validation.h"
#include "Tools/kivifc/KivifcRun.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

using kiv::test::countOf;
using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using nlohmann::json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// One class is misspelt, on line 6; everything else is right.
std::string sSet(const std::string& name, const std::string& before = "") {
    return "<PropertySetDef ifdguid=\"14fafcf30e160e477383a24adb6f66e9\">\n"
           "\t<IfcVersion version=\"BUILDING1\"/>\n"
           "\t<Name>" +
           name +
           "</Name>\n"
           "\t<Definition>A set.</Definition>\n" +
           before +
           "\t<ApplicableClasses>\n"
           "\t\t<ClassName>BldWal</ClassName>\n"
           "\t</ApplicableClasses>\n"
           "\t<PropertyDefs/>\n"
           "</PropertySetDef>\n";
}

std::ptrdiff_t countOf(const std::string& text, const std::string& part) {
    std::ptrdiff_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// A folder with a schema; the classes are what is looked at.
class CheckFindings : public testing::Test {
protected:
    CheckFindings() { fs::copy_file(KIVIFC_SAMPLES "/Building.exp", folder_.sPath("Building.exp")); }

    test::Run run(std::vector<std::string> arguments, RunOptions options = {}) const {
        arguments.insert(arguments.begin(), "check");
        options.folder = folder_.sPath("");
        return kivifcRun(arguments, options);
    }

    test::Run classesRun(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"Building.exp", "Set.xml", "--select", "C001"});
        return run(arguments);
    }

    const TemporaryFolder folder_;
};

class CheckSet : public CheckFindings {
protected:
    CheckSet() { folder_.sWrite("Set.xml", sSet("Pset_Test")); }
};

TEST_F(CheckSet, FindingIsShownWithItsPlaceCodeAndLine) {
    const auto run = classesRun({});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(run.out, StartsWith("Set.xml:6:14: error: "));
    EXPECT_THAT(run.out, HasSubstr(" [C001]\n\t\t<ClassName>BldWal</ClassName>\n\t\t           ^~~~~~\n"));
    EXPECT_THAT(run.out, HasSubstr("BldWall"));
    EXPECT_THAT(run.out, EndsWith("1 error in 1 of 1 document\n"));
}

TEST_F(CheckSet, ContextAndSummaryMayBeLeftOut) {
    const auto run = classesRun({"--no-context", "-q"});
    EXPECT_THAT(run.out, StartsWith("Set.xml:6:14: error: "));
    EXPECT_THAT(run.out, Not(HasSubstr("<ClassName>")));
    EXPECT_THAT(run.out, Not(HasSubstr("document")));
}

TEST_F(CheckSet, ColourIsForTerminalsUnlessAskedFor) {
    EXPECT_THAT(classesRun({}).out, Not(HasSubstr("\033")));
    EXPECT_THAT(classesRun({"--color", "always"}).out, HasSubstr("\033[1;31merror:"));
    EXPECT_THAT(classesRun({"--color", "never"}).out, Not(HasSubstr("\033")));
}

TEST_F(CheckSet, SeverityThatFailsIsChosen) {
    struct Row {
        std::vector<std::string> arguments;
        int status;
    };
    const Row rows[] = {
        {{}, 1},
        {{"--fail-on", "never"}, 0},
        {{"--severity", "C001=warning"}, 0},
        {{"--severity", "c=Warning"}, 0},
        {{"--severity", "C001=warning", "--fail-on", "warning"}, 1},
        {{"--severity", "C001=note", "--fail-on", "warning"}, 0},
        {{"--severity", "C001=note", "--fail-on", "note"}, 1},
        {{"--ignore", "C001"}, 0},
        {{"--ignore", "T,C001"}, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(classesRun(row.arguments).status, row.status) << testing::PrintToString(row.arguments);
}

TEST_F(CheckSet, FileThatCannotBeReadFailsWhateverIsChosen) {
    folder_.sWrite("Broken.xml", "<PropertySetDef>\n  <Name>A</Nam>\n");
    for (const auto& chosen : std::vector<std::vector<std::string>>{
             {"--fail-on", "never"}, {"--ignore", "R,S"}, {"--select", "T"}, {"--severity", "R=note"}}) {
        std::vector<std::string> arguments{"Building.exp", "Broken.xml"};
        arguments.insert(arguments.end(), chosen.begin(), chosen.end());
        const auto broken = run(arguments);
        EXPECT_EQ(broken.status, 2) << chosen[0];
        EXPECT_EQ(broken.err, "") << chosen[0];
        EXPECT_THAT(broken.out, StartsWith("Broken.xml:2:")) << chosen[0];
        EXPECT_THAT(broken.out,
                    HasSubstr(": error: the end tag is that of \"Nam\", where \"Name\" is open [R044]\n"))
            << chosen[0];
    }
}

TEST_F(CheckSet, UnknownCodeIsAFaultOfTheCommandLine) {
    for (const auto& option : std::vector<std::string>{"--ignore", "--select"}) {
        const auto unknown = run({"Building.exp", "Set.xml", option, "C001,Q999"});
        EXPECT_EQ(unknown.status, 2);
        EXPECT_EQ(unknown.out, "");
        EXPECT_THAT(unknown.err, HasSubstr("no rule has the code \"Q999\""));
    }
    EXPECT_THAT(run({"Building.exp", "Set.xml", "--severity", "C001=grave"}).err,
                HasSubstr("\"grave\" is none of error, warning, note"));
    EXPECT_THAT(run({"Building.exp", "Set.xml", "--severity", "C001"}).err,
                HasSubstr("\"C001\" is not CODE=LEVEL"));
}

TEST_F(CheckSet, CommentHidesWhatIsInTheNextElement) {
    folder_.sWrite("Set.xml", sSet("Pset_Test", "\t<!-- kivifc: ignore C001 -->\n"));
    const auto run = classesRun({});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "no findings in 1 document\n");
}

TEST_F(CheckSet, CommentThatHidesNothingIsANote) {
    folder_.sWrite("Set.xml", sSet("Pset_Test", "\t<!-- kivifc: ignore T001 -->\n"));
    const auto unused = run({"Building.exp", "Set.xml", "--select", "K,T"});
    EXPECT_EQ(unused.status, 0);
    EXPECT_THAT(unused.out,
                StartsWith("Set.xml:5:2: note: the comment that ignores T001 hides nothing [K001]\n"));
    // T001 is not looked for, so nobody knows what it would hide.
    EXPECT_EQ(run({"Building.exp", "Set.xml", "--select", "K"}).out, "no findings in 1 document\n");
}

TEST_F(CheckSet, CommentOfADocumentThatCannotBeReadIsNoFinding) {
    folder_.sWrite("Set.xml", "<!-- kivifc: ignore T001 -->\n<PropertySetDef>\n");
    EXPECT_THAT(run({"Building.exp", "Set.xml"}).out, Not(HasSubstr("K001")));
}

TEST_F(CheckSet, BaselineHidesWhatItListsAndSaysWhatIsFixed) {
    EXPECT_EQ(classesRun({"--write-baseline", "known.json"}).status, 1);
    const auto hidden = classesRun({"--baseline", "known.json"});
    EXPECT_EQ(hidden.status, 0);
    EXPECT_EQ(hidden.out, "no findings in 1 document; 1 hidden by the baseline\n");
    folder_.sWrite("Set.xml", sSet("Pset_Test", "\n\n"));
    EXPECT_EQ(classesRun({"--baseline", "known.json"}).out, hidden.out);
    fs::copy_file(KIVIFC_SAMPLES "/Sets/Pset_BldWall.xml", folder_.sPath("Set.xml"),
                  fs::copy_options::overwrite_existing);
    const auto fixed = classesRun({"--baseline", "known.json"});
    EXPECT_THAT(fixed.out, StartsWith("fixed since the baseline: Set.xml: "));
    EXPECT_THAT(fixed.out, HasSubstr(" [C001]\nno findings in 1 document\n"));
}

TEST_F(CheckSet, BaselineSaysNothingOfWhatWasNotLookedAt) {
    folder_.sWrite("Other.xml", sSet("Pset_Other"));
    run({"Building.exp", "Set.xml", "Other.xml", "--select", "C001", "--write-baseline", "known.json"});
    EXPECT_EQ(classesRun({"--baseline", "known.json"}).out,
              "no findings in 1 document; 1 hidden by the baseline\n");
    EXPECT_EQ(run({"Building.exp", "Set.xml", "--select", "T", "--baseline", "known.json"}).out,
              "no findings in 1 document\n");
    folder_.sWrite("Set.xml", "<PropertySetDef>");
    EXPECT_THAT(classesRun({"--baseline", "known.json"}).out, Not(HasSubstr("fixed")));
}

TEST_F(CheckSet, EveryFormatSaysWhatIsFixed) {
    classesRun({"--write-baseline", "known.json"});
    fs::copy_file(KIVIFC_SAMPLES "/Sets/Pset_BldWall.xml", folder_.sPath("Set.xml"),
                  fs::copy_options::overwrite_existing);
    for (const auto* format : {"text", "github", "sarif", "junit"})
        EXPECT_THAT(classesRun({"--baseline", "known.json", "--format", format}).out,
                    HasSubstr("fixed since the baseline: Set.xml: "))
            << format;
}

TEST_F(CheckSet, BadBaselineIsRefusedBeforeAnythingIsShown) {
    folder_.sWrite("text.json", "no JSON");
    folder_.sWrite("other.json", R"({"format": "other/1", "findings": []})");
    folder_.sWrite("half.json", R"({"format": "kivifc-baseline/1", "findings": [{"path": 1}]})");
    const std::pair<std::string, std::string> rows[] = {
        {"none.json", "No such file or directory"},
        {"text.json", "not a baseline: no JSON from byte 2 on"},
        {"other.json", "its format is not \"kivifc-baseline/1\""},
        {"half.json", "not a baseline: --write-baseline makes one"},
    };
    for (const auto& [name, reason] : rows) {
        const auto text = classesRun({"--baseline", name, "--report", "report.txt"});
        EXPECT_EQ(text.status, 2);
        EXPECT_EQ(text.out, "") << name;
        EXPECT_EQ(text.err, "kivifc: " + name + ": " + reason + "\n");
        EXPECT_FALSE(fs::exists(folder_.sPath("report.txt")));
        EXPECT_EQ(classesRun({"--baseline", name, "--format", "github"}).out,
                  "::error::" + name + ": " + reason + "\n");
        EXPECT_EQ(json::parse(classesRun({"--baseline", name, "--format", "json"}).out)["findings"].size(),
                  0U);
    }
}

TEST_F(CheckSet, GithubSaysWhyTheJobFailed) {
    EXPECT_EQ(run({"None.exp", "Set.xml", "--format", "github"}).out,
              "::error::None.exp: No such file or directory\n");
    EXPECT_EQ(
        run({"Building.exp", "--format=github"}).out,
        "::error::command line: PATH, a set document or folder, is required; see kivifc check --help\n");
    EXPECT_EQ(
        run({"Set.xml", "--format=github"}).out,
        "::error::command line: FILE, the schema, is required before \"Set.xml\"; see kivifc check --help\n");
    EXPECT_THAT(run({"Building.exp", "Set.xml", "--frob", "--format", "github"}).out,
                StartsWith("::error::command line: "));
    fs::create_directory(folder_.sPath("Nothing"));
    const auto half = run({"Building.exp", "Set.xml", "Nothing", "--select", "C001", "--format", "github"});
    EXPECT_EQ(half.status, 2);
    EXPECT_THAT(half.out, StartsWith("::error file=Set.xml,line=6,"));
    EXPECT_THAT(half.out, EndsWith("\n::error::Nothing: no document (*.xml) in this folder\n"
                                   "1 error in 1 of 1 document\n"));
}

TEST_F(CheckFindings, OfEachCodeALimitedNumberIsShownAndAllAreCounted) {
    std::string classes;
    for (int number = 0; number < 60; ++number)
        classes += "<ClassName>Nowhere" + std::to_string(number) + "</ClassName>\n";
    folder_.sWrite("Set.xml", "<PropertySetDef><Name>A</Name><ApplicableClasses>\n" + classes +
                                  "</ApplicableClasses></PropertySetDef>\n");
    const auto shown = [&](const std::vector<std::string>& arguments) {
        const auto lines = linesOf(classesRun(arguments).out);
        return std::ranges::count_if(lines, [](auto& line) { return line.ends_with("[C001]"); });
    };
    // One more line ends so: "... and 10 more [C001]".
    EXPECT_EQ(shown({}), 51);
    EXPECT_EQ(shown({"--max-findings", "3"}), 4);
    EXPECT_EQ(shown({"--max-findings", "0"}), 60);
    EXPECT_THAT(classesRun({}).out, EndsWith("\n... and 10 more [C001]\n60 errors in 1 of 1 document\n"));
    EXPECT_EQ(json::parse(classesRun({"--format", "json"}).out)["findings"].size(), 60U);
    const auto limited = json::parse(classesRun({"--format", "json", "--max-findings", "7"}).out);
    EXPECT_EQ(limited["omitted"]["C001"], 53);
    EXPECT_EQ(limited["summary"]["errors"], 60);
}

TEST_F(CheckSet, ReportTakesNoNoticeOfWhatIsChosen) {
    const auto whole = run({"Building.exp", "Set.xml", "--format", "report"});
    EXPECT_EQ(whole.out,
              "Pset_Test;Error;BldWal;Applicable class in xml set is not defined in schema (contain "
              "spaces?)\n");
    const auto chosen = run({"Building.exp", "Set.xml", "--ignore", "C", "--report", "report.txt"});
    EXPECT_EQ(sFileText(folder_.sPath("report.txt")), whole.out);
    EXPECT_EQ(run({"Building.exp", "Set.xml", "--ignore", "C", "--format", "report"}).out, whole.out);
    EXPECT_EQ(run({"Building.exp", "Set.xml", "--ignore", "C", "--format", "report"}).status, 1);
}

TEST_F(CheckSet, JsonIsADocumentEvenWhenTheJobFails) {
    folder_.sWrite("No.exp", "");
    struct Row {
        std::vector<std::string> arguments;
        int status;
    };
    const Row rows[] = {
        {{"Building.exp", "Set.xml"}, 1},
        {{"Building.exp", "None.xml"}, 2},
        {{"No.exp", "Set.xml"}, 2},
        {{"Building.exp"}, 2},
        {{"Building.exp", "Set.xml", "--config-file", "none.toml"}, 2},
        {{"Building.exp", "Set.xml", "--baseline", "none.json"}, 2},
        {{"Building.exp", "Set.xml", "--frob"}, 2},
    };
    for (auto row : rows) {
        row.arguments.insert(row.arguments.end(), {"--format", "json"});
        const auto ended = run(row.arguments);
        EXPECT_EQ(ended.status, row.status) << testing::PrintToString(row.arguments);
        ASSERT_TRUE(json::accept(ended.out)) << testing::PrintToString(row.arguments) << ended.out;
        EXPECT_EQ(json::parse(ended.out)["format"], "kivifc-check/1");
        const auto validation = validated(KIVIFC_SOURCES "/Findings/check.schema.json", ended.out);
        if (!validation.isLeftOut) {
            EXPECT_TRUE(validation.isValid) << validation.text;
        }
    }
}

TEST_F(CheckSet, ProgramsAreGivenWhyThereIsNoSchema) {
    folder_.sWrite("No.exp", "<schema/>\n");
    const auto document = json::parse(run({"No.exp", "Set.xml", "--format", "json"}).out);
    ASSERT_EQ(document["findings"].size(), 1U);
    EXPECT_EQ(document["findings"][0]["code"], "E001");
    EXPECT_EQ(document["findings"][0]["path"], "No.exp");
    EXPECT_EQ(document["findings"][0]["message"], "no schema was found: the file is an XML document");
    EXPECT_EQ(document["summary"]["errors"], 1);
    EXPECT_EQ(document["failures"].size(), 1U);
    const auto validation = validated(KIVIFC_SOURCES "/Findings/check.schema.json", document.dump());
    if (!validation.isLeftOut) {
        EXPECT_TRUE(validation.isValid) << validation.text;
    }
    for (const auto* format : {"sarif", "github", "junit"}) {
        const auto ended = run({"No.exp", "Set.xml", "--format", format});
        EXPECT_EQ(ended.status, 2) << format;
        EXPECT_THAT(ended.out, HasSubstr("no schema was found: the file is an XML document")) << format;
    }
    // What is a schema in part is none of these.
    folder_.sWrite("No.exp", "SCHEMA A;\nTYPE B = SELECT\n (C,\n");
    EXPECT_THAT(json::parse(run({"No.exp", "Set.xml", "--format", "json"}).out)["findings"], IsEmpty());
}

TEST_F(CheckSet, StandardInputHasTheNameThatItIsGiven) {
    const auto named = run({"Building.exp", "-", "--select", "C001", "--stdin-filename", "Sets/New.xml"},
                           {.input = sSet("Pset_Test")});
    EXPECT_THAT(named.out, StartsWith("Sets/New.xml:6:14: error: "));
    EXPECT_THAT(named.out, HasSubstr("\t\t           ^~~~~~\n"));
}

TEST_F(CheckSet, FileOfTwoPathsIsReadOnce) {
    fs::create_directory(folder_.sPath("Sets"));
    fs::create_symlink("../Set.xml", folder_.sPath("Sets/Link.xml"));
    const auto once = run({"Building.exp", "./Set.xml", "Sets/../Set.xml", "Sets"});
    EXPECT_THAT(once.out, StartsWith("./Set.xml:6:14: error: "));
    EXPECT_THAT(once.out, Not(HasSubstr("[X001]")));
    EXPECT_THAT(once.out, HasSubstr(" in 1 of 1 document\n"));
    // Its set belongs to both contexts, and does not hide itself.
    const auto contexts = run({"Building.exp", "Set.xml", "office=Sets", "--select", "X,G"});
    EXPECT_EQ(contexts.out, "no findings in 1 document\n");
}

/// To open one may wait for ever, so that it is not even tried, in whatever form that is said.
TEST_F(CheckSet, PipeInAFolderIsAFindingInAllFormats) {
    fs::create_directory(folder_.sPath("Sets"));
    fs::create_symlink("../Set.xml", folder_.sPath("Sets/Link.xml"));
    ASSERT_EQ(mkfifo(folder_.sPath("Sets/A.xml").c_str(), 0600), 0);
    const std::string reason = "a pipe in a folder is not read unless its path is given";
    const auto text = run({"Building.exp", "Sets", "--select", "C001", "--no-context"});
    EXPECT_THAT(text.out,
                StartsWith("Sets/A.xml: error: " + reason + " [R040]\nSets/Link.xml:6:14: error: "));
    EXPECT_THAT(text.out, EndsWith("2 errors in 2 of 2 documents\n"));
    for (const std::string format : {"text", "json", "sarif", "github", "junit"}) {
        const auto ended = run({"Building.exp", "Sets", "--format", format});
        EXPECT_EQ(ended.status, 2) << format;
        EXPECT_EQ(ended.err, "") << format;
        EXPECT_EQ(countOf(ended.out, reason), 1) << format << ended.out;
        EXPECT_THAT(ended.out, HasSubstr("R040")) << format;
    }
    // A patch has no place for it.
    EXPECT_THAT(run({"Building.exp", "Sets", "--diff"}).err,
                StartsWith("kivifc: Sets/A.xml: " + reason + "\n"));
}

TEST_F(CheckSet, PipeThatIsAlsoGivenIsRead) {
    fs::create_directory(folder_.sPath("Sets"));
    const auto pipe = folder_.sPath("Sets/A.xml");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(pipe) << sSet("Pset_Test"); });
    const auto ended = run({"Building.exp", "office=Sets", "Sets/A.xml", "--select", "C001"});
    // Where it is not read, nothing would end the waiting.
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    writer.join();
    close(reader);
    EXPECT_EQ(ended.status, 1) << ended.err;
    EXPECT_THAT(ended.out, StartsWith("Sets/A.xml:6:14: error: "));
    EXPECT_THAT(ended.out, EndsWith("1 error in 1 of 1 document\n"));
}

TEST_F(CheckSet, SchemaAndSetsMayBeInTheProjectFile) {
    folder_.sWrite("kivifc.toml", "schema = \"Building.exp\"\nsets = [\"Set.xml\"]\nselect = [\"C001\"]\n");
    const auto bare = run({});
    EXPECT_EQ(bare.status, 1);
    EXPECT_THAT(bare.out, StartsWith("Set.xml:6:14: error: "));
    // From a folder below, with paths as they are found from there.
    fs::create_directory(folder_.sPath("Below"));
    const auto below = kivifcRun({"check"}, {.folder = folder_.sPath("Below")});
    EXPECT_THAT(below.out, StartsWith("../Set.xml:6:14: error: "));
    // The command line wins.
    EXPECT_THAT(run({"--select", "T"}).out, EndsWith("no findings in 1 document\n"));
    EXPECT_THAT(run({"None.xml"}).out, StartsWith("None.xml: error: No such file or directory [R040]\n"));
}

/// The schema of the samples shows no release of IFC.
TEST_F(CheckSet, ReleaseOfTheSchemaMayBeNamed) {
    folder_.sWrite("Set.xml", "<PropertySetDef><IfcVersion version=\"2x3\"/></PropertySetDef>");
    const std::vector<std::string> versions{"Building.exp", "Set.xml", "--select", "V", "-q", "--no-context"};
    const auto versionsRun = [&](const std::string& release) {
        auto arguments = versions;
        arguments.insert(arguments.end(), {"--release", release});
        return run(arguments);
    };
    EXPECT_EQ(run(versions).out, "");
    EXPECT_EQ(versionsRun("IFC2X3_TC1").out, "");
    EXPECT_THAT(versionsRun("IFC4_ADD2").out, HasSubstr("the document is written for \"2x3\", and is checked "
                                                        "with IFC4_ADD2 [V001]\n"));
    folder_.sWrite("kivifc.toml", "release = \"IFC4\"\n");
    EXPECT_THAT(run(versions).out, HasSubstr("is checked with IFC4 [V001]\n"));
    EXPECT_EQ(versionsRun("2x3").out, "");
    const auto unknown = versionsRun("BUILDING1");
    EXPECT_EQ(unknown.status, 2);
    EXPECT_THAT(unknown.err, HasSubstr("no release of IFC is named \"BUILDING1\""));
}

TEST_F(CheckSet, SearchForTheProjectFileEndsAtTheRepository) {
    folder_.sWrite("kivifc.toml", "schema = \"Building.exp\"\nsets = [\"Set.xml\"]\n");
    folder_.sWrite("Inner/.git/HEAD", "");
    const auto inner = kivifcRun({"check"}, {.folder = folder_.sPath("Inner")});
    EXPECT_EQ(inner.status, 2);
    EXPECT_THAT(inner.err, HasSubstr("FILE, the schema, is required"));
}

TEST_F(CheckSet, EnvironmentWinsOverTheFileAndTheCommandLineOverBoth) {
    folder_.sWrite("kivifc.toml", "schema = \"File.exp\"\nsets = [\"Set.xml\"]\n");
    const auto schemaRead = [&](const std::vector<std::string>& arguments,
                                std::vector<std::string> environment) {
        return run(arguments, {.environment = std::move(environment)}).err;
    };
    EXPECT_THAT(schemaRead({}, {}), StartsWith("kivifc: File.exp: "));
    EXPECT_THAT(schemaRead({}, {"KIVIFC_SCHEMA=Variable.exp"}), StartsWith("kivifc: Variable.exp: "));
    EXPECT_THAT(schemaRead({"Line.EXP"}, {"KIVIFC_SCHEMA=Variable.exp"}), StartsWith("kivifc: Line.EXP: "));
    EXPECT_EQ(schemaRead({"Set.xml"}, {"KIVIFC_SCHEMA=Building.exp"}), "");
}

TEST_F(CheckSet, FaultsOfTheProjectFileHaveTheirLine) {
    const std::pair<std::string, std::string> rows[] = {
        {"schema = \"a.exp\"\nignor = \"T\"\n",
         "kivifc: kivifc.toml:2: no key is named \"ignor\", did you mean \"ignore\"?\n"},
        {"\nignore = [\"Q9\"]\n", "kivifc: kivifc.toml:2: --ignore: no rule has the code \"Q9\""},
        {"format = \"yaml\"\n", "kivifc: kivifc.toml:1: "},
        {"[severities]\nT001 = \"note\"\n", "kivifc: kivifc.toml:2: no section is named \"severities\""},
        {"sets = \"Set.xml\"\nschema =\n",
         "kivifc: kivifc.toml:2: \"schema\" is empty, where a path is expected\n"},
        {"schema = \"\"\n", "kivifc: kivifc.toml:1: \"schema\" is empty, where a path is expected\n"},
        {"baseline = \"\"\n", "kivifc: kivifc.toml:1: \"baseline\" is empty, where a path is expected\n"},
        {"[contexts]\noffice = \"\"\n",
         "kivifc: kivifc.toml:2: \"office\" is empty, where a path is expected\n"},
        {"[severity]\nT001 = \"grave\"\n", "kivifc: kivifc.toml:2: "},
        {"max-findings = -3\n", "kivifc: kivifc.toml:1: --max-findings: Value -3 not in range "},
        {"fix = true\ndiff = true\n", "kivifc: kivifc.toml: \"fix\" and \"diff\" exclude each other\n"},
        {"json = true\nformat = \"sarif\"\n",
         "kivifc: kivifc.toml: \"json\" and \"format\" exclude each other\n"},
        {"select = \"T\"\nformat = \"text\"\nselect = \"C\"\n",
         "kivifc: kivifc.toml:3: \"select\" is there twice\n"},
        {"select = [\n", "kivifc: kivifc.toml:1: nothing closes this list\n"},
    };
    for (const auto& [text, line] : rows) {
        folder_.sWrite("kivifc.toml", text);
        const auto faulty = run({"Building.exp", "Set.xml"});
        EXPECT_EQ(faulty.status, 2) << text;
        EXPECT_EQ(faulty.out, "") << text;
        EXPECT_THAT(faulty.err, StartsWith(line)) << text;
    }
}

TEST_F(CheckSet, ContextsOfTheProjectFileAreApart) {
    folder_.sWrite("Office/Same.xml", sSet("Pset_Test"));
    folder_.sWrite("kivifc.toml", "schema = \"Building.exp\"\nsets = [\"Set.xml\"]\nselect = \"X001,X002\"\n"
                                  "[contexts]\noffice = \"Office\"\n");
    const auto apart = run({});
    EXPECT_EQ(apart.status, 0) << apart.out;
    EXPECT_THAT(apart.out, HasSubstr("[X002]"));
    const auto together = run({"Set.xml", "Office"});
    EXPECT_EQ(together.status, 1);
    EXPECT_THAT(together.out, HasSubstr("[X001]"));
}

/// "templatetype" in the wrong letter case is what can be mended; blanks, comments and line ends around it
/// stay.
constexpr const char* Mendable = "<PropertySetDef ifdguid=\"14fafcf30e160e477383a24adb6f66e9\"\r\n"
                                 "  templatetype = 'pset_typedrivenonly' ><!-- a -->\r\n"
                                 "\t<Name>Pset_Test</Name>\n"
                                 "</PropertySetDef>";

constexpr const char* Mended = "<PropertySetDef ifdguid=\"14fafcf30e160e477383a24adb6f66e9\"\r\n"
                               "  templatetype = 'PSET_TYPEDRIVENONLY' ><!-- a -->\r\n"
                               "\t<Name>Pset_Test</Name>\n"
                               "</PropertySetDef>";

TEST_F(CheckFindings, FixMendsTheFileAndLeavesTheRest) {
    const auto path = folder_.sWrite("Set.xml", Mendable);
    const auto fixed = run({"Building.exp", "Set.xml", "--select", "S011", "--fix"});
    EXPECT_EQ(fixed.status, 0);
    EXPECT_EQ(fixed.out, "no findings in 1 document\n");
    EXPECT_EQ(fixed.err, "kivifc: Set.xml: 1 finding mended\n");
    EXPECT_EQ(sFileText(path), Mended);
    EXPECT_EQ(run({"Building.exp", "Set.xml", "--select", "S011", "--fix"}).err, "");
}

/// What is inside a misspelt element is not looked at until that is mended.
constexpr const char* Covered = "<PropertySetDef templateType=\"pset_typedrivenonly\">\n"
                                "\t<IfcVersion version=\"BUILDING1\"/>\n"
                                "\t<Name>Pset_Test</Name>\n"
                                "\t<applicableClasses><ClassName>BldWal</ClassName></applicableClasses>\n"
                                "</PropertySetDef>\n";

TEST_F(CheckFindings, FixShowsAndMendsWhatItUncovers) {
    const auto path = folder_.sWrite("Set.xml", Covered);
    const std::vector<std::string> arguments{"Building.exp", "Set.xml", "--select", "S003,S011,C001"};
    auto fixing = arguments;
    fixing.push_back("--fix");
    const auto fixed = run(fixing);
    EXPECT_EQ(fixed.status, 1);
    // Two names in another letter case, and the value of one of them.
    EXPECT_EQ(fixed.err, "kivifc: Set.xml: 3 findings mended\n");
    EXPECT_THAT(fixed.out, StartsWith("Set.xml:4:32: error: "));
    EXPECT_THAT(fixed.out, HasSubstr(" [C001]\n"));
    EXPECT_THAT(fixed.out, EndsWith("1 error in 1 of 1 document\n"));
    EXPECT_THAT(sFileText(path), HasSubstr("<PropertySetDef templatetype=\"PSET_TYPEDRIVENONLY\">\n"));
    EXPECT_THAT(sFileText(path), HasSubstr("\t<ApplicableClasses><ClassName>BldWal</ClassName>"));
    const auto again = run(arguments);
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(again.out, fixed.out);
}

/// Each time a file is replaced, another one is moved in its place.
TEST_F(CheckFindings, FixWritesTheBaselineOnce) {
    folder_.sWrite("Set.xml", Covered);
    const int watch = inotify_init1(IN_NONBLOCK);
    ASSERT_NE(inotify_add_watch(watch, folder_.sPath("").c_str(), IN_MOVED_TO), -1);
    run({"Building.exp", "Set.xml", "--select", "S003,S011,C001", "--fix", "--write-baseline", "known.json"});
    std::array<char, 4096> buffer{};
    const auto size = read(watch, buffer.data(), buffer.size());
    close(watch);
    ASSERT_GT(size, 0);
    const std::string_view events(buffer.data(), static_cast<std::size_t>(size));
    const auto first = events.find("known.json");
    EXPECT_NE(first, std::string_view::npos);
    EXPECT_EQ(events.find("known.json", first + 1), std::string_view::npos);
}

TEST_F(CheckSet, ServicesGetPathsFromTheRootOfTheRepository) {
    fs::create_directory(folder_.sPath(".git"));
    fs::create_directory(folder_.sPath("Tools"));
    folder_.sWrite("Tools/kivifc.toml", "schema = \"../Building.exp\"\nsets = [\"../Set.xml\"]\n");
    const RunOptions inTools{.folder = folder_.sPath("Tools")};
    EXPECT_THAT(kivifcRun({"check", "--select", "C001", "--format", "github"}, inTools).out,
                StartsWith("::error file=Set.xml,line=6,"));
    const auto log =
        json::parse(kivifcRun({"check", "--select", "C001", "--format", "sarif"}, inTools).out)["runs"][0];
    EXPECT_EQ(log["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"],
              json::parse(R"({"uri": "Set.xml", "uriBaseId": "%SRCROOT%"})"));
    EXPECT_TRUE(log["originalUriBaseIds"].contains("%SRCROOT%"));
    // People see what they gave.
    EXPECT_THAT(kivifcRun({"check", "--select", "C001"}, inTools).out, StartsWith("../Set.xml:6:14: "));
}

TEST_F(CheckSet, ServicesGetNoPathOfStandardInput) {
    fs::create_directory(folder_.sPath(".git"));
    fs::create_directory(folder_.sPath("Tools"));
    const RunOptions inTools{.input = "<PropertySetDef/>", .folder = folder_.sPath("Tools")};
    const auto log = json::parse(
        kivifcRun({"check", "../Building.exp", "-", "--select", "N001", "--format", "sarif"}, inTools).out);
    EXPECT_EQ(log["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"],
              json::parse(R"({"uri": "%3Cstdin%3E"})"));
    EXPECT_THAT(
        kivifcRun({"check", "../Building.exp", "-", "--select", "N001", "--format", "github"}, inTools).out,
        StartsWith("::error file=<stdin>,line=1,"));
}

/// A set with two properties of one kind, of a type and for a class that the schemas below do not have.
std::string sUnknownNames(const std::string& name) {
    const std::string property =
        "<PropertyDef><Name>P</Name><PropertyType><TypePropertySingleValue><DataType "
        "type=\"Length\"/></TypePropertySingleValue></PropertyType></PropertyDef>";
    return "<PropertySetDef><Name>" + name +
           "</Name><ApplicableClasses><ClassName>Roof</ClassName></ApplicableClasses><PropertyDefs>" +
           property + property + "</PropertyDefs></PropertySetDef>";
}

TEST_F(CheckFindings, WhatTheSchemaLacksIsSaidOnceOfEachKindOfProperty) {
    folder_.sWrite("Walls.exp", "SCHEMA WALLS;\nENTITY Wall;\nEND_ENTITY;\nEND_SCHEMA;\n");
    folder_.sWrite("A.xml", sUnknownNames("Pset_A"));
    folder_.sWrite("B.xml", sUnknownNames("Pset_B"));
    const auto found = run({"Walls.exp", "A.xml", "B.xml", "--select", "R011,T001,C001"}).out;
    EXPECT_EQ(countOf(found, "[R011]"), 1U) << found;
    EXPECT_EQ(countOf(found, "[T001]"), 4U) << found;
    EXPECT_EQ(countOf(found, "[C001]"), 2U) << found;
}

TEST_F(CheckFindings, OfASchemaThatCannotBeReadNoNameIsUnknown) {
    folder_.sWrite("Walls.exp", "SCHEMA WALLS;\rENTITY Wall;\rEND_ENTITY;\rEND_SCHEMA;\r");
    folder_.sWrite("A.xml", sUnknownNames("Pset_A"));
    const auto found = run({"Walls.exp", "A.xml", "--select", "E001,R,T,C"});
    EXPECT_EQ(found.status, 1);
    EXPECT_EQ(countOf(found.out, "[E001]"), 1U) << found.out;
    EXPECT_EQ(countOf(found.out, "error: "), 1U) << found.out;
    // Where the one mistake is not looked for, the others are not hidden for it.
    EXPECT_EQ(countOf(run({"Walls.exp", "A.xml", "--select", "C001"}).out, "[C001]"), 1U);
}

TEST_F(CheckFindings, NamesThatTheSchemaLostAreFindingsOfTheSchemaAlone) {
    folder_.sWrite("Walls.exp", "SCHEMA WALLS;\nENTITY Wall;\nEND_ENTITY;\ntype Length = REAL;\nEND_TYPE;\n"
                                "ENTITY Roof;\nEND_ENTITY;\nEND_SCHEMA;\n");
    folder_.sWrite("A.xml", sUnknownNames("Pset_A"));
    folder_.sWrite("B.xml", sUnknownNames("Pset_B"));
    const auto found = run({"Walls.exp", "A.xml", "B.xml", "--select", "E,T001,C001", "--no-context"});
    EXPECT_EQ(found.status, 1);
    EXPECT_EQ(found.out,
              "Walls.exp:4:6: error: TYPE \"Length\" is not read: the keyword is written \"type\", "
              "and is found in capitals only [E002]\n"
              "Walls.exp:6:8: note: ENTITY \"Roof\" is taken for a part of it and is lost\n"
              "Walls.exp:4:6: note: \"Length\" is used in 2 documents\n"
              "Walls.exp:4:6: note: \"Roof\" is used in 2 documents\n"
              "1 error in the schema, none in 2 documents\n");
    // Where the mistake is not looked for, or no error, the documents have findings.
    EXPECT_EQ(countOf(run({"Walls.exp", "A.xml", "--select", "C001"}).out, "[C001]"), 1);
    EXPECT_EQ(countOf(run({"Walls.exp", "A.xml", "--severity", "E002=warning"}).out, "[C001]"), 1);
    // What only looks like a lost name is not there.
    auto other = sUnknownNames("Pset_C");
    other.replace(other.find("Roof"), 4, "Roofs");
    folder_.sWrite("C.xml", other);
    EXPECT_EQ(countOf(run({"Walls.exp", "C.xml", "--select", "E,C001"}).out, "[C001]"), 1);
}

TEST_F(CheckFindings, DiffShowsWhatFixUncovers) {
    const auto path = folder_.sWrite("Set.xml", Covered);
    const auto diff = run({"Building.exp", "Set.xml", "--select", "S003,S011,C001", "--diff"});
    EXPECT_EQ(diff.status, 1);
    EXPECT_THAT(diff.out, HasSubstr("\n+<PropertySetDef templatetype=\"PSET_TYPEDRIVENONLY\">\n"));
    EXPECT_EQ(sFileText(path), Covered);
}

/// Standard input is read once, and is checked again with the file that was mended.
TEST_F(CheckFindings, FixOfAFileChecksStandardInputAgain) {
    folder_.sWrite("Set.xml", Mendable);
    const auto fixed = run({"Building.exp", "Set.xml", "-", "--select", "S011,C001", "--fix"},
                           {.input = sSet("Pset_Other")});
    EXPECT_EQ(fixed.status, 1);
    EXPECT_EQ(fixed.err, "kivifc: Set.xml: 1 finding mended\n");
    EXPECT_THAT(fixed.out, HasSubstr("\t\t<ClassName>BldWal</ClassName>\n"));
    EXPECT_THAT(fixed.out, EndsWith("1 error in 1 of 2 documents\n"));
}

/// What is mended is not in the baseline, and what is left is.
TEST_F(CheckFindings, FixWritesTheBaselineOfWhatIsLeft) {
    folder_.sWrite("Set.xml", Covered);
    const std::vector<std::string> arguments{"Building.exp", "Set.xml", "--select", "S003,S011,C001"};
    auto fixing = arguments;
    fixing.insert(fixing.end(), {"--fix", "--write-baseline", "known.json"});
    EXPECT_EQ(run(fixing).status, 1);
    auto hiding = arguments;
    hiding.insert(hiding.end(), {"--baseline", "known.json"});
    const auto hidden = run(hiding);
    EXPECT_EQ(hidden.status, 0) << hidden.out;
    EXPECT_THAT(hidden.out, Not(HasSubstr("fixed since")));
}

TEST_F(CheckFindings, DiffShowsWhatFixWouldDo) {
    const auto path = folder_.sWrite("Set.xml", Mendable);
    const auto diff = run({"Building.exp", "Set.xml", "--select", "S011", "--diff"});
    EXPECT_EQ(diff.status, 1);
    EXPECT_EQ(sFileText(path), Mendable);
    EXPECT_THAT(diff.out, StartsWith("--- Set.xml\n+++ Set.xml\n@@ -1,4 +1,4 @@\n"));
    EXPECT_THAT(diff.out, HasSubstr("\n-  templatetype = 'pset_typedrivenonly' ><!-- a -->\r\n"
                                    "+  templatetype = 'PSET_TYPEDRIVENONLY' ><!-- a -->\r\n"));
    if (!fs::exists("/usr/bin/patch"))
        GTEST_SKIP() << "left out: patch is not installed";
    folder_.sWrite("fix.patch", diff.out);
    EXPECT_EQ(kivifcRun({"--binary", "-p0", "-s", "-i", "fix.patch"},
                        {.program = "/usr/bin/patch", .folder = folder_.sPath("")})
                  .status,
              0);
    EXPECT_EQ(sFileText(path), Mended);
    EXPECT_EQ(run({"Building.exp", "Set.xml", "--select", "S011", "--diff"}).out, "");
}

TEST_F(CheckFindings, DiffFailsForWhatItCannotMend) {
    folder_.sWrite("Set.xml", sSet("Pset_Test"));
    const std::vector<std::string> arguments{"Building.exp", "Set.xml", "--select", "C001", "--diff"};
    const auto diff = run(arguments);
    EXPECT_EQ(diff.status, 1);
    EXPECT_EQ(diff.out, "");
    auto never = arguments;
    never.insert(never.end(), {"--fail-on", "never"});
    EXPECT_EQ(run(never).status, 0);
}

TEST_F(CheckFindings, DiffAndFixGoWithFindingsAsText) {
    const auto path = folder_.sWrite("Set.xml", Mendable);
    struct Row {
        std::vector<std::string> arguments;
        std::string failure;
    };
    const Row rows[] = {
        {{"--diff", "--json"}, "kivifc: command line: --diff goes with findings, not with --json"},
        {{"--diff", "--warnings"}, "kivifc: command line: --diff goes with findings, not with --json"},
        {{"--diff", "--format", "report"},
         "kivifc: command line: --diff goes with findings, not with --json"},
        {{"--diff", "--format", "github"},
         "kivifc: command line: --diff writes a patch, and does not go with --format github\n"},
        {{"--fix", "--json"}, "kivifc: command line: --fix goes with findings, not with --json"},
    };
    for (const auto& row : rows) {
        auto arguments = row.arguments;
        arguments.insert(arguments.begin(), {"Building.exp", "Set.xml"});
        const auto refused = run(arguments);
        EXPECT_EQ(refused.status, 2) << testing::PrintToString(row.arguments);
        EXPECT_THAT(refused.err, StartsWith(row.failure));
    }
    EXPECT_EQ(sFileText(path), Mendable);
    // JSON is a document all the same.
    const auto document = run({"Building.exp", "Set.xml", "--diff", "--format", "json"});
    EXPECT_EQ(document.status, 2);
    EXPECT_TRUE(json::accept(document.out)) << document.out;
}

TEST_F(CheckFindings, CommandLineWinsOverWhatTheFileSaysOtherwise) {
    const auto path = folder_.sWrite("Set.xml", Mendable);
    folder_.sWrite("kivifc.toml", "fix = true\nselect = \"S011\"\n");
    EXPECT_THAT(run({"Building.exp", "Set.xml", "--diff"}).out, StartsWith("--- Set.xml\n"));
    EXPECT_EQ(sFileText(path), Mendable);
    folder_.sWrite("kivifc.toml", "format = \"sarif\"\n");
    const auto everything = run({"Building.exp", "Set.xml", "--json"}).out;
    EXPECT_TRUE(json::accept(everything));
    EXPECT_THAT(everything, Not(HasSubstr("\"runs\"")));
}

TEST_F(CheckSet, NumberOfFindingsIsNotNegative) {
    const auto refused = run({"Building.exp", "Set.xml", "--max-findings", "-1"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.out, "");
    EXPECT_THAT(refused.err, HasSubstr("--max-findings: Value -1 not in range 0 to "));
    EXPECT_THAT(classesRun({"--max-findings", "0"}).out, HasSubstr("[C001]"));
}

TEST_F(CheckFindings, FixSaysThatItLeavesWhatIsNotUtf8) {
    const std::string latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n" + std::string(Mendable);
    const auto path = folder_.sWrite("Set.xml", latin);
    for (const auto* option : {"--fix", "--diff"}) {
        const auto left = run({"Building.exp", "Set.xml", "--select", "S011", option});
        EXPECT_EQ(left.err, "kivifc: Set.xml: is not UTF-8, so nothing in it is mended\n") << option;
        EXPECT_EQ(sFileText(path), latin);
    }
    EXPECT_EQ(run({"Building.exp", "Set.xml", "--select", "S011"}).status, 1);
    EXPECT_EQ(run({"Building.exp", "Set.xml", "--select", "S011"}).err, "");
    EXPECT_EQ(run({"Building.exp", "Set.xml", "--select", "T001", "--fix"}).err, "");
}

TEST_F(CheckFindings, StandardInputIsNotMended) {
    const auto fixed = run({"Building.exp", "-", "--select", "S011", "--fix"}, {.input = Mendable});
    EXPECT_EQ(fixed.status, 2);
    EXPECT_THAT(fixed.err, HasSubstr("only a file can be mended; --diff shows what would change"));
}

TEST_F(CheckFindings, StandardInputThatIsCalledLikeAFileIsNotThatFile) {
    const auto path = folder_.sWrite("Set.xml", Mendable);
    const std::vector<std::string> arguments{"Building.exp", "-",        "--stdin-filename",
                                             "Set.xml",      "--select", "S011"};
    auto fixing = arguments;
    fixing.push_back("--fix");
    const auto fixed = run(fixing, {.input = Mendable});
    EXPECT_EQ(fixed.status, 2);
    EXPECT_THAT(fixed.err, HasSubstr("only a file can be mended; --diff shows what would change"));
    EXPECT_EQ(sFileText(path), Mendable);
    // Beside the file it is read in its place.
    auto both = arguments;
    both.insert(both.begin() + 1, "./Set.xml");
    const auto once = run(both, {.input = Mended});
    EXPECT_EQ(once.out, "no findings in 1 document\n");
}

TEST_F(CheckFindings, ThreadsChangeNothingOfTheOutput) {
    for (int number = 0; number < 40; ++number)
        folder_.sWrite("Sets/" + std::to_string(number) + ".xml",
                       number % 5 == 0 ? "<PropertySetDef>" : sSet("Pset_" + std::to_string(number % 7)));
    const auto one = run({"Building.exp", "Sets", "--jobs", "1"});
    EXPECT_EQ(one.status, 2);
    for (const auto* jobs : {"2", "5"}) {
        const auto many = run({"Building.exp", "Sets", "--jobs", jobs});
        EXPECT_EQ(many.out, one.out);
        EXPECT_EQ(many.err, one.err);
        EXPECT_EQ(many.status, one.status);
    }
}

} // namespace

} // namespace kiv::kivifc::test
