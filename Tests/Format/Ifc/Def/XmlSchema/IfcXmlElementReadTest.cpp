#include "Format/Ifc/Def/XmlSchema/IfcXmlElementRead.h"

#include "Support/AssertCollector.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kiv::ifc::def::xmlschema;
using kiv::ifc::def::Report;
using kiv::test::AssertCollector;
using kiv::test::XmlFromText;
using Texts = std::vector<std::string>;

constexpr ElementReports Reports{Report::ExpAttributeIllegal, Report::ConfigChildUnknown};
const std::string UnknownAttribute = "Illegal string";
const std::string UnknownChild = "Unknown nodename";

/// Reads the element and takes the attributes and children of these names.
Texts offeredBy(std::string_view text, const Texts& known) {
    Texts offered;
    const auto isKnown = [&](std::string_view name) {
        return std::find(known.begin(), known.end(), name) != known.end();
    };
    vElementRead(
        XmlFromText(text).root(), Reports,
        [&](std::string_view name, std::string_view value) {
            offered.push_back(std::string(name).append("=").append(value));
            return isKnown(name);
        },
        [&](const kiv::xml::const_Element& child) {
            offered.emplace_back(child.tagName());
            return isKnown(child.tagName());
        });
    return offered;
}

TEST(ElementReadTest, AttributesAreOfferedBeforeChildrenInOrder) {
    const AssertCollector reports;
    EXPECT_EQ(offeredBy("<e b='1' a=''><d/>text<c><deep/></c><!-- x --><d/></e>", {"a", "b", "c", "d"}),
              (Texts{"b=1", "a=", "d", "c", "d"}));
    EXPECT_EQ(reports.getMessages(), Texts());
}

TEST(ElementReadTest, WhatIsRefusedIsReportedOnceEach) {
    const AssertCollector reports;
    offeredBy("<e x='1' a='2' y='3'><c/><d/><c/></e>", {"a", "c"});
    EXPECT_EQ(reports.getMessages(), (Texts{UnknownAttribute, UnknownAttribute, UnknownChild}));
}

TEST(ElementReadTest, AnEmptyElementOffersNothing) {
    const AssertCollector reports;
    EXPECT_EQ(offeredBy("<e>only text</e>", {}), Texts());
    EXPECT_EQ(reports.getMessages(), Texts());
}

TEST(ElementReadTest, AnElementForAttributesAloneHasNoKnownChild) {
    const AssertCollector reports;
    int attributes = 0;
    vElementRead(XmlFromText("<e a='1'><c/><c/></e>").root(), Reports, [&](auto, auto) {
        ++attributes;
        return true;
    });
    EXPECT_EQ(attributes, 1);
    EXPECT_EQ(reports.getMessages(), (Texts{UnknownChild, UnknownChild}));
}

TEST(ElementReadTest, TruthValuesAreThoseOfXmlSchema) {
    for (const auto* text : {"true", "1", " true ", "\n1\t"})
        EXPECT_TRUE(boFromText(text)) << text;
    for (const auto* text : {"false", "0", "", "TRUE", "True", "yes", "2", "tru", "t rue"})
        EXPECT_FALSE(boFromText(text)) << text;
}

TEST(ElementReadTest, NamesAreComparedExactly) {
    EXPECT_TRUE(boIsOneOf("b", {"a", "b"}));
    EXPECT_FALSE(boIsOneOf("B", {"a", "b"}));
    EXPECT_FALSE(boIsOneOf("", {"a"}));
    EXPECT_FALSE(boIsOneOf("a", {}));
}

} // namespace
