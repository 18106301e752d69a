#include "Host/Xml/KivXmlText.h"

#include <gtest/gtest.h>

namespace kiv::xml {
namespace {

TEST(KivXmlText, TrimsTheWhiteSpaceOfXmlOnly) {
    struct Row {
        std::string_view text;
        std::string_view trimmed;
    };
    const Row rows[] = {{"", ""},          {" \t\r\n", ""}, {"a", "a"},
                        {" a b\n", "a b"}, {"\va", "\va"},  {"\xC2\xA0", "\xC2\xA0"}};
    for (const Row& row : rows)
        EXPECT_EQ(getTrimmed(row.text), row.trimmed) << "\"" << row.text << "\"";
}

TEST(KivXmlText, CarriableTextsAndNamesStayAsTheyAre) {
    EXPECT_EQ(sCarriableText("caf\xC3\xA9 & <co>"), "caf\xC3\xA9 & <co>");
    EXPECT_EQ(sCarriableText(""), "");
    EXPECT_EQ(sCarriableName("caf\xC3\xA9"), "caf\xC3\xA9");
}

} // namespace
} // namespace kiv::xml
