#include "RealData/RealData.h"
#include "Support/SchemaFromText.h"
#include "kiv/Kit/Names/SchemaRelease.h"

#include <gtest/gtest.h>
#include <memory>
#include <string_view>

namespace kiv::test {

namespace {

class SchemaReleaseRealData : public RealDataTest {
protected:
    static std::unique_ptr<ifc::def::schema::Schema> schemaRead(std::string_view name) {
        return schemaFromWholeText(sText(path(name)));
    }
};

// The corrigendum is not among the schemas that tests have; nothing in the text distinguishes the two.
TEST_F(SchemaReleaseRealData, TheAddendumIsKnownByItsEntities) {
    const auto schema = schemaRead("schema/IFC4_ADD2.exp");
    EXPECT_EQ(kit::sReleaseOf(*schema), "IFC4_ADD2 or IFC4_ADD2_TC1");
    EXPECT_EQ(kit::compareWithSchema("2x4", *schema), kit::ReleaseMatch::Same);
    EXPECT_EQ(kit::compareWithSchema("2x3 TC1", *schema), kit::ReleaseMatch::Different);
}

TEST_F(SchemaReleaseRealData, TheCorrigendumOf2x3IsOneOfTwo) {
    const auto schema = schemaRead("schema/IFC2X3_TC1.exp");
    EXPECT_EQ(kit::sReleaseOf(*schema), "IFC2X3 or IFC2X3_TC1");
    EXPECT_EQ(kit::compareWithSchema("2x3 TC1", *schema), kit::ReleaseMatch::Same);
    EXPECT_EQ(kit::compareWithSchema("2x3", *schema), kit::ReleaseMatch::Same);
}

} // namespace

} // namespace kiv::test
