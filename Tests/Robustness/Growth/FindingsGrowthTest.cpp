// Set documents of every hostile shape that comes to mind, each at two sizes, of which the kit finds the
// places and what is wrong.

#include "Robustness/Growth/GrowthRow.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Findings/AcrossDocuments.h"
#include "kiv/Kit/Findings/Findings.h"
#include "kiv/Kit/Findings/IgnoreComments.h"
#include "kiv/Kit/Findings/Rule.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::test {

namespace {

/// Finds all there is to find, also what is found on request only.
void vFindingsFind(const std::string& text) {
    static const auto schema = schemaFromWholeText(kit::getExampleSchema());
    const auto document = kit::setTextCheck(text, "Example.xml", *schema);
    kit::findingsOf(document, {*schema, {}, {}, true});
}

/// Hides what comments of the document hide, and finds those that hide nothing.
void vIgnoredFind(const std::string& text) {
    static const auto schema = schemaFromWholeText(kit::getExampleSchema());
    const auto document = kit::setTextCheck(text, "Example.xml", *schema);
    ASSERT_TRUE(document.positions);
    kit::IgnoreComments ignores(document.path, *document.positions);
    std::size_t hidden = 0;
    for (const auto& finding : kit::findingsOf(document, {*schema, {}, {}, true}))
        hidden += ignores.boHide(finding) ? 1U : 0U;
    EXPECT_GT(hidden, 0U);
    ignores.unusedFindings();
}

/// Where the second text of two begins.
constexpr char Next = '\f';

std::pair<std::string, std::string> twoOf(const std::string& text) {
    const auto end = text.find(Next);
    return {text.substr(0, end), text.substr(end + 1)};
}

/// Of two documents: what is wrong between them.
void vAcrossFind(const std::string& text) {
    const auto [first, second] = twoOf(text);
    kit::AcrossDocuments across;
    across.vAdd(kit::setTextRead(first, "a.xml"));
    across.vAdd(kit::setTextRead(second, "b.xml"));
    EXPECT_FALSE(across.getFindings().empty());
}

/// Of a schema and a document. The set is not checked: the library asks each class for its own supertypes.
void vInSchemaFind(const std::string& text) {
    const auto [schemaText, documentText] = twoOf(text);
    const auto schema = kit::schemaTextRead(schemaText, "a.exp");
    ASSERT_TRUE(schema.schema);
    EXPECT_FALSE(kit::findingsOf(kit::setTextRead(documentText, "a.xml"), {*schema.schema}).empty());
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

TEST(FindingsGrowthTest, CommentsThatIgnoreFindings) {
    constexpr std::size_t Many = 30'000;
    const std::string member = "<PropertyDef><Name>A </Name></PropertyDef>";
    vGrowthExpect(
        {row("one before each member", Many, "<!-- kivifc: ignore N -->" + member, sProperties),
         row("one that is not used before each member", Many, "<!-- kivifc: ignore N, T001, S -->" + member,
             sProperties),
         {"many before one element", Many,
          [=](std::size_t count) {
              return sTimes("<!-- kivifc: ignore N -->", count) + sProperties(sTimes(member, count));
          }},
         {"many before the first of many elements", Many,
          [=](std::size_t count) {
              return sProperties(sTimes("<!-- kivifc: ignore N -->", count) + sTimes(member, count));
          }},
         {"one with many codes", Many,
          [=](std::size_t count) {
              return "<!-- kivifc: ignore " + sTimes("N,T001 ", count) + "-->" +
                     sProperties(sTimes(member, count));
          }},
         {"one with many codes before a long tag", Many,
          [=](std::size_t count) {
              return "<!-- kivifc: ignore " + sTimes("N,T001 ", count) + "--><PropertySetDef x='" +
                     sTimes("y", 10 * count) + "'>" + member + "</PropertySetDef>";
          }},
         {"many before a long tag", Many,
          [=](std::size_t count) {
              return sTimes("<!-- kivifc: ignore N -->", count) + "<PropertySetDef x='" +
                     sTimes("y", 30 * count) + "'>" + member + "</PropertySetDef>";
          }}},
        vIgnoredFind);
}

TEST(FindingsGrowthTest, AcrossDocuments) {
    constexpr std::size_t Many = 30'000;
    const auto numbered = [](std::string_view before, std::string_view after) {
        return [=](std::size_t i) { return std::string(before) + std::to_string(i) + std::string(after); };
    };
    const auto enumeration = [](const std::string& items) {
        return "<PropertyDef><Name>A</Name><PropertyType><TypePropertyEnumeratedValue><EnumList "
               "name='PEnum_E'>" +
               items + "</EnumList></TypePropertyEnumeratedValue></PropertyType></PropertyDef>";
    };
    const auto propertyOf = [](const std::string& type) {
        return [type](std::size_t i) {
            return "<PropertyDef><Name>A" + std::to_string(i) +
                   "</Name><PropertyType><TypePropertySingleValue><DataType type='" + type +
                   "'/></TypePropertySingleValue></PropertyType></PropertyDef>";
        };
    };
    vGrowthExpect(
        {{"a long enumeration and short ones of its name", Many,
          [=](std::size_t count) {
              return sProperties(enumeration(sJoined(count, numbered("<EnumItem>A", "</EnumItem>")))) + Next +
                     sProperties(sJoined(count, [=](std::size_t i) {
                         return enumeration("<EnumItem>B" + std::to_string(i) + "</EnumItem>");
                     }));
          }},
         {"a long enumeration and another one in many places", Many,
          [=](std::size_t count) {
              return sProperties(enumeration(sJoined(count, numbered("<EnumItem>A", "</EnumItem>")))) + Next +
                     sProperties(sTimes(enumeration("<EnumItem>B</EnumItem>"), count));
          }},
         {"names in another letter case", Many,
          [=](std::size_t count) {
              return sProperties(sJoined(count, numbered("<PropertyDef><Name>a", "</Name></PropertyDef>"))) +
                     Next +
                     sProperties(sJoined(count, numbered("<PropertyDef><Name>A", "</Name></PropertyDef>")));
          }},
         {"properties of other types", Many,
          [=](std::size_t count) {
              return sProperties(sJoined(count, propertyOf("IfcReal"))) + Next +
                     sProperties(sJoined(count, propertyOf("IfcLabel")));
          }}},
        vAcrossFind);
}

TEST(FindingsGrowthTest, ClassesWithPredefinedTypes) {
    constexpr std::size_t Many = 20'000;
    const auto classes = [](const std::string& names) {
        return Next + sSet("<ApplicableClasses>" + names + "</ApplicableClasses>");
    };
    const auto numbered = [](std::string_view before, std::string_view after) {
        return [=](std::size_t i) { return std::string(before) + std::to_string(i) + std::string(after); };
    };
    vGrowthExpect({{"each below the other", Many,
                    [=](std::size_t count) {
                        return "SCHEMA S;\nENTITY E0;\nEND_ENTITY;\n" +
                               sJoined(count,
                                       [](std::size_t i) {
                                           return "ENTITY E" + std::to_string(i + 1) + "\n SUBTYPE OF (E" +
                                                  std::to_string(i) + ");\nEND_ENTITY;\n";
                                       }) +
                               "END_SCHEMA;\n" +
                               classes(sJoined(count, numbered("<ClassName>E", "/A</ClassName>")));
                    }},
                   {"one with many types", Many,
                    [=](std::size_t count) {
                        return "SCHEMA S;\nTYPE T = ENUMERATION OF\n (A" +
                               sJoined(count, numbered("\n,A", "")) +
                               ");\nEND_TYPE;\nENTITY E;\n PredefinedType : T;\nEND_ENTITY;\nEND_SCHEMA;\n" +
                               classes(sJoined(count, numbered("<ClassName>E/B", "</ClassName>")));
                    }}},
                  vInSchemaFind);
}

} // namespace kiv::test
