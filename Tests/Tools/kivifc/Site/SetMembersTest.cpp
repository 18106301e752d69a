#include "kivifc/Site/SetMembers.h"

#include "Support/CountOf.h"
#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using kiv::test::countOf;
using testing::HasSubstr;
using testing::Not;

constexpr const char* SetMembersDeclarations = "TYPE Label = STRING;\nEND_TYPE;\n";

std::string membersOf(const std::string& members, MembersDetail detail) {
    const SiteSample sample(SetMembersDeclarations, {{"TEST", sSet("S", {}, members)}});
    Html html("");
    vSetMembersWrite(sample.getModel(), sample.getModel().getSets().front(), detail, html);
    return html.takeText();
}

TEST(SetMembers, ShortRowsLeadToThoseOfTheSet) {
    const auto html = membersOf(sProperty("Mark", sSingle("Label")), MembersDetail::Short);
    EXPECT_THAT(html, HasSubstr("<tr><th><a href=\"sets/S.html#Mark\">Mark</a></th><td>"
                                "<a href=\"Label.html\">Label</a></td><td>What Mark "
                                "is.</td></tr>"));
}

/// They have no column for the kind, and a list of labels is no label.
TEST(SetMembers, ShortRowsSayTheKind) {
    for (const auto detail : {MembersDetail::Short, MembersDetail::Brief}) {
        const auto html = membersOf(
            sProperty("Marks", "<TypePropertyListValue><ListValue><DataType type=\"Label\"/></ListValue>"
                               "</TypePropertyListValue>"),
            detail);
        EXPECT_THAT(html, HasSubstr("</th><td>List of <a href=\"Label.html\">Label</a></td>"));
    }
}

TEST(SetMembers, FullRowsHaveIdKindTranslationsAndGuid) {
    const auto html = membersOf(sProperty("Mark", sSingle("Label"), sNameAlias("de-CH", "Zeichen"),
                                          "ifdguid=\"0000000000000000000000000000003f\""),
                                MembersDetail::Full);
    EXPECT_THAT(html, HasSubstr("<tr id=\"Mark\"><th scope=\"row\"><a class=\"anchor\" href=\"#Mark\" "
                                "aria-label=\"Link to Mark\">#</a><code>Mark</code>"));
    EXPECT_THAT(html, HasSubstr("<span class=\"t\" lang=\"de-CH\">Zeichen</span>"));
    EXPECT_THAT(html, HasSubstr("<td>Single value</td>"));
    EXPECT_THAT(html,
                HasSubstr("<code>000000000000000000000$</code> <code>0000000000000000000000000000003f</code> "
                          "<code>00000000-0000-0000-0000-00000000003f</code>"));
}

TEST(SetMembers, PartsNameTheirWhole) {
    const auto members = sProperty("A", "<TypeComplexProperty name=\"CP\">" +
                                            sProperty("B", sSingle("Label")) + "</TypeComplexProperty>");
    EXPECT_THAT(membersOf(members, MembersDetail::Full),
                HasSubstr("<span class=\"note\">part of <a href=\"#A\"><bdi>A</bdi></a></span>"));
    EXPECT_THAT(membersOf(members, MembersDetail::Short), HasSubstr("part of <bdi>A</bdi>"));
}

/// They are there again on the page of each subtype.
TEST(SetMembers, ShortOnesHaveALimit) {
    std::string members;
    for (int number = 0; number < 203; ++number)
        members += sProperty("P" + std::to_string(number), sSingle("Label"));
    const auto limited = membersOf(members, MembersDetail::Short);
    EXPECT_EQ(countOf(limited, "<tr><th><a "), 200U);
    EXPECT_THAT(limited, HasSubstr("<a class=\"more\" href=\"sets/S.html\">and 3 more</a>"));
    const auto full = membersOf(members, MembersDetail::Full);
    EXPECT_EQ(countOf(full, "<tr id="), 203U);
    EXPECT_THAT(full, Not(HasSubstr(" more</a>")));
}

/// A name is the only thing of a document that is cut on the page of its set.
TEST(SetMembers, LongTextsAreCutWhereTheyRepeat) {
    const std::string text(100000, 'x');
    const auto member = sTagged("PropertyDef", sTagged("Name", "N" + text) + sTagged("Definition", text));
    EXPECT_LT(membersOf(member, MembersDetail::Short).size(), 2000U);
    const auto full = membersOf(member, MembersDetail::Full);
    EXPECT_THAT(full, HasSubstr(text));
    EXPECT_LT(full.size(), 102000U);
}

TEST(SetMembers, MarkupInDocumentsIsText) {
    const auto html = membersOf(sProperty("&lt;script&gt;\"'", sSingle("&lt;b&gt;", "&lt;i&gt;"),
                                          sNameAlias("&quot;&gt;&lt;img&gt;", "&lt;u&gt;")),
                                MembersDetail::Full);
    EXPECT_THAT(html, HasSubstr("&lt;script&gt;&quot;&#39;"));
    EXPECT_THAT(html, HasSubstr("data-l=\"&quot;&gt;&lt;img&gt;\">&lt;u&gt;</span>"));
    for (const auto* tag : {"<script", "<b>", "<i>", "<u>", "<img"})
        EXPECT_THAT(html, Not(HasSubstr(tag)));
}

} // namespace

} // namespace kiv::kivifc::site::test
