#include "kiv/Kit/Names/KnownNames.h"

#include "Support/SchemaFromText.h"
#include "Support/SchemaPsetFromText.h"
#include "Support/SetFromText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>

namespace kiv::kit {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

ifc::def::SchemaContextAndPropertySetDefinitions& registry() {
    return ifc::def::SchemaContextAndPropertySetDefinitions::instance();
}

void vRegister(const ifc::def::SchemaPset& schema, ifc::def::SchemaPset::Context context,
               std::initializer_list<std::string> names) {
    ifc::def::SchemaPropertySetDefinitions sets;
    ifc::def::xml::XmlSetErrors errors;
    for (const auto& name : names)
        sets.xmlSetAdd(
            schema, test::pSetFromText("<PropertySetDef><Name>" + name + "</Name></PropertySetDef>"), errors);
    registry().addPropertySets(std::move(context), std::move(sets));
}

TEST(KnownNames, EntitiesAreInAlphabeticalOrder) {
    const auto schema = test::schemaFromText("ENTITY Wall;\nEND_ENTITY;\n"
                                             "TYPE Label = STRING;\nEND_TYPE;\n"
                                             "ENTITY Door;\nEND_ENTITY;\n"
                                             "FUNCTION Area\nEND_FUNCTION;\n"
                                             "RULE One FOR (Wall);\nEND_RULE;\n"
                                             "ENTITY Slab;\nEND_ENTITY;\n");
    EXPECT_THAT(entityNames(*schema), ElementsAre("Door", "Slab", "Wall"));
}

TEST(KnownNames, AnEmptySchemaHasNone) {
    EXPECT_THAT(entityNames(*test::schemaFromText("TYPE A = REAL;\nEND_TYPE;")), IsEmpty());
    registry().clear();
    EXPECT_THAT(setNames(*test::schemaPsetFromText("")), IsEmpty());
}

TEST(KnownNames, SetsAreThoseOfAllContextsThatASearchLooksAt) {
    registry().clear();
    const auto schema = test::schemaPsetFromText("", "IFC4");
    vRegister(*schema, {"IFC4", true}, {"Pset_A", "Pset_B"});
    vRegister(*schema, {"host", false}, {"Pset_C", "Pset_A"});
    vRegister(*schema, {"IFC2X3", true}, {"Pset_Other"}); // the standard sets of another schema
    EXPECT_THAT(setNames(*schema), UnorderedElementsAre("Pset_A", "Pset_A", "Pset_B", "Pset_C"));
    registry().clear();
}

} // namespace

} // namespace kiv::kit
