#include "Kit/Findings/Rules/ClassText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::kit {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

TEST(ClassText, ReadsAllSpellings) {
    EXPECT_EQ(classTextOf(" IfcWall ")->name, "IfcWall");
    EXPECT_EQ(classTextOf("IfcWall / SOLIDWALL")->predefinedType, "SOLIDWALL");
    EXPECT_EQ(classTextOf("IfcWall.predefinedtype = \"X\"")->predefinedType, "X");
    EXPECT_EQ(classTextOf("IfcWall.PredefinedType=\"X\"")->spelling, ClassSpelling::WithAttribute);
    for (const auto* text :
         {"", "/X", "IfcWall/", "IfcWall//X", "IfcWall.Name=\"X\"",
          "IfcWall.PredefinedType=", "IfcWall.PredefinedType=\"X", "Related:IfcWall", "two words"})
        EXPECT_FALSE(classTextOf(text)) << text;
}

TEST(ClassText, SeparatesClasses) {
    EXPECT_THAT(typeValueOf("IfcWall | IfcSlab/FLOOR,IfcDoor"), SizeIs(3));
    EXPECT_THAT(typeValueOf("IfcWall |"), IsEmpty());
    EXPECT_THAT(typeValueOf("IfcWall, of any kind"), IsEmpty());
}

} // namespace

} // namespace kiv::kit
