#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace kiv::kivifc::test {

namespace {

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

/// Each file below a folder with its bytes.
std::map<std::string, std::string> filesOf(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(folder)] = sFileText(entry.path());
    }
    return files;
}

TEST(Site, HasAPageForEachEntityAndSaysWhereItIs) {
    const TemporaryFolder folder;
    const auto run = kivifcRun({"site", "Building.exp", "Sets", "--out", folder.sPath("site")});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, StartsWith(folder.sPath("site") + "/index.html: "));
    EXPECT_THAT(sFileText(folder.sPath("site/BldWall.html")),
                HasSubstr("<title>BldWall - BUILDING1</title>"));
    EXPECT_TRUE(fs::exists(folder.sPath("site/assets/site.css")));
}

TEST(Site, StartPageHasItsTitleOnce) {
    const TemporaryFolder folder;
    for (const std::string title : {"", " \t"}) {
        ASSERT_EQ(kivifcRun({"site", "Building.exp", "--out", folder.sPath("site"), "--title", title}).status,
                  0);
        EXPECT_THAT(sFileText(folder.sPath("site/index.html")), HasSubstr("<title>BUILDING1</title>"));
        EXPECT_THAT(sFileText(folder.sPath("site/BldWall.html")),
                    HasSubstr("<title>BldWall - BUILDING1</title>"));
    }
}

TEST(Site, SameInputGivesTheSameBytes) {
    const TemporaryFolder folder;
    for (const std::string name : {"one", "two"})
        ASSERT_EQ(
            kivifcRun({"site", "Building.exp", "Sets", "office=Sets", "--out", folder.sPath(name)}).status,
            0);
    EXPECT_EQ(filesOf(folder.sPath("one")), filesOf(folder.sPath("two")));
}

/// Where the documents lie is no matter: pages are published, and kept in repositories. The set of Twice.xml
/// is left out, as One.xml has one of its name.
TEST(Site, SameDocumentsElsewhereGiveTheSameBytes) {
    const TemporaryFolder folder;
    const std::string schema = "SCHEMA TEST;\nENTITY Wall;\nEND_ENTITY;\nEND_SCHEMA;\n";
    const std::string set = "<PropertySetDef><Name>Pset_A</Name></PropertySetDef>";
    for (const std::string place : {"here", "there/below"}) {
        folder.sWrite(place + "/Test.exp", schema);
        folder.sWrite(place + "/sets/One.xml", set);
        folder.sWrite(place + "/sets/Twice.xml", set);
        folder.sWrite(place + "/firm/One.xml", set);
    }
    RunOptions options;
    options.folder = folder.sPath("here");
    ASSERT_EQ(
        kivifcRun({"site", "Test.exp", "sets", "firm=firm", "--out", folder.sPath("one")}, options).status,
        1);
    const auto place = folder.sPath("there/below/");
    ASSERT_EQ(kivifcRun({"site", place + "Test.exp", place + "sets", "firm=" + place + "firm/", "--out",
                         folder.sPath("two")})
                  .status,
              1);
    const auto files = filesOf(folder.sPath("one"));
    EXPECT_EQ(files, filesOf(folder.sPath("two")));
    EXPECT_TRUE(std::ranges::any_of(files, [](const auto& file) {
        return file.second.find("left out: <a href=\"../sets/Pset_A") != std::string::npos &&
               file.second.find("\"><bdi>sets/One.xml</bdi></a> has one of that name") != std::string::npos;
    }));
}

TEST(Site, LineEndsOfTwoBytesAreLineEnds) {
    const TemporaryFolder folder;
    const auto schema =
        folder.sWrite("Test.exp", "SCHEMA TEST;\r\nENTITY A;\r\n  B : REAL;\r\nDERIVE\r\n"
                                  "  C : REAL :=\r\n  F(B);\r\nWHERE\r\n  W : B > 1.0;\r\n"
                                  "END_ENTITY;\r\nFUNCTION F\r\n  (x : REAL) : REAL; -- same\r\n"
                                  "  RETURN(x);\r\nEND_FUNCTION;\r\nEND_SCHEMA;\r\n");
    ASSERT_EQ(kivifcRun({"site", schema, "--out", folder.sPath("site")}).status, 0);
    EXPECT_THAT(sFileText(folder.sPath("site/F.html")),
                HasSubstr("<span class=\"com\">-- same</span>\n  <b>RETURN</b>"));
    for (const auto& [name, text] : filesOf(folder.sPath("site"))) {
        if (name.ends_with(".html")) {
            EXPECT_EQ(text.find("\\r"), std::string::npos) << name;
            EXPECT_EQ(text.find('\r'), std::string::npos) << name;
        }
    }
}

TEST(Site, FolderOfSomebodyElseNeedsForce) {
    const TemporaryFolder folder;
    folder.sWrite("site/notes.txt", "mine");
    const auto refused = kivifcRun({"site", "Building.exp", "--out", folder.sPath("site")});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, HasSubstr("--force"));
    EXPECT_EQ(sFileText(folder.sPath("site/notes.txt")), "mine");
    EXPECT_EQ(kivifcRun({"site", "Building.exp", "--out", folder.sPath("site"), "--force"}).status, 0);
    EXPECT_FALSE(fs::exists(folder.sPath("site/notes.txt")));
}

TEST(Site, FolderThatHoldsWhatIsReadStaysEvenWithForce) {
    const TemporaryFolder folder;
    const auto schema = folder.sWrite("all/schema/Small.exp", "SCHEMA SMALL;\nEND_SCHEMA;\n");
    for (const auto& out : {folder.sPath("all"), folder.sPath("all/schema/")}) {
        const auto run = kivifcRun({"site", schema, "--out", out, "--force"});
        EXPECT_EQ(run.status, 2);
        EXPECT_THAT(run.err, HasSubstr("Small.exp\" is in it"));
    }
    EXPECT_TRUE(fs::exists(schema));
}

TEST(Site, FormerSiteStaysWhenTheSchemaCannotBeRead) {
    const TemporaryFolder folder;
    ASSERT_EQ(kivifcRun({"site", "Building.exp", "--out", folder.sPath("site")}).status, 0);
    const auto before = filesOf(folder.sPath("site"));
    EXPECT_EQ(kivifcRun({"site", "Missing.exp", "--out", folder.sPath("site")}).status, 2);
    EXPECT_EQ(filesOf(folder.sPath("site")), before);
}

TEST(Site, FormerSiteStaysWhenSetsCannotBeRead) {
    const TemporaryFolder folder;
    const auto broken = folder.sWrite("Broken.xml", "<PropertySetDef><Name>Pset_");
    ASSERT_EQ(kivifcRun({"site", "Building.exp", "Sets", "--out", folder.sPath("site")}).status, 0);
    const auto before = filesOf(folder.sPath("site"));
    for (const auto& sets : {std::string("Stes"), broken}) {
        const auto run = kivifcRun({"site", "Building.exp", sets, "--out", folder.sPath("site")});
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, HasSubstr("no site is written, as not everything could be read"));
        EXPECT_EQ(filesOf(folder.sPath("site")), before);
    }
}

TEST(Site, FolderThatHoldsTheProjectStaysEvenWithForce) {
    const TemporaryFolder folder;
    folder.sWrite("project/notes.txt", "mine");
    fs::create_directory(folder.sPath("project/inner"));
    const std::string schema = std::string(KIVIFC_SAMPLES) + "/Building.exp";
    RunOptions options;
    options.folder = folder.sPath("project/inner");
    for (const std::string out : {".", "..", "../../project/"}) {
        const auto run = kivifcRun({"site", schema, "--out", out, "--force"}, options);
        EXPECT_EQ(run.status, 2) << out;
        EXPECT_THAT(run.err, HasSubstr("the current folder is it or in it"));
    }
    options.folder.clear();
    options.environment = {"HOME=" + folder.sPath("project/inner")};
    EXPECT_THAT(kivifcRun({"site", schema, "--out", folder.sPath("project"), "--force"}, options).err,
                HasSubstr("the home folder is it or in it"));
    options.environment = {"HOME="};
    const auto toml = folder.sWrite("project/other.toml", "");
    EXPECT_THAT(
        kivifcRun({"site", schema, "--out", folder.sPath("project"), "--force", "--config-file", toml},
                  options)
            .err,
        HasSubstr("other.toml\" is in it"));
    EXPECT_EQ(sFileText(folder.sPath("project/notes.txt")), "mine");
}

TEST(Site, ProjectFileHoldsItsArguments) {
    const TemporaryFolder folder;
    folder.sWrite("kivifc.toml", std::string("schema = \"") + KIVIFC_SAMPLES + "/Building.exp\"\nsets = [\"" +
                                     KIVIFC_SAMPLES +
                                     "/Sets\"]\n[site]\nout = \"pages\"\ntitle = \"Our schema\"\n");
    RunOptions options;
    options.folder = folder.sPath("");
    EXPECT_EQ(kivifcRun({"site"}, options).status, 0);
    EXPECT_THAT(sFileText(folder.sPath("pages/BldWall.html")),
                HasSubstr("<title>BldWall - Our schema</title>"));
    // The command line comes first.
    EXPECT_EQ(kivifcRun({"site", "--title", "Other", "--out", "more"}, options).status, 0);
    EXPECT_THAT(sFileText(folder.sPath("more/BldWall.html")), HasSubstr("<title>BldWall - Other</title>"));
    // Another command of the same project is not disturbed.
    EXPECT_EQ(kivifcRun({"check"}, options).err, "");
}

TEST(Site, WhatIsMissingIsNamed) {
    EXPECT_THAT(kivifcRun({"site"}).err, HasSubstr("FILE, the schema, is required"));
    EXPECT_THAT(kivifcRun({"site", "Building.exp"}).err, HasSubstr("--out DIR"));
    EXPECT_EQ(kivifcRun({"site", "Building.exp"}).status, 2);
}

TEST(Site, UnknownKeyOfItsSectionIsAFailure) {
    const TemporaryFolder folder;
    folder.sWrite("kivifc.toml", "[site]\nouts = \"pages\"\n");
    RunOptions options;
    options.folder = folder.sPath("");
    const auto run = kivifcRun({"site"}, options);
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err, HasSubstr("kivifc.toml:2: no key of [site] is named \"outs\""));
}

TEST(Site, SetThatIsRefusedIsAFinding) {
    const TemporaryFolder folder;
    const auto run =
        kivifcRun({"site", "Building.exp", "BrokenSets/Broken_Refused.xml", "--out", folder.sPath("site")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(fs::exists(folder.sPath("site/index.html")));
}

/// No type is named Missing and none Lost.
TEST(Site, SchemaWithErrorsIsAFinding) {
    const TemporaryFolder folder;
    const auto schema = folder.sWrite("Test.exp", "SCHEMA TEST;\nENTITY A;\n    B : Missing;\n    C : Lost;\n"
                                                  "END_ENTITY;\nEND_SCHEMA;\n");
    const auto run = kivifcRun({"site", schema, "--out", folder.sPath("site")});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, HasSubstr("Test.exp: the schema has 2 errors, so pages may lack what it declares"));
    EXPECT_THAT(sFileText(folder.sPath("site/index.html")),
                HasSubstr("<span class=\"badge error\">incomplete</span> The schema has 2 errors"));
    EXPECT_EQ(kivifcRun({"schema", schema}).status, 1);
}

/// A rule that cannot be read is a warning, and is on the page as its text.
TEST(Site, SchemaWithWarningsAloneIsComplete) {
    const TemporaryFolder folder;
    const auto schema =
        folder.sWrite("Test.exp", "SCHEMA TEST;\nENTITY A;\n    B : REAL;\n WHERE\n    W : B > ;\n"
                                  "END_ENTITY;\nEND_SCHEMA;\n");
    const auto run = kivifcRun({"site", schema, "--out", folder.sPath("site")});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(sFileText(folder.sPath("site/index.html")).find("incomplete"), std::string::npos);
}

TEST(Site, SetThatIsRefusedHasItsPageThoughItCameFromAPipe) {
    const TemporaryFolder folder;
    RunOptions options;
    options.input = sFileText(std::string(KIVIFC_SAMPLES) + "/BrokenSets/Broken_Refused.xml");
    EXPECT_EQ(kivifcRun({"site", "Building.exp", "-", "--out", folder.sPath("site")}, options).status, 1);
    ASSERT_EQ(
        kivifcRun({"site", "Building.exp", "BrokenSets/Broken_Refused.xml", "--out", folder.sPath("other")})
            .status,
        1);
    for (const auto& [name, text] : filesOf(folder.sPath("other")))
        EXPECT_TRUE(fs::exists(folder.sPath("site/" + name))) << name;
}

} // namespace

} // namespace kiv::kivifc::test
