#include "kivifc/Site/MemberList.h"

#include "kiv/Kit/Documents/SetDocument.h"
#include "kivifc/Site/Address.h"

#include "Tools/kivifc/Site/SetTexts.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace kiv::kivifc::site::test {

namespace {

std::string sComplex(const std::string& properties) {
    return "<TypeComplexProperty name=\"CP\">" + properties + "</TypeComplexProperty>";
}

/// "name" of a member of the set, "whole/name" of a part.
std::vector<std::string> namesOf(const std::vector<ListedMember>& members) {
    std::vector<std::string> names;
    for (const auto& member : members)
        names.push_back((member.whole ? member.whole->getName() + "/" : "") + member.def->getName());
    return names;
}

TEST(MemberList, PartsComeAfterTheirWhole) {
    const auto document =
        kit::setTextRead(sSet("S", {},
                              sProperty("A", sComplex(sProperty("B", sComplex(sProperty("C", sSingle("X")))) +
                                                      sProperty("D", sSingle("X")))) +
                                  sProperty("E", sSingle("X"))),
                         "S.xml");
    const auto members = memberList(*document.pSet());
    EXPECT_EQ(namesOf(members), (std::vector<std::string>{"A", "A/B", "B/C", "A/D", "E"}));
    for (const auto& member : members)
        EXPECT_EQ(member.row, member.def->getName());
}

/// The third one has the name that the second one's row would have.
TEST(MemberList, EachHasARowOfItsOwn) {
    const auto document = kit::setTextRead(
        sSet("S", {},
             sProperty("A", sSingle("X")) + sProperty("A&#10;2", sSingle("X")) +
                 sProperty("A", sSingle("X")) + sProperty("A", sComplex(sProperty("A", sSingle("X"))))),
        "S.xml");
    const auto members = memberList(*document.pSet());
    ASSERT_EQ(members.size(), 5U);
    EXPECT_EQ(members[0].row, "A");
    std::set<std::string> anchors;
    for (const auto& member : members)
        EXPECT_TRUE(anchors.insert(sAnchor(member.row)).second) << member.row;
}

TEST(MemberList, SetWithoutMembersHasNone) {
    const auto document = kit::setTextRead(sSet("S", {}, ""), "S.xml");
    EXPECT_TRUE(memberList(*document.pSet()).empty());
}

} // namespace

} // namespace kiv::kivifc::site::test
