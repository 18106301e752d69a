#include "kivifc/Site/Diagram.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using testing::HasSubstr;

std::string sRepeated(std::string_view text, int count) {
    std::string all;
    for (int each = 0; each < count; ++each)
        all += text;
    return all;
}

/// Of an entity with one subtype of that name.
std::string sDiagram(const std::string& subtype) {
    const SiteSample sample("ENTITY Root;\nEND_ENTITY;\nENTITY " + subtype +
                            "\n SUBTYPE OF (Root);\nEND_ENTITY;\n");
    Html html("");
    vDiagramWrite(sample.getModel(), sample.entity("Root"), html);
    return html.getText();
}

TEST(Diagram, DashesAreExplainedWhereThereAreAny) {
    const std::string caption = "<figcaption>Dashed: abstract</figcaption></figure>";
    for (const std::string word : {"", "\n ABSTRACT SUPERTYPE"}) {
        const SiteSample sample("ENTITY Root" + word + ";\nEND_ENTITY;\n");
        Html html("");
        vDiagramWrite(sample.getModel(), sample.entity("Root"), html);
        EXPECT_EQ(html.getText().find(caption) != std::string::npos, !word.empty());
        EXPECT_EQ(html.getText().find("box abstract") != std::string::npos, !word.empty());
    }
}

/// 8 for each letter, and 10 on both sides.
TEST(Diagram, BoxIsAsWideAsTheLettersOfItsName) {
    EXPECT_THAT(sDiagram("Wall"), HasSubstr("width=\"52\""));
    EXPECT_THAT(sDiagram(sRepeated("\xC3\xA4", 10)), HasSubstr("width=\"100\""));
}

TEST(Diagram, NameIsCutBetweenLetters) {
    const auto whole = sRepeated("\xC3\xA4", 48);
    EXPECT_THAT(sDiagram(whole), HasSubstr(">" + whole + "</text>"));
    const auto cut = sDiagram(sRepeated("\xC3\xA4", 49));
    EXPECT_THAT(cut, HasSubstr(">" + sRepeated("\xC3\xA4", 45) + "...</text>"));
    EXPECT_THAT(cut, HasSubstr("width=\"404\""));
}

/// What is spelt out as "\u{202E}" takes eight letters.
TEST(Diagram, BoxHasRoomForWhatIsSpeltOut) {
    const auto diagram = sDiagram("A\xE2\x80\xAE");
    EXPECT_THAT(diagram, HasSubstr(">A\\u{202E}</text>"));
    EXPECT_THAT(diagram, HasSubstr("width=\"92\""));
}

} // namespace

} // namespace kiv::kivifc::site::test
