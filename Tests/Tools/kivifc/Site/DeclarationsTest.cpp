#include "kivifc/Site/Declarations.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using testing::EndsWith;
using testing::StartsWith;

std::string sFunction(const std::string& name) {
    return "FUNCTION " + name + "\n    (x : REAL) : REAL;\n    RETURN(x);\nEND_FUNCTION;\n";
}

/// Nothing is known of procedures but their names, so that the schema has no objects for them.
TEST(Declarations, ManyThatAreNoObjectsDoNotHideWhatComesAfterThem) {
    std::string text = sFunction("First");
    for (int number = 0; number < 100; ++number)
        text += "PROCEDURE P" + std::to_string(number) + ";\nEND_PROCEDURE;\n";
    const SiteSample sample(text + sFunction("Last"));
    const auto& model = sample.getModel();
    const auto* last = model.getSchema().pObjectFromName("Last");
    ASSERT_NE(last, nullptr);
    EXPECT_THAT(std::string(model.getDeclarations().textOf(*last)), StartsWith("FUNCTION Last\n"));
    EXPECT_THAT(std::string(model.getDeclarations().textOf(*last)), EndsWith("END_FUNCTION;"));
    // The SCHEMA statement, four lines of the first function, two of each procedure.
    EXPECT_EQ(model.getDeclarations().lineOf(*last), 1U + 4U + 2U * 100U + 1U);
}

TEST(Declarations, NameThatIsTheBeginningOfAnotherIsNotTakenForIt) {
    const SiteSample sample("ENTITY Wall;\nEND_ENTITY;\n" + sFunction("Walls") +
                            "ENTITY WallCase;\nEND_ENTITY;\nENTITY Wal;\nEND_ENTITY;\n");
    const auto& model = sample.getModel();
    for (const auto& [name, line] :
         {std::pair("Wall", 2U), std::pair("Walls", 4U), std::pair("WallCase", 8U), std::pair("Wal", 10U)})
        EXPECT_EQ(model.getDeclarations().lineOf(*model.getSchema().pObjectFromName(name)), line) << name;
}

} // namespace

} // namespace kiv::kivifc::site::test
