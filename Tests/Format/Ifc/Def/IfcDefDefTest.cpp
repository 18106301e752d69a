#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include "Format/Ifc/Def/DefDoubles.h"
#include "Support/ErrorRecords.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace kiv::test {

namespace {

using ifc::def::xml::Def;
using ifc::def::xml::ExtraExportInfo;
using ifc::def::xml::XmlSetErrors;

PlainMember memberOf(std::string_view xml) {
    XmlSetErrors errors;
    return PlainMember(nullptr, XmlFromText(xml).root(), errors);
}

std::string sCommonExport(const PlainMember& member, const ExtraExportInfo* info) {
    XmlTarget target("m");
    member.vExportCommon(target.root(), info);
    return target.sText();
}

TEST(Def, MadeInCodeHasOwnerAndNameAndNothingElse) {
    const PlainSet set("Pset_WallCommon");
    const PlainMember member(&set, "IsExternal");
    EXPECT_EQ(member.pOwner(), &set);
    EXPECT_EQ(member.getName(), "IsExternal");
    EXPECT_EQ(member.getDefinition(), "");
    EXPECT_TRUE(member.getIfdGuid().isNull());
    EXPECT_TRUE(member.getNameAliases().getEntries().empty());
    EXPECT_TRUE(member.getDefinitionAliases().getEntries().empty());
    EXPECT_EQ(member.getLine(), 0U);
}

TEST(Def, ConceptJoinsTheNamesOfSetAndMember) {
    const PlainSet set("Pset_WallCommon");
    EXPECT_EQ(PlainMember(&set, "IsExternal").getConcept(), "Pset_WallCommon.IsExternal");
}

TEST(Def, ReadsNamesTextsAndAliases) {
    const auto member = memberOf("<m><Name>N</Name><Definition>D</Definition>"
                                 "<NameAliases><NameAlias lang='de'>n</NameAlias></NameAliases>"
                                 "<DefinitionAliases><DefinitionAlias lang='fr'>d</DefinitionAlias>"
                                 "</DefinitionAliases><Other/></m>");
    EXPECT_EQ(member.getName(), "N");
    EXPECT_EQ(member.getDefinition(), "D");
    ASSERT_EQ(member.getNameAliases().getEntries().size(), 1U);
    EXPECT_EQ(member.getNameAliases().getEntries()[0].text, "n");
    ASSERT_EQ(member.getDefinitionAliases().getEntries().size(), 1U);
    EXPECT_EQ(member.getDefinitionAliases().getEntries()[0].text, "d");
    EXPECT_EQ(member.refusedTags, std::vector<std::string>{"Other"});
}

TEST(Def, AliasTagsOfWrittenDefinitionsAreNotRead) {
    const auto member = memberOf("<m><nameAliases><nameAlias lang='de'>n</nameAlias></nameAliases></m>");
    EXPECT_TRUE(member.getNameAliases().getEntries().empty());
    EXPECT_EQ(member.refusedTags, std::vector<std::string>{"nameAliases"});
}

TEST(Def, IsWrittenWithEmptyTexts) {
    const PlainSet set("Set");
    EXPECT_EQ(sCommonExport(PlainMember(&set, ""), nullptr), "<m><Name/><Definition/></m>");
}

TEST(Def, IsWrittenInFixedOrderWithItsNameAliasesUnderSmallInitials) {
    const auto member =
        memberOf("<m ifdguid='e098e980d1bc11e1800000215ad4efdf'>"
                 "<DefinitionAliases><DefinitionAlias lang='fr'>d</DefinitionAlias>"
                 "</DefinitionAliases><Definition>D</Definition>"
                 "<NameAliases><NameAlias lang='de'>n</NameAlias></NameAliases><Name>N</Name></m>");
    EXPECT_EQ(sCommonExport(member, nullptr),
              "<m ifdguid=\"e098e980d1bc11e1800000215ad4efdf\"><Name>N</Name><Definition>D</Definition>"
              "<nameAliases><nameAlias lang=\"de\">n</nameAlias></nameAliases>"
              "<DefinitionAliases><DefinitionAlias lang=\"fr\">d</DefinitionAlias></DefinitionAliases></m>");
}

TEST(Def, NullGuidIsNotWrittenWithoutExportInfo) {
    EXPECT_EQ(sCommonExport(memberOf("<m/>"), nullptr), "<m><Name/><Definition/></m>");
}

TEST(Def, NullGuidIsNotWrittenWithoutTheGenerateFlag) {
    const ExtraExportInfo info;
    EXPECT_EQ(sCommonExport(memberOf("<m/>"), &info), "<m><Name/><Definition/></m>");
}

TEST(Def, GenerateFlagWritesAnotherGuidEachTimeAndKeepsNone) {
    ExtraExportInfo info;
    info.generateGuids = true;
    const auto member = memberOf("<m/>");
    kiv::Guid guids[2];
    for (auto& guid : guids) {
        XmlTarget target("m");
        member.vExportCommon(target.root(), &info);
        const auto attribute = kiv::xml::const_Element(target.root()).AttributeNodeGet("ifdguid");
        ASSERT_TRUE(attribute);
        ASSERT_TRUE(guid.boSet(attribute->getValue()));
        EXPECT_EQ(attribute->getValue(), guid.toString(false));
        EXPECT_FALSE(guid.isNull());
    }
    EXPECT_NE(guids[0], guids[1]);
    EXPECT_TRUE(member.getIfdGuid().isNull());
}

TEST(Def, GenerateFlagLeavesAGuidThatIsThere) {
    ExtraExportInfo info;
    info.generateGuids = true;
    EXPECT_EQ(sCommonExport(memberOf("<m ifdguid='e098e980d1bc11e1800000215ad4efdf'/>"), &info),
              "<m ifdguid=\"e098e980d1bc11e1800000215ad4efdf\"><Name/><Definition/></m>");
}

TEST(Def, HookSeesDefinitionAndEmptyElementBeforeAnythingIsWritten) {
    const auto member = memberOf("<m><Name>N</Name></m>");
    std::string seen;
    ExtraExportInfo info;
    info.hook = [&](const Def& def, kiv::xml::Element& element) {
        EXPECT_EQ(&def, &member);
        seen += sXmlText(element);
        element.vAttributeSet("mark", def.getName());
    };
    XmlTarget target("p");
    const auto element = member.exportBegin(target.root(), "m", &info);
    EXPECT_EQ(seen, "<m/>");
    EXPECT_EQ(target.sText(), "<p><m mark=\"N\"><Name>N</Name><Definition/></m></p>");
    EXPECT_EQ(sXmlText(element), "<m mark=\"N\"><Name>N</Name><Definition/></m>");
}

TEST(Def, IsWrittenWithoutHookOrInfo) {
    const ExtraExportInfo info;
    XmlTarget target("p");
    memberOf("<m/>").exportBegin(target.root(), "m", nullptr);
    memberOf("<m/>").exportBegin(target.root(), "n", &info);
    EXPECT_EQ(target.sText(), "<p><m><Name/><Definition/></m><n><Name/><Definition/></n></p>");
}

} // namespace

} // namespace kiv::test
