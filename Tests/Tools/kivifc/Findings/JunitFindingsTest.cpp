#include "Tools/kivifc/Findings/SampleFindings.h"
#include "kivifc/Findings/Selection.h"

#include <gtest/gtest.h>

namespace kiv::kivifc::test {

namespace {

using kit::Severity;

std::string sSuite(const std::vector<kit::Finding>& findings, const CheckResult& result,
                   std::optional<Severity> failing = Severity::Error) {
    return sWrittenBy([&](Output& output) { return pJunitFindings(output, failing); }, findings, result);
}

TEST(JunitFindings, EachFileIsATestCase) {
    CheckResult result;
    result.documents = {"a.xml", "b.xml", "c.xml", "d.xml"};
    result.failures = {{"Sets", "Permission denied"}};
    EXPECT_EQ(sSuite({sampleFinding("Z001", Severity::Error, "<x> & \"y\"", {2, 3, 0}, "b.xml"),
                      sampleFinding("Z002", Severity::Note, "later\x1B", {4, 0, 0}, "b.xml"),
                      sampleFinding("Z002", Severity::Warning, "w", {1, 0, 0}, "c.xml"),
                      sampleFinding("R044", Severity::Error, "no XML", {1, 1, 0}, "d.xml")},
                     result),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<testsuites tests=\"5\" failures=\"1\" errors=\"2\">\n"
              "  <testsuite name=\"kivifc check\" tests=\"5\" failures=\"1\" errors=\"2\">\n"
              "    <testcase classname=\"kivifc check\" name=\"b.xml\">\n"
              "      <failure message=\"2 findings\">b.xml:2:3: error: &lt;x&gt; &amp; &quot;y&quot; [Z001]\n"
              "b.xml:4: note: later\\x1B [Z002]\n"
              "</failure>\n"
              "    </testcase>\n"
              "    <testcase classname=\"kivifc check\" name=\"c.xml\">\n"
              "      <system-out>c.xml:1: warning: w [Z002]\n"
              "</system-out>\n"
              "    </testcase>\n"
              "    <testcase classname=\"kivifc check\" name=\"d.xml\">\n"
              "      <error message=\"1 finding\">d.xml:1:1: error: no XML [R044]\n"
              "</error>\n"
              "    </testcase>\n"
              "    <testcase classname=\"kivifc check\" name=\"a.xml\"/>\n"
              "    <testcase classname=\"kivifc check\" name=\"Sets\">\n"
              "      <error message=\"Permission denied\"/>\n"
              "    </testcase>\n"
              "  </testsuite>\n"
              "</testsuites>\n");
}

TEST(JunitFindings, SeverityThatFailsIsThatOfTheRun) {
    const auto warning = sampleFinding("Z002", Severity::Warning, "w", {1, 0, 0});
    EXPECT_NE(sSuite({warning}, {}, Severity::Warning).find("<failure message=\"1 finding\">"),
              std::string::npos);
    EXPECT_EQ(sSuite({warning}, {}, std::nullopt).find("<failure"), std::string::npos);
}

} // namespace

} // namespace kiv::kivifc::test
