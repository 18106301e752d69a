#include "Format/Ifc/Def/Schema/ResolutionOrder.h"

#include <gtest/gtest.h>

namespace kiv::ifc::def::schema {
namespace {

struct Row {
    const char* title;
    ResolutionKey earlier;
    ResolutionKey later;
};

const Row Rows[] = {
    {"the hash decides first", {1, "BBB"}, {2, "AA"}},
    {"hashes are unsigned", {0x7FFFFFFF, "A"}, {0x80000000, "A"}},
    {"then the length", {5, "ZZ"}, {5, "AAA"}},
    {"then the bytes", {5, "AB"}, {5, "AC"}},
    {"bytes are unsigned", {5, "A\x7F"}, {5, "A\x80"}},
    {"letters count in upper case", {5, "aB"}, {5, "Ac"}},
    {"an underscore comes after the upper-case letters that letters count as", {5, "z"}, {5, "_"}},
};

TEST(ResolutionOrderTest, OneOfTwoNamesComesFirst) {
    for (const auto& row : Rows) {
        EXPECT_TRUE(isResolvedBefore(row.earlier, row.later)) << row.title;
        EXPECT_FALSE(isResolvedBefore(row.later, row.earlier)) << row.title;
    }
}

TEST(ResolutionOrderTest, NeitherOfTwoKeysOfOneNameComesFirst) {
    EXPECT_FALSE(isResolvedBefore({5, "IfcWall"}, {5, "IFCWALL"}));
    EXPECT_FALSE(isResolvedBefore({5, "IFCWALL"}, {5, "IfcWall"}));
}

} // namespace
} // namespace kiv::ifc::def::schema
