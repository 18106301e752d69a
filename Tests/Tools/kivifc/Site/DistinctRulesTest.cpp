#include "kivifc/Site/DistinctRules.h"

#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site {

namespace {

std::string sLabels(const ifc::def::schema::Where* where) {
    std::string labels;
    for (const auto* rule : distinctRules(where))
        labels.append(rule->label.getView()).append(" ");
    return labels;
}

TEST(DistinctRules, OfNoClauseAreNone) {
    EXPECT_TRUE(distinctRules(nullptr).empty());
}

TEST(DistinctRules, AreThoseOfTheTextInOrder) {
    const auto schema =
        kiv::test::schemaFromText("ENTITY A;\n WHERE\n  WR2 : TRUE;\n  WR1 : FALSE;\nEND_ENTITY;\n"
                                  "TYPE B = REAL;\n WHERE\n  WR1 : SELF > 0.;\nEND_TYPE;\n");
    EXPECT_EQ(sLabels(kiv::test::entityOf(*schema, "A").pWhere()), "WR2 WR1 ");
    EXPECT_EQ(sLabels(kiv::test::typeOf(*schema, "B").pWhere()), "WR1 ");
}

TEST(DistinctRules, ARuleOfTheSameLabelIsAnother) {
    const auto schema =
        kiv::test::schemaFromText("ENTITY A;\n WHERE\n  WR1 : TRUE;\n  WR1 : TRUE;\nEND_ENTITY;\n");
    EXPECT_EQ(sLabels(kiv::test::entityOf(*schema, "A").pWhere()), "WR1 WR1 ");
}

} // namespace

} // namespace kiv::kivifc::site
