#include "kivifc/Pictures/ApplicableSets.h"

#include "Support/SchemaFromText.h"
#include "Support/SchemaPsetFromText.h"
#include "Support/SetFromText.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

namespace kiv::kivifc {

namespace {

class ApplicableSetsTest : public testing::Test {
protected:
    ApplicableSetsTest() { registry().clear(); }
    ~ApplicableSetsTest() override { registry().clear(); }

    static ifc::def::SchemaContextAndPropertySetDefinitions& registry() {
        return ifc::def::SchemaContextAndPropertySetDefinitions::instance();
    }

    /// Registers sets, each a name and the classes that it names.
    void vRegister(ifc::def::SchemaPset::Context context,
                   std::initializer_list<std::pair<std::string, std::string>> sets) const {
        ifc::def::SchemaPropertySetDefinitions definitions;
        for (const auto& [name, classes] : sets) {
            ifc::def::xml::XmlSetErrors errors;
            definitions.xmlSetAdd(*schema_,
                                  kiv::test::pSetFromText("<PropertySetDef><Name>" + name +
                                                          "</Name><ApplicableClasses>" + classes +
                                                          "</ApplicableClasses></PropertySetDef>"),
                                  errors);
        }
        registry().addPropertySets(std::move(context), std::move(definitions));
    }

    std::string sSets(const char* entity, const ApplicableOptions& options = {}) const {
        return sApplicableSets(
            *schema_, applicableSets(*schema_, kiv::test::entityOf(*schema_, entity), options), "> ");
    }

    std::unique_ptr<ifc::def::SchemaPset> schema_ = kiv::test::schemaPsetFromText(
        "ENTITY Root;\nEND_ENTITY;\nENTITY Wall\n SUBTYPE OF (Root);\nEND_ENTITY;\n", "TEST");
};

const std::string OfRoot = "<ClassName>Root</ClassName>";
const std::string OfWall = "<ClassName>Wall</ClassName>";

TEST_F(ApplicableSetsTest, WithoutSetsThereAreNone) {
    EXPECT_EQ(sSets("Wall"), "");
    vRegister({"TEST", true}, {{"Pset_A", OfWall}});
    EXPECT_EQ(sSets("Root"), "");
}

TEST_F(ApplicableSetsTest, ThoseOfSupertypesComeFirstAndEachOnce) {
    vRegister({"TEST", true}, {{"Pset_A", OfWall}, {"Pset_B", OfRoot}, {"Pset_C", OfWall + OfRoot}});
    EXPECT_EQ(sSets("Wall"), "> TEST (standard)\n"
                             ">   Pset_B  property set, members: 0, applies to Root\n"
                             ">   Pset_C  property set, members: 0, applies to Wall, Root\n"
                             ">   Pset_A  property set, members: 0, applies to Wall\n");
    EXPECT_EQ(sSets("Wall", {true, false}), "> TEST (standard)\n"
                                            ">   Pset_A  property set, members: 0, applies to Wall\n"
                                            ">   Pset_C  property set, members: 0, applies to Wall, Root\n");
}

TEST_F(ApplicableSetsTest, SetsForEveryClassAreLeftOutUnlessTheyAreAskedFor) {
    vRegister({"TEST", true}, {{"Pset_A", ""}});
    EXPECT_EQ(sSets("Wall"), "");
    EXPECT_EQ(sSets("Wall", {false, true}),
              "> TEST (standard)\n>   Pset_A  property set, members: 0, applies to every class\n");
}

// A search by name finds the set of the host, as its context comes first.
TEST_F(ApplicableSetsTest, ASetOfAnEarlierContextHidesOneOfItsName) {
    vRegister({"TEST", true}, {{"Pset_A", OfWall}});
    vRegister({"office", false}, {{"PSET_A", OfWall}});
    EXPECT_EQ(sSets("Wall"), "> office (host)\n"
                             ">   PSET_A  property set, members: 0, applies to Wall\n"
                             "> TEST (standard)\n"
                             ">   Pset_A  property set, members: 0, applies to Wall; hidden by a set of an "
                             "earlier context\n");
}

} // namespace

} // namespace kiv::kivifc
