#include "kiv/Format/Ifc/Def/IfcDefApplicableClasses.h"

#include "Base/NameHash.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace kiv::test {

namespace {

using ifc::def::xml::ApplicableClasses;

struct SplitRow {
    const char* text;
    const char* className;
    const char* predefinedType;
    /// As the class is written again.
    const char* written;
};

TEST(ApplicableClasses, AreSplitAtTheFirstSlash) {
    const SplitRow rows[] = {
        {"IfcWall", "IfcWall", "", "IfcWall"},
        {"IfcWall/SOLIDWALL", "IfcWall", "SOLIDWALL", "IfcWall/SOLIDWALL"},
        {"IfcWall//X", "IfcWall", "/X", "IfcWall//X"},
        {"IfcWall/A/B", "IfcWall", "A/B", "IfcWall/A/B"},
        {"IfcWall/", "IfcWall", "", "IfcWall"},
        {"/X", "", "X", "/X"},
        {"", "", "", ""},
        {" IfcWall / X ", " IfcWall ", " X ", " IfcWall / X "},
    };
    for (const SplitRow& row : rows) {
        SCOPED_TRACE(row.text);
        const ApplicableClasses applicable{std::string(row.text)};
        EXPECT_EQ(applicable.getClassName(), row.className);
        EXPECT_EQ(applicable.getPredefinedType(), row.predefinedType);
        EXPECT_EQ(applicable.sCombined(), row.written);
        XmlTarget target("r");
        applicable.vExport(target.root());
        const std::string text(row.written);
        EXPECT_EQ(target.sText(),
                  text.empty() ? "<r><ClassName/></r>" : "<r><ClassName>" + text + "</ClassName></r>");
    }
}

struct HashRow {
    const char* text;
    std::uint32_t hash;
};

TEST(ApplicableClasses, HashIsThatOfTheClassNameAlone) {
    const HashRow rows[] = {
        {"a", 0xE40C292CU},
        {"IfcWall", 0x99ECC1DBU},
        {"IfcWall/SOLIDWALL", 0x99ECC1DBU},
    };
    for (const HashRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ApplicableClasses(row.text).getClassNameHash(), row.hash);
    }
}

TEST(ApplicableClasses, HashOfAnEmptyClassNameIsZero) {
    EXPECT_EQ(ApplicableClasses("").getClassNameHash(), 0U);
    EXPECT_EQ(ApplicableClasses("/X").getClassNameHash(), 0U);
}

TEST(ApplicableClasses, HashWidensBytesAsSignedChars) {
    // (0x811C9DC5 ^ 0xFFFFFFE9) * 0x01000193
    EXPECT_EQ(ApplicableClasses("\xE9").getClassNameHash(), 0xEBF38B44U);
}

TEST(ApplicableClasses, HashIsTheOneThatEntitiesKeep) {
    EXPECT_EQ(ApplicableClasses("IfcBeam/JOIST").getClassNameHash(), kiv::nameHash("IfcBeam"));
}

TEST(ApplicableClasses, KeepTheirLine) {
    EXPECT_EQ(ApplicableClasses("IfcWall", 12).getLine(), 12U);
    EXPECT_EQ(ApplicableClasses("IfcWall").getLine(), 0U);
}

} // namespace

} // namespace kiv::test
