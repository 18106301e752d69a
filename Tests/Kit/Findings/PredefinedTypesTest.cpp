#include "Kit/Findings/PredefinedTypes.h"

#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using ifc::def::schema::Entity;

constexpr std::string_view Statements = "TYPE Kind = ENUMERATION OF\n (SOLID, HOLLOW);\nEND_TYPE;\n"
                                        "TYPE Label = STRING;\nEND_TYPE;\n"
                                        "ENTITY Root;\nEND_ENTITY;\n"
                                        "ENTITY Wall\n SUBTYPE OF (Root);\n PredefinedType : OPTIONAL Kind;\n"
                                        "END_ENTITY;\n"
                                        "ENTITY Panel\n SUBTYPE OF (Wall);\nEND_ENTITY;\n"
                                        "ENTITY Door\n SUBTYPE OF (Wall);\n PredefinedType : Label;\n"
                                        "END_ENTITY;\n"
                                        "ENTITY Ring\n SUBTYPE OF (Loop);\nEND_ENTITY;\n"
                                        "ENTITY Loop\n SUBTYPE OF (Ring);\nEND_ENTITY;\n";

class PredefinedTypesTest : public testing::Test {
protected:
    const Entity& entity(std::string_view name) const {
        return *Entity::pFrom(schema_->pObjectFromName(name));
    }

    std::string sFirstItem(std::string_view name) {
        const auto* items = types_.pItems(entity(name));
        return items ? std::string(*items->getItems().begin()) : std::string();
    }

    test::AssertCollector reports_;
    std::unique_ptr<ifc::def::schema::Schema> schema_ = test::schemaFromText(Statements);
    PredefinedTypes types_;
};

TEST_F(PredefinedTypesTest, AnEntityHasItsOwn) {
    ASSERT_NE(types_.pAttribute(entity("Wall")), nullptr);
    EXPECT_EQ(types_.pAttribute(entity("Wall"))->getName(), "PredefinedType");
    EXPECT_EQ(sFirstItem("Wall"), "SOLID");
}

TEST_F(PredefinedTypesTest, AnEntityInheritsThatAbove) {
    EXPECT_EQ(types_.pAttribute(entity("Panel")), types_.pAttribute(entity("Wall")));
    EXPECT_EQ(sFirstItem("Panel"), "SOLID");
    EXPECT_EQ(types_.pAttribute(entity("Root")), nullptr);
    EXPECT_EQ(types_.pItems(entity("Root")), nullptr);
}

TEST_F(PredefinedTypesTest, TheNearestOneCountsWhateverWasAskedBefore) {
    EXPECT_EQ(sFirstItem("Panel"), "SOLID");
    EXPECT_EQ(types_.pAttribute(entity("Door"))->getName(), "PredefinedType");
    EXPECT_NE(types_.pAttribute(entity("Door")), types_.pAttribute(entity("Wall")));
    EXPECT_EQ(types_.pItems(entity("Door")), nullptr);
    EXPECT_EQ(sFirstItem("Wall"), "SOLID");
}

TEST_F(PredefinedTypesTest, SupertypesInACircleHaveAnEnd) {
    EXPECT_EQ(types_.pAttribute(entity("Ring")), nullptr);
    EXPECT_EQ(types_.pAttribute(entity("Loop")), nullptr);
}

} // namespace

} // namespace kiv::kit
