// Set documents of every hostile shape that comes to mind, each at two sizes, of which the kit finds the
// places and what is wrong.

#include "Robustness/Growth/GrowthRow.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Findings/Findings.h"
#include "kiv/Kit/Findings/Rule.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::test {

namespace {

/// Finds all there is to find, also what is found on request only.
void vFindingsFind(const std::string& text) {
    static const auto schema = schemaFromWholeText(kit::getExampleSchema());
    const auto document = kit::setTextCheck(text, "Example.xml", *schema);
    kit::findingsOf(document, {*schema, {}, {}, true});
}

void vPositionsFind(const std::string& text) {
    const kit::XmlPositions xml(text);
    EXPECT_NE(xml.pRoot(), nullptr);
}

std::string sSet(const std::string& children) {
    return "<PropertySetDef><Name>P</Name>" + children + "</PropertySetDef>";
}

std::string sProperties(const std::string& properties) {
    return sSet("<PropertyDefs>" + properties + "</PropertyDefs>");
}

std::string sProperty(const std::string& children) {
    return sProperties("<PropertyDef><Name>A</Name>" + children + "</PropertyDef>");
}

std::string sType(const std::string& kind) {
    return sProperty("<PropertyType>" + kind + "</PropertyType>");
}

std::string sQuantities(const std::string& quantities) {
    return "<QtoSetDef><Name>P</Name><QtoDefs>" + quantities + "</QtoDefs></QtoSetDef>";
}

GrowthRow row(std::string_view name, std::size_t size, std::string_view piece,
              std::string (*sDocument)(const std::string&)) {
    return {std::string(name), size, [=](std::size_t count) { return sDocument(sTimes(piece, count)); }};
}

} // namespace

TEST(FindingsGrowthTest, Positions) {
    constexpr std::size_t Many = 50'000;
    const auto piece = [](std::string_view name, std::string_view text) {
        return row(name, Many, text, sSet);
    };
    vGrowthExpect(
        {piece("elements", "<a/>"),
         piece("lines", "<a>\n</a>\n"),
         piece("texts", "<a>x</a>y"),
         piece("comments", "<!-- kivifc: ignore A001 -->"),
         piece("references", "&lt;x"),
         piece("pieces of text", "<![CDATA[x]]>"),
         {"attributes", Many,
          [](std::size_t count) {
              return "<a " + sJoined(count, [](std::size_t i) { return "b" + std::to_string(i) + "='c' "; }) +
                     "/>";
          }},
         {"blanks", Many, [](std::size_t count) { return "<a>" + std::string(count, ' ') + "<b/></a>"; }},
         {"elements of an entity", Many,
          [](std::size_t count) {
              return "<!DOCTYPE a [<!ENTITY e '<b c=\"d\">t</b>'>]><a>" + sTimes("&e;", count) + "</a>";
          }}},
        vPositionsFind);
}

TEST(FindingsGrowthTest, Structure) {
    constexpr std::size_t Many = 30'000;
    const auto set = [](std::string_view name, std::string_view text) { return row(name, Many, text, sSet); };
    const auto type = [](std::string_view name, std::string_view text) {
        return row(name, Many, text, sType);
    };
    vGrowthExpect({set("unknown elements", "<Nam/>"),
                   set("names", "<Name>A</Name>"),
                   set("lists of properties", "<propertyDefs/>"),
                   set("prefixed elements", "<p:Name/>"),
                   set("texts", "<IfcVersion version='IFC4'/>x"),
                   set("quantities", "<QtoDef/>"),
                   type("kinds", "<TypePropertyList/>"),
                   row("units", Many, "<DataType type='IfcReal'/><UnitType type='LENGTHUNI'/>",
                       [](const std::string& values) {
                           return sType("<TypePropertySingleValue>" + values + "</TypePropertySingleValue>");
                       }),
                   row("columns", Many, "<DefinedValue><DataType type='A'/><UnitType/></DefinedValue>",
                       [](const std::string& values) {
                           return sType("<TypePropertyTableValue>" + values + "</TypePropertyTableValue>");
                       }),
                   row("bounds", Many, "<LowerBoundValue value='1'/><UpperBoundValue/><Foo/>",
                       [](const std::string& values) {
                           return sType("<TypePropertyBoundedValue><ValueRangeDef>" + values +
                                        "</ValueRangeDef></TypePropertyBoundedValue>");
                       }),
                   row("types of one property", Many, "<PropertyType><TypePropertyListValue/></PropertyType>",
                       sProperty),
                   row("quantity types", Many, "<QtoDef><QtoType>Q_LENGHT</QtoType></QtoDef>", sQuantities),
                   {"an unknown name", Many,
                    [](std::size_t count) { return sSet("<" + std::string(count, 'a') + "/>"); }},
                   {"findings below a long name", Many,
                    [](std::size_t count) {
                        return sProperties("<PropertyDef><Name>" + std::string(count, ' ') +
                                           std::string(count, 'x') + "</Name>" + sTimes("<a/>", count / 4) +
                                           "</PropertyDef>");
                    }}},
                  vFindingsFind);
}

TEST(FindingsGrowthTest, NamesGuidsAndLanguages) {
    constexpr std::size_t Many = 30'000;
    const auto numbered = [](std::string_view before, std::string_view after) {
        return [=](std::size_t i) { return std::string(before) + std::to_string(i) + std::string(after); };
    };
    vGrowthExpect(
        {row("properties of one name", Many, "<PropertyDef><Name>A </Name></PropertyDef>", sProperties),
         row("properties of one GUID", Many, "<PropertyDef ifdguid='00000000000000000000000000000001'/>",
             sProperties),
         {"properties of the GUID of a long one", Many,
          [](std::size_t count) {
              return sProperties("<PropertyDef ifdguid='00000000000000000000000000000001'>" +
                                 sTimes("<a/>", count) + "</PropertyDef>" +
                                 sTimes("<PropertyDef ifdguid='00000000000000000000000000000001'/>", count));
          }},
         {"items and constants", Many,
          [=](std::size_t count) {
              return sType("<TypePropertyEnumeratedValue><EnumList><EnumItem a='b'/>" +
                           sJoined(count, numbered("<EnumItem> A", "</EnumItem><EnumItem/>")) +
                           "</EnumList><ConstantList>" +
                           sTimes("<ConstantDef><Name>A</Name></ConstantDef>", count) +
                           "</ConstantList></TypePropertyEnumeratedValue>");
          }},
         row("properties without a GUID", Many, "<PropertyDef ifdguid='0'/>", sProperties),
         row("translations", Many, "<NameAliases><NameAlias lang='d_'>A</NameAlias></NameAliases>",
             sProperty),
         row("classes", Many, "<ApplicableClasses><ClassName>IfcWall/A</ClassName></ApplicableClasses>",
             sSet),
         row("hidden classes", Many, "<ApplicableClasses><ClassName><!--A--></ClassName></ApplicableClasses>",
             sSet),
         {"properties", Many,
          [=](std::size_t count) {
              return sProperties(sJoined(count, numbered("<PropertyDef><Name>A", "</Name></PropertyDef>")));
          }},
         {"languages", Many,
          [=](std::size_t count) {
              return sSet(
                  "<PsetDefinitionAliases>" +
                  sJoined(count, numbered("<PsetDefinitionAlias lang='de-x-", "'>A</PsetDefinitionAlias>")) +
                  "</PsetDefinitionAliases>");
          }},
         {"complex properties", Many,
          [](std::size_t count) {
              return sProperties(sTimes("<PropertyDef><PropertyType><TypeComplexProperty><PropertyDef/>"
                                        "</TypeComplexProperty></PropertyType></PropertyDef>",
                                        count));
          }}},
        vFindingsFind);
}

} // namespace kiv::test
