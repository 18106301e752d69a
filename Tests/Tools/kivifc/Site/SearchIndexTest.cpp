#include "kivifc/Site/SearchIndex.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site {

namespace {

/// What lies between the brackets of `pages`.
std::string sPages(const SearchIndex& index) {
    const auto text = index.sText();
    const std::string begin = "pages:[\n";
    const std::string end = "\n]};\n";
    const auto from = text.find(begin) + begin.size();
    return text.substr(from, text.size() - end.size() - from);
}

TEST(SearchIndex, BeginsWithKindsAndLanguages) {
    const auto text = SearchIndex().sText();
    EXPECT_TRUE(text.starts_with("window.kivSearch={format:2,kinds:[\"Entity\",\"Type\","));
    EXPECT_NE(text.find(",\"Page\"],languages:[],pages:[\n\n]};\n"), std::string::npos);
}

TEST(SearchIndex, PagesWithoutAnythingElseAreKindAndName) {
    SearchIndex index;
    index.vPageAdd(SearchKind::Entity, "IfcWall", "IfcWall.html");
    index.vPageAdd(SearchKind::PropertySet, "Pset_WallCommon", "sets/Pset_WallCommon.html");
    EXPECT_EQ(sPages(index), "[0,\"IfcWall\"],\n[4,\"Pset_WallCommon\"]");
}

TEST(SearchIndex, AnAddressThatIsNotTheNameIsKept) {
    SearchIndex index;
    index.vPageAdd(SearchKind::Entity, "a/b", "a-b-1f.html");
    index.vPageAdd(SearchKind::QuantitySet, "Qto", "Qto.html");
    index.vPageAdd(SearchKind::Entity, "Wall", "sets/Wall.html");
    EXPECT_EQ(sPages(index),
              "[0,\"a/b\",\"a-b-1f.html\"],\n[5,\"Qto\",\"Qto.html\"],\n[0,\"Wall\",\"sets/Wall.html\"]");
}

TEST(SearchIndex, RowsOfOneKindAreOneRun) {
    SearchIndex index;
    index.vPageAdd(SearchKind::Entity, "W", "W.html");
    index.vRowAdd(SearchKind::Attribute, "A", "A");
    index.vRowAdd(SearchKind::Attribute, "B", "B");
    index.vRowAdd(SearchKind::DomainRule, "R", "R");
    index.vPageAdd(SearchKind::Entity, "X", "X.html");
    index.vRowAdd(SearchKind::DomainRule, "R", "R-1");
    EXPECT_EQ(sPages(index),
              "[0,\"W\",0,0,[[8,\"A\",\"B\"],[14,\"R\"]]],\n[0,\"X\",0,0,[[14,[\"R\",\"R-1\"]]]]");
}

TEST(SearchIndex, TranslationsNumberTheirLanguagesInTheOrderOfTheirFirstUse) {
    SearchIndex index;
    const std::array of{SearchTranslation{"ja", "\xE5\xA3\x81"}, SearchTranslation{"de", "Wand"}};
    const std::array german{SearchTranslation{"de", "Breite"}};
    index.vPageAdd(SearchKind::PropertySet, "P", "sets/P.html", "00112233445566778899aabbccddeeff", of);
    index.vRowAdd(SearchKind::Property, "Width", "Width", {}, german);
    index.vRowAdd(SearchKind::Property, "Depth", "Depth-2", "ffffffffffffffffffffffffffffffff");
    EXPECT_EQ(sPages(index), "[4,\"P\",0,\"00112233445566778899aabbccddeeff\","
                             "[[6,[\"Width\",0,0,1,\"Breite\"],"
                             "[\"Depth\",\"Depth-2\",\"ffffffffffffffffffffffffffffffff\"]]],"
                             "[0,\"\xE5\xA3\x81\",1,\"Wand\"]]");
    EXPECT_NE(index.sText().find("languages:[\"ja\",\"de\"]"), std::string::npos);
}

TEST(SearchIndex, NoteComesLast) {
    SearchIndex index;
    index.vPageAdd(SearchKind::PropertySet, "P", "sets/P.html", {}, {}, "hidden by \"office\"");
    index.vPageAdd(SearchKind::PropertySet, "Q", "sets/Q.html", {}, {}, "not used");
    index.vRowAdd(SearchKind::Property, "A", "A");
    EXPECT_EQ(sPages(index), "[4,\"P\",0,0,[],[],\"hidden by \\\"office\\\"\"],\n[4,\"Q\",0,0,[[6,\"A\"]],[],"
                             "\"not used\"]");
}

TEST(SearchIndex, SupertypeComesAfterTheNote) {
    SearchIndex index;
    index.vPageAdd(SearchKind::Entity, "W", "W.html", {}, {}, {}, "R");
    index.vRowAdd(SearchKind::Attribute, "A", "A");
    EXPECT_EQ(sPages(index), "[0,\"W\",0,0,[[8,\"A\"]],[],0,\"R\"]");
}

TEST(SearchIndex, WhatDocumentsContainEndsNoString) {
    struct Row {
        std::string name;
        std::string text;
    };
    const Row rows[] = {{"a\"b\\c", R"("a\"b\\c")"},
                        {"</script>", R"("\u003c/script>")"},
                        {"a\nb\x7F", R"("a\u000ab\u007f")"},
                        {"\xE2\x80\xAE\xE2\x80\xA8", R"("\u202e\u2028")"},
                        {"\xFF", "\"\xEF\xBF\xBD\""},
                        {std::string("\0", 1), R"("\u0000")"},
                        {"", R"("")"}};
    for (const auto& row : rows) {
        SearchIndex index;
        index.vPageAdd(SearchKind::Page, row.name, "x");
        EXPECT_EQ(sPages(index), "[16," + row.text + ",\"x\"]") << row.name;
    }
}

TEST(SearchIndex, NamesThatNobodyTypesAreCut) {
    SearchIndex index;
    index.vPageAdd(SearchKind::Page, std::string(200, 'a'), "x");
    index.vPageAdd(SearchKind::Page, std::string(1000000, 'a'), "y");
    EXPECT_EQ(sPages(index), "[16,\"" + std::string(200, 'a') + "\",\"x\"],\n[16,\"" + std::string(200, 'a') +
                                 "\xE2\x80\xA6\",\"y\"]");
}

} // namespace

} // namespace kiv::kivifc::site
