// XML documents of every hostile shape that comes to mind, each at two sizes, read as sets and as
// configurations.
//
// Aliases of one set and classes that repeat one another are in Format/Ifc/Def/IfcDefAliasesTest.cpp and
// IfcDefSetDefTest.cpp, constants in Pset/TypePropertyEnumeratedValueTest.cpp, sets whose classes have one
// hash in Store/SchemaPropertySetDefinitionsTest.cpp.

#include "Robustness/Growth/GrowthRow.h"
#include "Support/AssertCollector.h"
#include "Support/Growth.h"
#include "Support/SchemaPsetFromText.h"
#include "Support/SetFromText.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::test {

namespace {

using namespace ifc::def;

std::string sNumbered(std::string_view name, std::size_t number) {
    return std::string(name) + std::to_string(number);
}

/// Reads a set, writes it back, checks and collects it, and asks for it.
void vSetRead(const std::string& text) {
    const AssertCollector reports;
    static const auto schema = schemaPsetFromText("ENTITY IfcWall;\n  PredefinedType : Kind;\nEND_ENTITY;\n"
                                                  "TYPE Kind = ENUMERATION OF (A, B);\nEND_TYPE;");
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    std::istringstream stream(text);
    const auto root = file.parse(stream, "", nullptr);
    if (!root)
        return;
    ifc::def::xml::XmlSetErrors errors;
    auto set = pSetFromElement(*root, errors);
    XmlTarget target("Sets");
    set->exportDef(target.root(), nullptr);
    EXPECT_NE(target.sText(), "");
    SchemaPropertySetDefinitions sets;
    const auto name = set->getName();
    ASSERT_TRUE(sets.xmlSetAdd(*schema, std::move(set), errors));
    EXPECT_NE(sets.getXmlSetFromName(name), nullptr);
    sets.getXmlSetsAllToEntity(*schema::Entity::pFrom(schema->pObjectFromName("IfcWall")), true);
    ifc::def::xml::XmlSetsErrors report;
    report.sets.insert(std::move(errors));
    report.getFormattedErrors();
}

/// Collects the sets, each of which is a line, and then asks for those of two entities.
void vSetsCollect(const std::string& text) {
    static const auto schema = schemaPsetFromText("ENTITY IfcWall\n SUBTYPE OF (IfcRoot);\nEND_ENTITY;\n"
                                                  "ENTITY IfcRoot;\nEND_ENTITY;\n");
    SchemaPropertySetDefinitions sets;
    ifc::def::xml::XmlSetErrors errors;
    std::istringstream lines(text);
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
        std::istringstream stream(line);
        ASSERT_TRUE(
            sets.xmlSetAdd(*schema, pSetFromElement(*file.parse(stream, "", nullptr), errors), errors));
    }
    const auto entityOf = [&](const char* name) -> const schema::Entity& {
        return *schema::Entity::pFrom(schema->pObjectFromName(name));
    };
    EXPECT_EQ(sets.getXmlSetsAllToEntity(entityOf("IfcWall"), false).size(), count);
    EXPECT_LE(sets.getXmlSetsToEntity(entityOf("IfcRoot"), true).size(), count);
}

std::string sSet(const std::string& children) {
    return "<PropertySetDef><Name>P</Name>" + children + "</PropertySetDef>";
}

std::string sProperties(const std::string& properties) {
    return sSet("<PropertyDefs>" + properties + "</PropertyDefs>");
}

/// A set of one property of this type.
std::string sProperty(const std::string& type) {
    return sProperties("<PropertyDef><Name>A</Name><PropertyType>" + type + "</PropertyType></PropertyDef>");
}

TEST(DocumentGrowthTest, Sets) {
    constexpr std::size_t Many = 50'000;
    const auto numbered = [](std::string_view before, std::string_view after) {
        return [=](std::size_t i) { return sNumbered(before, i).append(after); };
    };
    vGrowthExpect(
        {{"properties", Many,
          [=](std::size_t count) {
              return sProperties(sJoined(count, numbered("<PropertyDef><Name>A", "</Name></PropertyDef>")));
          }},
         {"properties of one name", Many,
          [](std::size_t count) {
              return sProperties(sTimes("<PropertyDef><Name>A</Name></PropertyDef>", count));
          }},
         {"properties of one GUID", Many,
          [](std::size_t count) {
              return sProperties(sTimes("<PropertyDef ifdguid='00000000000000000000000000000001'/>", count));
          }},
         {"lists of properties", Many,
          [](std::size_t count) {
              return sSet(sTimes("<PropertyDefs><PropertyDef/></PropertyDefs>", count));
          }},
         {"quantities", Many,
          [=](std::size_t count) {
              return "<QtoSetDef><QtoDefs>" +
                     sJoined(count,
                             numbered("<QtoDef><Name>A", "</Name><QtoType>Q_AREA</QtoType></QtoDef>")) +
                     "</QtoDefs></QtoSetDef>";
          }},
         {"classes", Many,
          [=](std::size_t count) {
              return sSet("<ApplicableClasses>" + sJoined(count, numbered("<ClassName>C", "/A</ClassName>")) +
                          "</ApplicableClasses>");
          }},
         {"equal classes", Many,
          [](std::size_t count) {
              return sSet("<ApplicableClasses>" + sTimes("<ClassName>IfcWall/X</ClassName>", count) +
                          "</ApplicableClasses>");
          }},
         {"aliases", Many,
          [](std::size_t count) {
              return sSet("<PsetDefinitionAliases>" +
                          sTimes("<PsetDefinitionAlias lang='de'>A</PsetDefinitionAlias>", count) +
                          "</PsetDefinitionAliases>");
          }},
         {"lists of aliases", Many,
          [](std::size_t count) {
              return sProperties(
                  "<PropertyDef>" +
                  sTimes("<NameAliases><NameAlias lang='de'>A</NameAlias></NameAliases>", count) +
                  "</PropertyDef>");
          }},
         {"records", Many, [](std::size_t count) { return sSet(sTimes("<Unknown/>", count)); }},
         {"items", Many,
          [=](std::size_t count) {
              return sProperty("<TypePropertyEnumeratedValue><EnumList>" +
                               sJoined(count, numbered("<EnumItem>A", "</EnumItem>")) +
                               "</EnumList></TypePropertyEnumeratedValue>");
          }},
         {"types of one property", Many,
          [](std::size_t count) {
              return sProperties("<PropertyDef>" +
                                 sTimes("<PropertyType><TypePropertyListValue/></PropertyType>", count) +
                                 "</PropertyDef>");
          }},
         {"values of a list", Many,
          [](std::size_t count) {
              return sProperty("<TypePropertyListValue>" +
                               sTimes("<ListValue><DataType type='A'/></ListValue>", count) +
                               "</TypePropertyListValue>");
          }},
         {"values of a table", Many,
          [](std::size_t count) {
              return sProperty("<TypePropertyTableValue>" +
                               sTimes("<DefiningValue><DataType type='A'/></DefiningValue>", count) +
                               "</TypePropertyTableValue>");
          }},
         {"parts of a complex property", Many,
          [](std::size_t count) {
              return sProperty("<TypeComplexProperty>" + sTimes("<PropertyDef/>", count) +
                               "</TypeComplexProperty>");
          }}},
        vSetRead);
}

/// Reads a set, checks it, and writes what is wrong with it.
void vRecordsWrite(const std::string& text) {
    const AssertCollector reports;
    const auto schema = schemaPsetFromText("ENTITY IfcWall;\nEND_ENTITY;\n");
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    std::istringstream stream(text);
    const auto root = file.parse(stream, "", nullptr);
    ASSERT_TRUE(root);
    ifc::def::xml::XmlSetErrors errors;
    const auto set = pSetFromElement(*root, errors);
    set->checkForErrors(*schema, errors);
    ASSERT_EQ(errors.getSetName(), set->getName());
    ifc::def::xml::XmlSetsErrors report;
    report.sets.insert(std::move(errors));
    CountedOutput output;
    report.vFormattedErrorsWrite(output);
}

// The name of a set is written with each of its records, so the report may be as long as the square of the
// document. It is only written, and never held.
TEST(DocumentGrowthTest, RecordsOfASetWithALongName) {
    vGrowthForOutputExpect({{"records", 50'000,
                             [](std::size_t count) {
                                 return "<PropertySetDef><Name>" + std::string(4 * count, 'x') + "</Name>" +
                                        sTimes("<e/>", count) + "</PropertySetDef>";
                             }}},
                           vRecordsWrite);
}

TEST(DocumentGrowthTest, SetsOfOneEntity) {
    constexpr std::size_t Many = 20'000;
    const auto setOf = [](std::size_t number, std::string_view entity) {
        return "<PropertySetDef><Name>" + sNumbered("P", number) + "</Name><ApplicableClasses><ClassName>" +
               std::string(entity) + "</ClassName></ApplicableClasses></PropertySetDef>\n";
    };
    vGrowthExpect({{"in any order", Many,
                    [=](std::size_t count) {
                        return sJoined(count, [=](std::size_t i) { return setOf(i, "IfcWall"); });
                    }},
                   // The last name comes first.
                   {"in reverse", Many,
                    [=](std::size_t count) {
                        return sJoined(count, [=](std::size_t i) { return setOf(10 * Many - i, "IfcWall"); });
                    }},
                   {"half of them of its supertype", Many,
                    [=](std::size_t count) {
                        return sJoined(count, [=](std::size_t i) {
                            return setOf(i, i % 2 == 0 ? "IfcWall" : "IfcRoot");
                        });
                    }}},
                  vSetsCollect);
}

TEST(DocumentGrowthTest, Markup) {
    constexpr std::size_t Megabyte = 1'000'000;
    const auto inName = [](std::string_view piece) {
        return
            [=](std::size_t size) { return sSet("<Name>" + sTimes(piece, size / piece.size()) + "</Name>"); };
    };
    vGrowthExpect(
        {{"text", 4 * Megabyte, inName("x")},
         {"lines", Megabyte, inName("\n")},
         {"character references", Megabyte, inName("&#65;")},
         {"sections", Megabyte, inName("<![CDATA[x]]>")},
         {"comments", Megabyte, inName("x<!---->")},
         {"instructions", Megabyte, inName("x<?p?>")},
         {"elements in a text", Megabyte, inName("x<e/>")},
         {"long comment", 4 * Megabyte,
          [](std::size_t size) { return sSet("<!--" + std::string(size, 'x') + "-->"); }},
         {"long tag", 4 * Megabyte,
          [](std::size_t size) { return sSet("<" + std::string(size, 'x') + "/>"); }},
         {"long value", 4 * Megabyte,
          [](std::size_t size) { return sSet("<e a='" + std::string(size, 'x') + "'/>"); }},
         {"attributes", 20'000,
          [](std::size_t count) {
              return sSet("<e " + sJoined(count, [](std::size_t i) { return sNumbered(" a", i) + "=''"; }) +
                          "/>");
          }},
         {"attributes of one name", 20'000,
          [](std::size_t count) { return sSet("<e" + sTimes(" a=''", count) + "/>"); }},
         {"different tags", 50'000,
          [](std::size_t count) {
              return sSet(sJoined(count, [](std::size_t i) { return "<" + sNumbered("e", i) + "/>"; }));
          }},
         {"declared attributes", 10'000,
          [](std::size_t count) {
              return "<!DOCTYPE e [<!ATTLIST e" +
                     sJoined(1000, [](std::size_t i) { return sNumbered(" a", i) + " CDATA #IMPLIED"; }) +
                     ">]><e>" + sTimes("<e/>", count) + "</e>";
          }},
         {"markup that never ends", Megabyte,
          [](std::size_t size) { return "<a " + std::string(size, ' '); }},
         {"section that never ends", Megabyte,
          [](std::size_t size) { return "<a><![CDATA[" + sTimes("]]", size / 2); }},
         {"elements that never end", Megabyte, [](std::size_t size) { return sTimes("<a>", size / 3); }}},
        vSetRead);
}

/// Reads a schema and then its configuration, which comes after a NUL byte.
void vConfigRead(const std::string& text) {
    const AssertCollector reports;
    const auto end = text.find('\0');
    const auto schema = schemaPsetFromText(text.substr(0, end));
    std::istringstream stream("<cnf:configuration id='TEST' xmlns:cnf='c'>" + text.substr(end + 1) +
                              "</cnf:configuration>");
    schema->vXmlSchemaConfigInit(stream);
    ASSERT_NE(schema->pXmlSchemaConfig(), nullptr);
}

TEST(DocumentGrowthTest, Configurations) {
    constexpr std::size_t Many = 50'000;
    const auto config = [](const std::string& text) {
        return std::string("ENTITY E;\n  A : E;\n INVERSE\n  I : SET OF E FOR A;\nEND_ENTITY;") + '\0' + text;
    };
    vGrowthExpect(
        {{"entities", Many,
          [=](std::size_t count) { return config(sTimes("<cnf:entity select='E'/>", count)); }},
         {"records of one attribute", Many,
          [=](std::size_t count) {
              return config(
                  "<cnf:entity select='E'>" +
                  sTimes("<cnf:attribute select='A' keep='true'/><cnf:inverse select='I'/>", count) +
                  "</cnf:entity>");
          }},
         {"reports", Many,
          [=](std::size_t count) { return config(sTimes("<cnf:entity no=''/><no/>", count)); }},
         {"entities of a long schema", Many / 2,
          [](std::size_t count) {
              return sJoined(count,
                             [](std::size_t i) {
                                 return sNumbered("ENTITY E", i) + ";\n A : E0;\nEND_ENTITY;\n";
                             }) +
                     '\0' + sJoined(count, [](std::size_t i) {
                         return sNumbered("<cnf:entity select='E", i) +
                                "'><cnf:attribute select='A'/></cnf:entity>";
                     });
          }}},
        vConfigRead);
}

// Each record is looked for among the attributes of its entity, and of those above it.
TEST(DocumentGrowthTest, ConfigurationsOfManyAttributes) {
    constexpr std::size_t Many = 20'000;
    const auto records = [](std::size_t count, const std::string& entity, const std::string& record) {
        return '\0' + ("<cnf:entity select='" + entity + "'>") +
               sJoined(count, [&](std::size_t i) { return sNumbered(record, i) + "'/>"; }) + "</cnf:entity>";
    };
    const auto attributes = [](std::size_t count) {
        return "ENTITY E;\n" + sJoined(count, [](std::size_t i) { return sNumbered("A", i) + " : E;\n"; }) +
               "END_ENTITY;\n";
    };
    const auto inverses = [](std::size_t count) {
        return "ENTITY E;\n INVERSE\n" +
               sJoined(count, [](std::size_t i) { return sNumbered("I", i) + " : E FOR A;\n"; }) +
               "END_ENTITY;\n";
    };
    const auto line = [](std::size_t count) {
        return "ENTITY E0;\nEND_ENTITY;\n" + sJoined(count, [](std::size_t i) {
                   return sNumbered("ENTITY E", i + 1) + "\n SUBTYPE OF (" + sNumbered("E", i) + ");\n" +
                          sNumbered("A", i) + " : E0;\n INVERSE\n" + sNumbered("I", i) +
                          " : E0 FOR A;\nEND_ENTITY;\n";
               });
    };
    vGrowthExpect(
        {{"attributes", Many,
          [=](std::size_t count) {
              return attributes(count) + records(count, "E", "<cnf:attribute select='A");
          }},
         {"attributes that are not there", Many,
          [=](std::size_t count) {
              return attributes(count) + records(count, "E", "<cnf:attribute select='a");
          }},
         {"inverse attributes", Many,
          [=](std::size_t count) { return inverses(count) + records(count, "E", "<cnf:inverse select='i"); }},
         {"attributes of a line of supertypes", Many,
          [=](std::size_t count) {
              return line(count) + records(count, sNumbered("E", count), "<cnf:attribute select='A");
          }},
         {"inverse attributes of a line of supertypes", Many,
          [=](std::size_t count) {
              return line(count) + records(count, sNumbered("E", count), "<cnf:inverse select='I");
          }}},
        vConfigRead);
}

} // namespace

} // namespace kiv::test
