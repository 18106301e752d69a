#include "kivifc/Program/Diagnostics.h"

#include "Tools/kivifc/Program/OutputText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

class DiagnosticsTest : public testing::Test {
protected:
    test::OutputText output_;
    test::OutputText errors_;
    Diagnostics diagnostics_{output_.output, errors_.pStream()};
};

TEST_F(DiagnosticsTest, ANoteLeavesTheStatus) {
    EXPECT_EQ(diagnostics_.getStatus(), ExitStatus::Fine);
    diagnostics_.vNote("a.exp", "has two schemas");
    EXPECT_EQ(diagnostics_.getStatus(), ExitStatus::Fine);
    EXPECT_EQ(errors_.sText(), "kivifc: a.exp: has two schemas\n");
    EXPECT_TRUE(diagnostics_.getFailures().empty());
}

TEST_F(DiagnosticsTest, FailuresAreKeptInOrder) {
    diagnostics_.vFail("walls.xml", "Is a directory");
    diagnostics_.vFail({"b.xml:1:2", "no element found"});
    EXPECT_EQ(diagnostics_.getStatus(), ExitStatus::Failed);
    EXPECT_EQ(errors_.sText(), "kivifc: walls.xml: Is a directory\nkivifc: b.xml:1:2: no element found\n");
    ASSERT_EQ(diagnostics_.getFailures().size(), 2U);
    EXPECT_EQ(diagnostics_.getFailures()[0].subject, "walls.xml");
    EXPECT_EQ(diagnostics_.getFailures()[1].reason, "no element found");
}

TEST_F(DiagnosticsTest, FindingsAreLessThanFailures) {
    diagnostics_.vFinding();
    EXPECT_EQ(diagnostics_.getStatus(), ExitStatus::Findings);
    diagnostics_.vFailureShown();
    EXPECT_EQ(diagnostics_.getStatus(), ExitStatus::Failed);
    diagnostics_.vFinding();
    EXPECT_EQ(diagnostics_.getStatus(), ExitStatus::Failed);
    EXPECT_EQ(errors_.sText(), "");
}

TEST_F(DiagnosticsTest, ControlCharactersStayInTheLine) {
    diagnostics_.vFail("a\nb", "c\033[1m");
    const auto text = errors_.sText();
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    EXPECT_EQ(text.find('\033'), std::string::npos);
}

} // namespace

} // namespace kiv::kivifc
