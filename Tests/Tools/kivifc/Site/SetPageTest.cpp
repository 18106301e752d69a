#include "kivifc/Site/SetPage.h"

#include "kiv/Kit/Findings/Rule.h"
#include "kivifc/Site/Addresses.h"

#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"
#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

using kiv::kivifc::test::kivifcRun;
using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::HasSubstr;
using testing::Not;

constexpr const char* SetPageDeclarations = "TYPE Label = STRING;\nEND_TYPE;\nENTITY Wall;\nEND_ENTITY;\n";

/// A site that the program makes, of that schema and of what a test writes.
class MadeSite {
public:
    MadeSite() :
        schema_(sWrite("Test.exp", std::string("SCHEMA TEST;\n") + SetPageDeclarations + "END_SCHEMA;\n")) {}

    std::string sPath(const std::string& name) const { return folder_.sPath(name); }
    std::string sWrite(const std::string& name, const std::string& text) const {
        return folder_.sWrite(name, text);
    }
    const std::string& getSchema() const { return schema_; }

    /// Of these paths to sets; the status of the program.
    int make(std::vector<std::string> words) const {
        words.insert(words.begin(), {"site", schema_});
        words.insert(words.end(), {"--out", sPath("site")});
        return kivifcRun(words).status;
    }
    /// Of a set.
    std::string sPage(const std::string& file) const { return sFileText(sPath("site/sets/" + file)); }

private:
    TemporaryFolder folder_;
    std::string schema_;
};

TEST(SetPage, HasWhatTheDocumentSays) {
    const SiteSample sample(SetPageDeclarations,
                            {{"TEST", sSet("Pset_Wall", {"Wall"}, sProperty("Mark", sSingle("Label")),
                                           "templatetype=\"PSET_TYPEDRIVENONLY\" "
                                           "ifdguid=\"00000000000000000000000000000040\"")}});
    const auto page = sample.sPage("sets/Pset_Wall.html");
    EXPECT_THAT(page, HasSubstr("<h1><span class=\"kind\">Property set</span> <bdi>Pset_Wall</bdi></h1>"));
    EXPECT_THAT(page, HasSubstr("About Pset_Wall."));
    EXPECT_THAT(page, HasSubstr("<dt>Context</dt><dd><bdi>TEST (standard)</bdi></dd>"));
    EXPECT_THAT(page, HasSubstr("<dt>Document</dt><dd><bdi>Set.xml</bdi></dd>"));
    EXPECT_THAT(page, HasSubstr("<bdi>PSET_TYPEDRIVENONLY</bdi>"));
    EXPECT_THAT(page, HasSubstr("<dt>GUID, 22 characters</dt><dd><code>0000000000000000000010</code></dd>"));
    EXPECT_THAT(page,
                HasSubstr("<dt>GUID with hyphens</dt><dd><code>00000000-0000-0000-0000-000000000040</code>"));
    EXPECT_THAT(page, HasSubstr("<a href=\"../Wall.html\"><code>Wall</code></a>"));
    EXPECT_THAT(page, HasSubstr("<tr id=\"Mark\">"));
    EXPECT_THAT(page, HasSubstr("<a href=\"../Label.html\">"));
    EXPECT_THAT(page, Not(HasSubstr("<dt>Hides")));
    EXPECT_THAT(page, Not(HasSubstr("<dt>Hidden by")));
}

TEST(SetPage, QuantitySetIsCalledThat) {
    const SiteSample sample(SetPageDeclarations,
                            {{"TEST", "<QtoSetDef><Name>Qto_Wall</Name><QtoDefs><QtoDef><Name>Length</Name>"
                                      "<QtoType>Q_LENGTH</QtoType></QtoDef></QtoDefs></QtoSetDef>"}});
    const auto page = sample.sPage("sets/Qto_Wall.html");
    EXPECT_THAT(page, HasSubstr("<span class=\"kind\">Quantity set</span>"));
    EXPECT_THAT(page, HasSubstr("<td>Length</td><td><code>IfcLengthMeasure</code></td>"));
    EXPECT_THAT(page, HasSubstr("Every class: the document names none."));
}

/// Sets of hosts are searched before the standard ones.
TEST(SetPage, SetsOfOneNameSayWhichIsFound) {
    const SiteSample sample(SetPageDeclarations,
                            {{"TEST", sSet("S", {}, "")}, {"office", sSet("S", {}, "")}});
    const auto standard = sample.sPage("sets/S.html");
    EXPECT_THAT(standard, HasSubstr("TEST (standard)"));
    EXPECT_THAT(standard, HasSubstr("<dt>Hidden by</dt><dd><a href=\"../sets/S~"));
    EXPECT_THAT(standard, HasSubstr(" of <bdi>office (your own)</bdi>"));
    const auto& sets = sample.getModel().getSets();
    const auto office = sample.getModel().getAddresses().of(*sets.front().set);
    ASSERT_EQ(sets.front().context.name, "office");
    const auto host = sample.sPage(std::string(office.getPath()));
    EXPECT_THAT(host, HasSubstr("<dt>Hides</dt><dd><a href=\"../sets/S.html\"><code>S</code></a>"));
}

TEST(SetPage, TranslationsAreBesideTheDefinition) {
    const SiteSample sample(SetPageDeclarations,
                            {{"TEST", "<PropertySetDef><Name>S</Name><Definition>Walls.</Definition>"
                                      "<PsetDefinitionAliases><PsetDefinitionAlias lang=\"de\">W\xC3\xA4nde."
                                      "</PsetDefinitionAlias></PsetDefinitionAliases></PropertySetDef>"}});
    EXPECT_THAT(sample.sPage("sets/S.html"),
                HasSubstr("<span class=\"t\" data-l=\"\">Walls.</span><span class=\"t\" lang=\"de\">"
                          "W\xC3\xA4nde.</span>"));
}

/// The document names a class that the schema does not have, and no GUID.
TEST(SetPage, FindingsAreThoseOfACheck) {
    const MadeSite site;
    const auto document = site.sWrite("S.xml", sSet("Pset_S", {"Wal"}, sProperty("Mark", sSingle("Label"))));
    EXPECT_EQ(site.make({document}), 0);
    const auto page = site.sPage("Pset_S.html");
    const auto check = kivifcRun({"check", site.getSchema(), document, "--format", "github"}).out;
    EXPECT_THAT(check, HasSubstr("C001"));
    EXPECT_THAT(
        page,
        HasSubstr("<li id=\"finding-C001\" class=\"found-error\"><span class=\"badge error\">error</span> "
                  "line 1: <bdi>"));
    EXPECT_THAT(page, HasSubstr("</bdi> <span class=\"note\"><code>C001</code> " +
                                std::string(kit::pRuleFind("C001")->name) +
                                "</span><a class=\"anchor\" href=\"#finding-C001\" "
                                "aria-label=\"Link to C001\">#</a></li>"));
}

/// By its code, so that a line more in the document does not change it.
TEST(SetPage, EachFindingHasAnAddress) {
    const MadeSite site;
    const auto document =
        site.sWrite("S.xml", sSet("Pset_S", {"Wal", "Dor"}, sProperty("Mark", sSingle("Label"))));
    EXPECT_EQ(site.make({document}), 0);
    const auto page = site.sPage("Pset_S.html");
    for (const std::string id : {"finding-C001", "finding-C001~~2"}) {
        EXPECT_THAT(page, HasSubstr("<li id=\"" + id + "\""));
        EXPECT_THAT(page, HasSubstr(" href=\"#" + id + "\""));
    }
}

/// Of a text that is no GUID nothing is left when a document was read.
TEST(SetPage, WhatIsNoGuidIsShownAsItIsWritten) {
    const MadeSite site;
    const auto document =
        site.sWrite("S.xml", sSet("Pset_S", {"Wall"},
                                  sProperty("Mark", sSingle("Label"), {}, "ifdguid=\"a &lt;b&gt; c\"") +
                                      sProperty("Other", sSingle("Label"), {}, "ifdguid=\"one\"") +
                                      sProperty("None", sSingle("Label")),
                                  "ifdguid=\"nonsense\""));
    site.make({document});
    const auto page = site.sPage("Pset_S.html");
    const std::string badge = "</code> <span class=\"badge error\">not a GUID</span>";
    EXPECT_THAT(page, HasSubstr("<dt>GUID</dt><dd><code>nonsense" + badge + "</dd>"));
    const auto sRow = [&](const std::string& id) {
        const auto begin = page.find("<tr id=\"" + id + "\"");
        return page.substr(begin, page.find("</tr>", begin) - begin);
    };
    EXPECT_THAT(sRow("Mark"), HasSubstr("<details><summary>GUID</summary><code>a &lt;b&gt; c" + badge));
    EXPECT_THAT(sRow("Other"), HasSubstr("<code>one" + badge));
    EXPECT_THAT(sRow("None"), Not(HasSubstr("GUID")));
}

/// Those of one name say where they differ, and no more of where they lie.
TEST(SetPage, DocumentsOfOneNameDiffer) {
    const MadeSite site;
    site.sWrite("sets/a/deep/1.xml", sSet("Pset_A", {"Wall"}, ""));
    site.sWrite("sets/b/1.xml", sSet("Pset_B", {"Wall"}, ""));
    site.sWrite("sets/b/2.xml", sSet("Pset_C", {"Wall"}, ""));
    EXPECT_EQ(site.make({site.sPath("sets")}), 0);
    const auto sDocument = [](const std::string& name) {
        return "<dt>Document</dt><dd><bdi>" + name + "</bdi></dd>";
    };
    EXPECT_THAT(site.sPage("Pset_A.html"), HasSubstr(sDocument("a/deep/1.xml")));
    EXPECT_THAT(site.sPage("Pset_B.html"), HasSubstr(sDocument("b/1.xml")));
    EXPECT_THAT(site.sPage("Pset_C.html"), HasSubstr(sDocument("2.xml")));
}

/// Of one name in two folders that were given: the folder that was given is what differs.
TEST(SetPage, DocumentsOfTwoArgumentsDifferByTheirFolders) {
    const MadeSite site;
    site.sWrite("Sets/1.xml", sSet("Pset_A", {"Wall"}, ""));
    const auto other = site.sWrite("firm/deep/1.xml", sSet("Pset_B", {"Wall"}, ""));
    for (const auto& given : {site.sPath("firm"), site.sPath("firm/"), site.sPath("firm/deep"), other}) {
        EXPECT_EQ(site.make({site.sPath("Sets"), "office=" + given}), 0);
        const auto name = given == other                     ? std::string("1.xml")
                          : given == site.sPath("firm/deep") ? std::string("deep/1.xml")
                                                             : std::string("firm/deep/1.xml");
        EXPECT_THAT(site.sPage("Pset_A.html"), HasSubstr("<dd><bdi>Sets/1.xml</bdi></dd>"));
        EXPECT_THAT(site.sPage(FileNames().sTakeMarked("Pset_B", "office")),
                    HasSubstr("<dd><bdi>" + name + "</bdi></dd>"));
    }
}

/// By a name that differs in letter case, and has the path of the other document in it.
TEST(SetPage, SetThatIsLeftOutLeadsToTheOneThatIsUsed) {
    const MadeSite site;
    const auto first = site.sPath("sets/1.xml");
    site.sWrite("sets/1.xml", sSet("pset " + first, {}, ""));
    site.sWrite("sets/2.xml", sSet("Pset " + first, {}, ""));
    site.make({site.sPath("sets")});
    std::string used;
    std::string unused;
    for (const auto& file : std::filesystem::directory_iterator(site.sPath("site/sets"))) {
        const auto page = sFileText(file.path());
        if (page.find(">not used<") == std::string::npos)
            used = file.path().filename();
        else
            unused = page;
    }
    ASSERT_FALSE(used.empty());
    EXPECT_THAT(unused, HasSubstr(" is left out: <a href=\"../sets/" + used +
                                  "\"><bdi>1.xml</bdi></a> has one of that name</p>"));
}

TEST(SetPage, DocumentWithoutFindingsSaysSo) {
    const TemporaryFolder folder;
    const auto out = folder.sPath("site");
    EXPECT_EQ(kivifcRun({"site", "Building.exp", "Sets", "--out", out}).status, 0);
    const auto check =
        kivifcRun({"check", "Building.exp", "Sets/Pset_BldStorey.xml", "--format", "github"}).out;
    const auto page = sFileText(out + "/sets/Pset_BldStorey.html");
    EXPECT_EQ(check.find("Pset_BldStorey") == std::string::npos,
              page.find("finds nothing in the document") != std::string::npos)
        << check;
}

} // namespace

} // namespace kiv::kivifc::site::test
