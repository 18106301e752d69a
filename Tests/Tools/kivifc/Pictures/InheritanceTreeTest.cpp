#include "kivifc/Pictures/InheritanceTree.h"

#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

std::string sNames(const InheritanceTree::Entities& entities) {
    std::string names;
    for (const auto* entity : entities)
        names.append(entity->getName()).append(" ");
    return names;
}

TEST(InheritanceTree, AnEmptySchemaHasNone) {
    const auto schema = kiv::test::schemaFromText("TYPE A = REAL;\nEND_TYPE;\n");
    const InheritanceTree tree(*schema);
    EXPECT_EQ(sNames(tree.getRoots()), "");
    EXPECT_EQ(tree.getDepth(), 0U);
}

TEST(InheritanceTree, RootsAndChildrenAreOrderedByName) {
    const auto schema = kiv::test::schemaFromText("ENTITY Wall\n SUBTYPE OF (Part);\nEND_ENTITY;\n"
                                                  "ENTITY Site;\nEND_ENTITY;\n"
                                                  "ENTITY Part;\nEND_ENTITY;\n"
                                                  "ENTITY Door\n SUBTYPE OF (Part);\nEND_ENTITY;\n"
                                                  "ENTITY Thick\n SUBTYPE OF (Wall);\nEND_ENTITY;\n");
    const InheritanceTree tree(*schema);
    EXPECT_EQ(sNames(tree.getRoots()), "Part Site ");
    EXPECT_EQ(sNames(tree.getChildren(kiv::test::entityOf(*schema, "Part"))), "Door Wall ");
    EXPECT_EQ(sNames(tree.getChildren(kiv::test::entityOf(*schema, "Wall"))), "Thick ");
    EXPECT_EQ(sNames(tree.getChildren(kiv::test::entityOf(*schema, "Site"))), "");
    EXPECT_EQ(tree.getDepth(), 3U);
}

// The lists of subtypes that entities give of themselves are not needed.
TEST(InheritanceTree, AnEntityWithAMissingSupertypeIsARoot) {
    const kiv::test::AssertCollector reports;
    const auto schema = kiv::test::schemaFromText("ENTITY Wall\n SUBTYPE OF (Missing);\nEND_ENTITY;\n");
    const InheritanceTree tree(*schema);
    EXPECT_EQ(sNames(tree.getRoots()), "Wall ");
    EXPECT_EQ(tree.getDepth(), 1U);
}

} // namespace

} // namespace kiv::kivifc
