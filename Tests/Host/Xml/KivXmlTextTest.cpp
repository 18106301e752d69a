#include "Host/Xml/KivXmlText.h"

#include <gtest/gtest.h>

namespace kiv::xml {
namespace {

TEST(KivXmlTextTest, CarriableTextsAndNamesStayAsTheyAre) {
    EXPECT_EQ(sCarriableText("caf\xC3\xA9 & <co>"), "caf\xC3\xA9 & <co>");
    EXPECT_EQ(sCarriableText(""), "");
    EXPECT_EQ(sCarriableName("caf\xC3\xA9"), "caf\xC3\xA9");
}

} // namespace
} // namespace kiv::xml
