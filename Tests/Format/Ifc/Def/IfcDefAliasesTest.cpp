#include "kiv/Format/Ifc/Def/IfcDefAliases.h"

#include "Support/Growth.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

using ifc::def::xml::Aliases;
using kiv::locale::Locale;

Aliases aliasesOf(std::string_view xml) {
    const XmlFromText document(xml);
    Aliases aliases;
    aliases.vAliasAdd(document.root(), "Alias");
    return aliases;
}

/// Language code and text of each entry.
std::vector<std::pair<std::string, std::string>> entriesOf(const Aliases& aliases) {
    std::vector<std::pair<std::string, std::string>> entries;
    for (const auto& entry : aliases.getEntries())
        entries.emplace_back(entry.locale.getCombined(), entry.text);
    return entries;
}

using Entries = std::vector<std::pair<std::string, std::string>>;

TEST(Aliases, AreReadInOrderWithTheirRepetitions) {
    const auto aliases = aliasesOf("<l><Alias lang='de'>eins</Alias>\n<Alias lang='en-US'>two</Alias>"
                                   "<Alias lang='de'>eins</Alias></l>");
    EXPECT_EQ(entriesOf(aliases), (Entries{{"de", "eins"}, {"en-US", "two"}, {"de", "eins"}}));
}

TEST(Aliases, SeveralListsAreJoined) {
    const XmlFromText document("<l><Alias lang='de'>eins</Alias></l>");
    Aliases aliases;
    aliases.vAliasAdd(document.root(), "Alias");
    aliases.vAliasAdd(document.root(), "Alias");
    EXPECT_EQ(entriesOf(aliases), (Entries{{"de", "eins"}, {"de", "eins"}}));
}

TEST(Aliases, TextIsKeptAsItStands) {
    EXPECT_EQ(entriesOf(aliasesOf("<l><Alias lang='ja-JP'> \xE5\xA3\x81\n</Alias></l>")),
              (Entries{{"ja-JP", " \xE5\xA3\x81\n"}}));
}

TEST(Aliases, AliasWithoutLanguageIsDropped) {
    EXPECT_EQ(entriesOf(aliasesOf("<l><Alias>x</Alias><Alias Lang='de'>x</Alias></l>")), Entries());
}

TEST(Aliases, AliasWithoutTextIsDropped) {
    EXPECT_EQ(entriesOf(aliasesOf("<l><Alias lang='de'/><Alias lang='de'></Alias></l>")), Entries());
}

TEST(Aliases, ElementsOfAnotherTagAreDropped) {
    EXPECT_EQ(entriesOf(aliasesOf("<l><alias lang='de'>x</alias><Aliases lang='de'>x</Aliases></l>")),
              Entries());
}

TEST(Aliases, AliasWhoseFirstChildIsNoTextIsEmpty) {
    EXPECT_EQ(entriesOf(aliasesOf("<l><Alias lang='de'><b>x</b></Alias></l>")), (Entries{{"de", ""}}));
}

TEST(Aliases, ReadingTwiceAsManyTakesAboutTwiceAsLong) {
    const double growth = growthFrom(100'000, [](std::size_t count) {
        std::string xml = "<l>";
        for (std::size_t i = 0; i != count; ++i)
            xml += "<Alias lang='de'>x</Alias>";
        return [count, document = std::make_shared<XmlFromText>(xml + "</l>")] {
            Aliases aliases;
            aliases.vAliasAdd(document->root(), "Alias");
            EXPECT_EQ(aliases.getEntries().size(), count);
        };
    });
    EXPECT_LE(growth, ProportionalGrowth);
}

struct LookUpRow {
    const char* requested;
    const char* found;
};

TEST(Aliases, LookUpTriesTheLocaleAndThenItsLanguageAlone) {
    const auto aliases = aliasesOf("<l><Alias lang='de'>Wand</Alias><Alias lang='en-US'>wall</Alias>"
                                   "<Alias lang='de-AT'>Mauer</Alias></l>");
    const LookUpRow rows[] = {
        {"de", "Wand"}, {"de-AT", "Mauer"}, {"de-CH", "Wand"}, {"DE-at", "Mauer"}, {"en-US", "wall"},
        {"en-GB", ""},  {"en", ""},         {"fr", ""},        {"fr-FR", ""},
    };
    for (const LookUpRow& row : rows) {
        SCOPED_TRACE(row.requested);
        EXPECT_EQ(aliases.sValueFromLanguage(Locale::get(row.requested, nullptr)), row.found);
    }
}

TEST(Aliases, BritishRequestFindsNeitherGermanNorAmerican) {
    const auto aliases = aliasesOf("<l><Alias lang='de'>Wand</Alias><Alias lang='en-US'>wall</Alias></l>");
    EXPECT_EQ(aliases.sValueFromLanguage(Locale::get("en", "GB")), "");
}

TEST(Aliases, SwissRequestFindsTheGermanText) {
    const auto aliases = aliasesOf("<l><Alias lang='de'>Wand</Alias><Alias lang='en-US'>wall</Alias></l>");
    EXPECT_EQ(aliases.sValueFromLanguage(Locale::get("de", "CH")), "Wand");
}

TEST(Aliases, LanguageOfATagWithTwoCountriesIsSplitAgain) {
    const auto aliases = aliasesOf("<l><Alias lang='de'>Wand</Alias><Alias lang='de-DE'>Mauer</Alias></l>");
    EXPECT_EQ(aliases.sValueFromLanguage(Locale::get("de-DE-AT", nullptr)), "Mauer");
    EXPECT_EQ(aliases.sValueFromLanguage(Locale::get("de-CH-AT", nullptr)), "");
}

TEST(Aliases, FirstOfEqualLocalesIsFound) {
    const auto aliases = aliasesOf("<l><Alias lang='de'>first</Alias><Alias lang='de'>second</Alias></l>");
    EXPECT_EQ(aliases.sValueFromLanguage(Locale::get("de", nullptr)), "first");
    EXPECT_EQ(aliases.sValueFromLanguage(Locale::get("de-CH", nullptr)), "first");
}

TEST(Aliases, EmptyTextThatIsFoundEndsTheSearch) {
    const auto aliases = aliasesOf("<l><Alias lang='de-AT'><b/></Alias><Alias lang='de'>Wand</Alias></l>");
    EXPECT_EQ(aliases.sValueFromLanguage(Locale::get("de-AT", nullptr)), "");
}

TEST(Aliases, NoneAreWrittenAsNothing) {
    XmlTarget target("r");
    Aliases().vExport(target.root(), "List", "Item");
    EXPECT_EQ(target.sText(), "<r/>");
}

TEST(Aliases, AreWrittenWithTheirLanguageUnderTheGivenTags) {
    XmlTarget target("r");
    aliasesOf("<l><Alias lang='de'>a &amp; b</Alias><Alias lang='en_US'>x</Alias></l>")
        .vExport(target.root(), "List", "Item");
    EXPECT_EQ(target.sText(),
              "<r><List><Item lang=\"de\">a &amp; b</Item><Item lang=\"en-US\">x</Item></List></r>");
}

} // namespace

} // namespace kiv::test
