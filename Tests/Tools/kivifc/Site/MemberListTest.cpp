#include "kivifc/Site/MemberList.h"

#include "kiv/Kit/Documents/SetDocument.h"

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
        EXPECT_EQ(member.row.getText(), member.def->getName());
}

/// The second one has the name that the row of the third one has.
TEST(MemberList, EachHasARowOfItsOwn) {
    const auto document = kit::setTextRead(
        sSet("S", {},
             sProperty("A", sSingle("X")) + sProperty("A~~2", sSingle("X")) + sProperty("A", sSingle("X")) +
                 sProperty("A", sComplex(sProperty("A", sSingle("X"))))),
        "S.xml");
    const auto members = memberList(*document.pSet());
    ASSERT_EQ(members.size(), 5U);
    EXPECT_EQ(members[0].row.getText(), "A");
    EXPECT_EQ(members[2].row.getText(), "A~~2");
    EXPECT_EQ(members[3].row.getText(), "A~~3");
    EXPECT_EQ(members[4].row.getText(), "A~~4");
    std::set<std::string> ids;
    for (const auto& member : members)
        EXPECT_TRUE(ids.insert(member.row.getText()).second) << member.row.getText();
}

TEST(MemberList, SetWithoutMembersHasNone) {
    const auto document = kit::setTextRead(sSet("S", {}, ""), "S.xml");
    EXPECT_TRUE(memberList(*document.pSet()).empty());
}

} // namespace

} // namespace kiv::kivifc::site::test
