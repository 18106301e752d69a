#include "Kit/Findings/Rules/ExampleDocuments.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace kiv::kit {

namespace {

constexpr RuleExample Short = {"<A><B/><B/></A>\n"};

TEST(ExampleDocuments, ChangesAreMadeOneAfterTheOther) {
    EXPECT_EQ(changed(Short, {}).text, Short.text);
    EXPECT_EQ(changed(Short, {{"<A>", "<A x=\"1\">"}}).text, "<A x=\"1\"><B/><B/></A>\n");
    // The first of several, and then what is there instead.
    EXPECT_EQ(changed(Short, {{"<B/>", "<C/>"}, {"<C/>", "<D/>"}, {"<B/>", ""}}).text, "<A><D/></A>\n");
    EXPECT_THROW(changed(Short, {{"<B/>", "<C/>"}, {"<E/>", "<F/>"}}), std::logic_error);
}

TEST(ExampleDocuments, FilesAreNamedBeforeTheirText) {
    EXPECT_EQ(inFiles({{"a.xml", Short}, {"b/c.xml", {}}}).text,
              "---- a.xml\n<A><B/><B/></A>\n---- b/c.xml\n");
}

TEST(ExampleDocuments, TextsLiveOn) {
    const auto first = changed(Short, {{"A", "First"}});
    for (int i = 0; i != 1000; ++i)
        changed(Short, {{"A", std::to_string(i)}});
    EXPECT_EQ(first.text, "<First><B/><B/></A>\n");
}

} // namespace

} // namespace kiv::kit
