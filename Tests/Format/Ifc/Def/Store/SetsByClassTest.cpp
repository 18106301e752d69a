#include "Format/Ifc/Def/Store/SetsByClass.h"

#include "Base/NameHash.h"
#include "Format/Ifc/Def/DefDoubles.h"
#include "Support/Allocations.h"
#include "Support/SetFromText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::ifc::def {
namespace {

using kiv::test::PlainSet;
using Classes = std::vector<SetsByClass::ClassName>;
using Sets = std::vector<const xml::SetDef*>;

Classes classesNamed(std::initializer_list<std::string_view> names) {
    Classes classes;
    for (const auto name : names)
        classes.push_back({nameHash(name), name});
    return classes;
}

void vAdd(SetsByClass& index, std::string_view upperName, const xml::SetDef& set, const Classes& classes) {
    index.vReserve(upperName, classes);
    index.vAdd(upperName, set, classes);
}

Sets setsOf(const SetsByClass& index, std::string_view name) {
    Sets sets;
    if (const auto* const found = index.pFind(nameHash(name), name))
        found->vAppend(sets);
    return sets;
}

class SetsByClassTest : public testing::Test {
protected:
    PlainSet a{"A"};
    PlainSet b{"B"};
    SetsByClass index;
};

TEST_F(SetsByClassTest, WithoutClassesNothingIsFound) {
    EXPECT_EQ(index.pFind(nameHash("IfcWall"), "IfcWall"), nullptr);
    EXPECT_EQ(index.pFind(0, ""), nullptr);
}

TEST_F(SetsByClassTest, EachClassOfASetFindsIt) {
    vAdd(index, "B", b, classesNamed({"IfcWall", "IfcDoor"}));
    vAdd(index, "A", a, classesNamed({"IfcDoor", "IfcSlab"}));
    EXPECT_EQ(setsOf(index, "IfcWall"), Sets{&b});
    EXPECT_EQ(setsOf(index, "IfcDoor"), (Sets{&a, &b})) << "by the names of the sets";
    EXPECT_EQ(setsOf(index, "IfcSlab"), Sets{&a});
    EXPECT_EQ(index.pFind(nameHash("IfcRoof"), "IfcRoof"), nullptr);
    EXPECT_EQ(index.pFind(nameHash("IFCWALL"), "IFCWALL"), nullptr) << "the letter case counts";
}

TEST_F(SetsByClassTest, ASetWithoutClassesIsFoundNowhere) {
    vAdd(index, "A", a, {});
    EXPECT_EQ(index.pFind(nameHash(""), ""), nullptr);
}

TEST_F(SetsByClassTest, ClassesOfOneHashAreDistinguishedByTheirNames) {
    const Classes first{{7, "IfcWall"}};
    const Classes second{{7, "IfcDoor"}};
    vAdd(index, "A", a, first);
    vAdd(index, "B", b, second);
    Sets sets;
    index.pFind(7, "IfcWall")->vAppend(sets);
    index.pFind(7, "IfcDoor")->vAppend(sets);
    EXPECT_EQ(sets, (Sets{&a, &b}));
    EXPECT_EQ(index.pFind(7, "IfcSlab"), nullptr);
}

/// Enough for the filter and the table to grow several times.
TEST_F(SetsByClassTest, ManyClassesAreFoundEach) {
    std::deque<std::string> names;
    for (int number = 0; number < 1000; ++number) {
        names.push_back("IfcThing" + std::to_string(number));
        vAdd(index, "A", a, classesNamed({names.back()}));
    }
    for (const auto& name : names)
        EXPECT_EQ(setsOf(index, name), Sets{&a}) << name;
    EXPECT_EQ(index.pFind(nameHash("IfcThing1000"), "IfcThing1000"), nullptr);
}

TEST_F(SetsByClassTest, MovedIndexTakesItsClassesAlongAndLeavesAnEmptyOne) {
    vAdd(index, "A", a, classesNamed({"IfcWall"}));
    SetsByClass moved(std::move(index));
    EXPECT_EQ(setsOf(moved, "IfcWall"), Sets{&a});
    EXPECT_EQ(setsOf(index, "IfcWall"), Sets()); // NOLINT(bugprone-use-after-move): that is what is tested
    vAdd(index, "B", b, classesNamed({"IfcDoor"}));
    moved = std::move(index);
    EXPECT_EQ(setsOf(moved, "IfcWall"), Sets());
    EXPECT_EQ(setsOf(moved, "IfcDoor"), Sets{&b});
}

TEST_F(SetsByClassTest, ClassesOfASetAreThereOnceEachAndNoneIsEmpty) {
    const auto set = kiv::test::pSetFromText(
        "<PropertySetDef><ApplicableClasses><ClassName>IfcWall/SOLIDWALL</ClassName><ClassName>IfcDoor</"
        "ClassName>"
        "<ClassName></ClassName><ClassName>IfcWall/PARTITIONING</ClassName><ClassName>/SOLIDWALL</ClassName>"
        "</ApplicableClasses></PropertySetDef>");
    const auto classes = SetsByClass::classesOf(*set);
    ASSERT_EQ(classes.size(), 2U);
    EXPECT_EQ(classes[0].name, "IfcDoor");
    EXPECT_EQ(classes[0].hash, nameHash("IfcDoor"));
    EXPECT_EQ(classes[1].name, "IfcWall");
    EXPECT_EQ(classes[1].hash, nameHash("IfcWall"));
}

/// Places prepared for classes are left over when memory runs out between them. The next set takes places
/// that were prepared for its own name: adding it takes no memory, however many are left and however full the
/// arena is.
TEST_F(SetsByClassTest, LeftOverPlacesAreNotTakenUnprepared) {
    std::deque<std::string> names;
    for (int number = 0; number < 200; ++number)
        names.push_back("IfcThing" + std::to_string(number));
    const auto many = classesNamed({"IfcA", "IfcB", "IfcC", "IfcD", "IfcE", "IfcF", "IfcG"});
    const auto one = classesNamed({"IfcWall"});
    std::size_t failures = 0;
    for (std::size_t there = 0; there < names.size(); ++there) {
        for (std::size_t limit = 0;; ++limit) {
            SetsByClass filled;
            for (std::size_t number = 0; number < there; ++number)
                vAdd(filled, "A", a, classesNamed({names[number]}));
            if (kiv::test::boRunWith(limit, [&] { filled.vReserve("B", many); }))
                break;
            ++failures;
            filled.vReserve("C", one);
            const auto before = kiv::test::allocatedSize();
            filled.vAdd("C", b, one);
            EXPECT_EQ(kiv::test::allocatedSize(), before) << there << ' ' << limit;
            EXPECT_EQ(setsOf(filled, "IfcWall"), Sets{&b}) << there << ' ' << limit;
            EXPECT_EQ(setsOf(filled, "IfcA"), Sets()) << there << ' ' << limit;
        }
    }
    EXPECT_GT(failures, names.size());
}

} // namespace
} // namespace kiv::ifc::def
