// How accurate the memory of a budget is: what the meter says was needed, beside what was really allocated.

#include "Support/Allocations.h"
#include "Support/BudgetAccuracy.h"
#include "Support/SampleData.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <istream>
#include <memory>
#include <sstream>
#include <streambuf>
#include <string>

namespace kiv::test {

namespace {

using ifc::def::Budget;
using ifc::def::BudgetExceeded;
using ifc::def::BudgetLimit;
using ifc::def::BudgetMeter;
using ifc::def::SchemaPset;

/// Reads something within a budget.
using Reader = std::function<void(BudgetMeter&)>;

/// The most memory that the reading held, as the allocations say.
std::ptrdiff_t peakOf(const Reader& vRead) {
    BudgetMeter meter{Budget{}};
    const auto before = bytesHeld();
    vPeakBegin();
    vRead(meter);
    return bytesHeldAtPeak() - before;
}

/// Whether that much memory is enough.
bool boEnough(const Reader& vRead, std::uint64_t memory) {
    Budget budget;
    budget.maxMemory = memory;
    BudgetMeter meter(budget);
    try {
        vRead(meter);
        return true;
    } catch (const BudgetExceeded& exceeded) {
        EXPECT_EQ(exceeded.getLimit(), BudgetLimit::Memory);
        EXPECT_EQ(meter.getUsed(WorkMeter::Unit::HeldBytes), 0U);
        return false;
    }
}

using Row = BudgetRow<Reader>;

/// Reads a text where it is.
class TextBuffer final : public std::streambuf {
public:
    explicit TextBuffer(const std::string& text) {
        auto* const begin = const_cast<char*>(text.data()); // a buffer's own type; nothing is written
        setg(begin, begin, begin + text.size());
    }
};

Reader schemaReader(const std::string& statements) {
    return [text = "SCHEMA S;\n" + statements + "\nEND_SCHEMA;\n"](BudgetMeter& meter) {
        TextBuffer buffer(text);
        std::istream stream(&buffer);
        ASSERT_NE(SchemaPset::pStepStreamRead(stream, meter), nullptr);
    };
}

Reader documentReader(const std::string& text) {
    return [text](BudgetMeter& meter) {
        TextBuffer buffer(text);
        std::istream stream(&buffer);
        xml::File file(nullptr, xml::VerboseLevel::Quiet, xml::ValidateLevel::None);
        ASSERT_TRUE(file.parse(stream, "", &meter));
    };
}

/// The document is there already.
template <class Set>
Reader setReader(const std::string& text) {
    std::istringstream stream(text);
    const auto file =
        std::make_shared<xml::File>(nullptr, xml::VerboseLevel::Quiet, xml::ValidateLevel::None);
    const auto root = file->parse(stream, "", nullptr);
    return [file, root](BudgetMeter& meter) {
        ifc::def::xml::XmlSetErrors errors;
        const Set set(*root, errors, meter);
    };
}

Reader propertySetReader(const std::string& children) {
    return setReader<ifc::def::pset::PropertySetDef>("<PropertySetDef>" + children + "</PropertySetDef>");
}

/// A set of many properties of this type.
Reader typeReader(const std::string& type) {
    return propertySetReader(
        "<PropertyDefs>" +
        sRepeated("<PropertyDef><Name>A property with a long name #</Name><PropertyType>" + type +
                      "</PropertyType></PropertyDef>",
                  2000) +
        "</PropertyDefs>");
}

/// What tables and lists have columns of.
std::string sColumn(const std::string& tag) {
    return "<" + tag +
           "><DataType type=\"IfcThermodynamicTemperatureMeasure\"/>"
           "<UnitType type=\"THERMODYNAMICTEMPERATUREUNIT\"/><Values><ValueItem>#</ValueItem></Values></" +
           tag + ">";
}

Reader configurationReader(std::size_t attributes) {
    std::istringstream stream("SCHEMA S;\nENTITY E;\n" + sRepeated("A# : REAL;\n", attributes) +
                              "END_ENTITY;\nEND_SCHEMA;\n");
    const std::shared_ptr<SchemaPset> schema = SchemaPset::pStepStreamRead(stream);
    const auto text = "<c id=\"S\"><cnf:entity select=\"E\">" +
                      sRepeated("<cnf:attribute select=\"A#\" keep=\"true\"/>", attributes) +
                      "</cnf:entity></c>";
    return [schema, text](BudgetMeter& meter) {
        TextBuffer buffer(text);
        std::istream read(&buffer);
        const ifc::def::xmlschema::Config config(*schema, read, meter);
    };
}

const Row Rows[] = {
    {"sample schema", [] { return schemaReader(sSampleText("Building.exp")); }},
    {"entities",
     [] { return schemaReader(sRepeated("ENTITY IfcEntity#;\n  Name : STRING;\nEND_ENTITY;\n", 3000)); }},
    {"entities in disorder",
     [] { return schemaReader(sRepeated("ENTITY Z#;\nEND_ENTITY;\nENTITY B#;\nEND_ENTITY;\n", 2000)); }},
    {"long line", [] { return schemaReader("-- " + std::string(900'000, 'x')); }},
    {"long list",
     [] {
         return schemaReader("TYPE E = ENUMERATION OF (" + sRepeated("Item#, ", 50'000) +
                             "Last);\nEND_TYPE;");
     }},
    {"select of many",
     [] {
         return schemaReader(sRepeated("ENTITY E#;\nEND_ENTITY;\n", 3000) + "TYPE S = SELECT (" +
                             sRepeated("E#,\n", 3000) + "E0);\nEND_TYPE;");
     }},
    {"long rule",
     [] {
         return schemaReader("TYPE T = REAL;\nWHERE\nR : SELF = 0" + sRepeated(" + #", 50'000) +
                             ";\nEND_TYPE;");
     }},
    {"call with many arguments",
     [] {
         return schemaReader("TYPE T = REAL;\nWHERE\nR : F(0" + sRepeated(", #", 50'000) +
                             ") > 0;\nEND_TYPE;");
     }},
    {"chain of types",
     [] {
         return schemaReader("TYPE T0 = REAL;\nEND_TYPE;\n" + sRepeated("TYPE U# = T0;\nEND_TYPE;\n", 5000));
     }},
    {"unique rules and derived attributes",
     [] {
         return schemaReader(
             sRepeated("ENTITY E#;\nA : REAL;\nUNIQUE\nALongLabelOfARule# : A, ALongNameOfAnAttribute#;\n"
                       "DERIVE\nSELF\\E#.A : REAL := 1;\nEND_ENTITY;\n",
                       2000));
     }},
    {"attributes that are found in a table",
     [] {
         return schemaReader("ENTITY Root;\n" + sRepeated("Attribute# : REAL;\n", 3000) + "END_ENTITY;\n" +
                             sRepeated("ENTITY E#;\nSUBTYPE OF (Root);\nDERIVE\n"
                                       "SELF\\Root.Attribute# : REAL := 1;\nEND_ENTITY;\n",
                                       3000));
     }},
    {"attributes of one entity",
     [] { return schemaReader("ENTITY E;\n" + sRepeated("a : b;\n", 30'000) + "END_ENTITY;\n"); }},
    {"inverse attributes of one entity",
     [] {
         return schemaReader("ENTITY E;\nINVERSE\n" + sRepeated("a : b FOR c;\n", 20'000) + "END_ENTITY;\n");
     }},
    {"names of one uniqueness rule",
     [] { return schemaReader("ENTITY E;\nUNIQUE\nu : " + sRepeated("a,", 100'000) + "a;\nEND_ENTITY;\n"); }},
    {"schema name",
     [] {
         return [text = "SCHEMA " + std::string(500'000, 'x') + ";\nEND_SCHEMA;\n"](BudgetMeter& meter) {
             TextBuffer buffer(text);
             std::istream stream(&buffer);
             ASSERT_NE(SchemaPset::pStepStreamRead(stream, meter), nullptr);
         };
     }},
    {"function bodies",
     [] { return schemaReader(sRepeated("FUNCTION F#;\r\n  body;\r\nEND_FUNCTION;\r\n", 5000)); }},
    {"document", [] { return documentReader("<a>" + sRepeated("<b c=\"#\">text</b>\n", 20'000) + "</a>"); }},
    {"document of a million different tags",
     [] { return documentReader("<a>" + sRepeated("<b#/>", 1'000'000) + "</a>"); }},
    {"document of different attributes",
     [] { return documentReader("<a>" + sRepeated("<b a#='' AnotherName#=''/>", 50'000) + "</a>"); }},
    {"tag of different attributes",
     [] { return documentReader("<a" + sRepeated(" b#='c'", 50'000) + "/>"); }},
    {"document that declares attributes",
     [] {
         return documentReader("<!DOCTYPE a [" + sRepeated("<!ATTLIST a b# CDATA 'a value'>", 900) +
                               "]><a/>");
     }},
    {"document of line ends",
     [] {
         return documentReader("<a><!--" + std::string(500'000, 'x') + "-->" + std::string(1'000'000, '\n') +
                               "</a>");
     }},
    {"property set",
     [] {
         return propertySetReader(
             "<PropertyDefs>" +
             sRepeated("<PropertyDef><Name>A property with a long name #</Name>"
                       "<Definition>What it means is said here, at length.</Definition>"
                       "<PropertyType><TypePropertySingleValue><DataType type=\"IfcLabel\"/>"
                       "</TypePropertySingleValue></PropertyType></PropertyDef>",
                       2000) +
             "</PropertyDefs>");
     }},
    {"tables",
     [] {
         return typeReader(
             "<TypePropertyTableValue><Expression>the second is twice the first #</Expression>" +
             sColumn("DefiningValue") + sColumn("DefinedValue") + "</TypePropertyTableValue>");
     }},
    {"lists",
     [] {
         return typeReader("<TypePropertyListValue>" + sColumn("ListValue") + "</TypePropertyListValue>");
     }},
    {"bounded values",
     [] {
         return typeReader("<TypePropertyBoundedValue><ValueRangeDef>"
                           "<LowerBoundValue value=\"a lower bound with a long name #\"/>"
                           "<UpperBoundValue value=\"an upper bound with a long name #\"/></ValueRangeDef>"
                           "<DataType type=\"IfcThermodynamicTemperatureMeasure\"/>"
                           "<UnitType type=\"THERMODYNAMICTEMPERATUREUNIT\"/></TypePropertyBoundedValue>");
     }},
    {"references",
     [] {
         return typeReader("<TypePropertyReferenceValue reftype=\"IfcExternalReferenceOfSomeKind#\">"
                           "<DataType type=\"IfcThermodynamicTemperatureMeasure\"/>"
                           "</TypePropertyReferenceValue>");
     }},
    {"complex properties",
     [] {
         return typeReader("<TypeComplexProperty name=\"A complex property with a long name #\">"
                           "<PropertyDef><Name>The first of its properties, #</Name></PropertyDef>"
                           "<PropertyDef><Name>The second of its properties, #</Name></PropertyDef>"
                           "</TypeComplexProperty>");
     }},
    {"constants and aliases",
     [] {
         return propertySetReader(
             "<PropertyDefs><PropertyDef><PropertyType><TypePropertyEnumeratedValue><EnumList>" +
             sRepeated("<EnumItem>AN_ITEM_OF_SOME_LENGTH_#</EnumItem>", 3000) + "</EnumList><ConstantList>" +
             sRepeated("<ConstantDef><Name>CONSTANT_#</Name><DefinitionAliases><DefinitionAlias lang=\"de\">"
                       "der Wert # der Aufzaehlung</DefinitionAlias></DefinitionAliases></ConstantDef>",
                       3000) +
             "</ConstantList></TypePropertyEnumeratedValue></PropertyType></PropertyDef></PropertyDefs>");
     }},
    {"types of one property",
     [] {
         return propertySetReader(
             "<PropertyDefs><PropertyDef>" +
             sRepeated(
                 "<PropertyType><TypeComplexProperty name=\"c\">" +
                     sRepeated("<PropertyDef><Name>A property with a long name</Name></PropertyDef>", 300) +
                     "</TypeComplexProperty></PropertyType>",
                 30) +
             "</PropertyDef></PropertyDefs>");
     }},
    {"types of properties of a complex property",
     [] {
         return typeReader("<TypeComplexProperty><PropertyDef>" +
                           sRepeated("<PropertyType><TypePropertySingleValue>"
                                     "<DataType type=\"IfcThermodynamicTemperatureMeasure\"/>"
                                     "</TypePropertySingleValue></PropertyType>",
                                     20) +
                           "</PropertyDef></TypeComplexProperty>");
     }},
    {"types that are none after one",
     [] {
         return propertySetReader(
             "<PropertyDefs>" +
             sRepeated("<PropertyDef><Name>A property with a long name #</Name>" +
                           sRepeated("<PropertyType><TypePropertyListValue>" + sColumn("ListValue") +
                                         "</TypePropertyListValue></PropertyType>"
                                         "<PropertyType/>",
                                     5) +
                           "</PropertyDef>",
                       1000) +
             "</PropertyDefs>");
     }},
    {"types of quantities",
     [] {
         return setReader<ifc::def::qto::QuantitySetDef>(
             "<QtoSetDef><QtoDefs>" +
             sRepeated("<QtoDef><Name>A quantity with a long name #</Name>" +
                           sRepeated("<QtoType>Q_LENGTH</QtoType>", 100) + "</QtoDef>",
                       1000) +
             "</QtoDefs></QtoSetDef>");
     }},
    {"applicable classes",
     [] {
         return propertySetReader(
             "<ApplicableClasses>" +
             sRepeated("<ClassName>IfcDistributionElement#/A_PREDEFINED_TYPE</ClassName>", 5000) +
             "</ApplicableClasses>");
     }},
    {"unknown nodes", [] { return propertySetReader(sRepeated("<AnElementThatNobodyKnows#/>", 5000)); }},
    {"quantity set",
     [] {
         return setReader<ifc::def::qto::QuantitySetDef>(
             "<QtoSetDef><QtoDefs>" +
             sRepeated(
                 "<QtoDef><Name>A quantity with a long name #</Name><QtoType>Q_LENGTH</QtoType></QtoDef>",
                 3000) +
             "</QtoDefs></QtoSetDef>");
     }},
    {"configuration", [] { return configurationReader(10'000); }},
};

class BudgetMemory : public testing::TestWithParam<Row> {};

TEST_P(BudgetMemory, IsAccurateToATenth) {
    const auto vRead = GetParam().make();
    const auto real = peakOf(vRead);
    if (real == 0)
        GTEST_SKIP() << "the C library does not say how large allocations are";
    const auto least =
        static_cast<double>(leastMemory([&vRead](std::uint64_t memory) { return boEnough(vRead, memory); },
                                        static_cast<std::uint64_t>(real)));
    EXPECT_NEAR(least / static_cast<double>(real), 1.0, 0.1);
}

INSTANTIATE_TEST_SUITE_P(Inputs, BudgetMemory, testing::ValuesIn(Rows));

} // namespace

} // namespace kiv::test
