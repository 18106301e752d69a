// How often documents, sets and configurations look whether they shall go on: after a bounded number of
// steps, however long they are.

#include "Support/LookingMeter.h"
#include "Support/SetFromText.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>

namespace kiv::test {

namespace {

using ifc::def::Budget;
using ifc::def::BudgetExceeded;
using ifc::def::BudgetLimit;
using ifc::def::SchemaPset;

/// Reads something, and gives what was read, so that its end does not count.
using Reader = std::function<std::shared_ptr<void>(LookingMeter&)>;

struct Input {
    const char* name;
    /// For something of that size.
    std::function<Reader(std::size_t)> make;
    /// How many objects there are for each one of the size.
    std::size_t objects = 1;
};

void PrintTo(const Input& input, std::ostream* stream) {
    *stream << input.name;
}

constexpr std::uint64_t MaxPiece = 1 << 14;

/// The most steps between two looks, and from the last one to the end, also when a piece is too long.
std::uint64_t mostSteps(const Reader& vRead) {
    Budget budget;
    budget.maxPiece = MaxPiece;
    LookingMeter meter(budget);
    try {
        const auto result = vRead(meter);
        meter.vLook();
    } catch (const BudgetExceeded& exceeded) {
        EXPECT_EQ(exceeded.getLimit(), BudgetLimit::Piece);
    }
    return meter.getMost();
}

Reader documentReader(const std::string& text) {
    return [text](LookingMeter& meter) {
        std::istringstream stream(text);
        const auto file = std::make_shared<kiv::xml::File>(nullptr, kiv::xml::VerboseLevel::Quiet,
                                                           kiv::xml::ValidateLevel::None);
        file->parse(stream, "", &meter);
        EXPECT_EQ(file->pError(), nullptr);
        return file;
    };
}

/// The document is there already.
template <class Set>
Reader setReader(const std::string& text) {
    const auto document = std::make_shared<const XmlFromText>(text);
    return [document](LookingMeter& meter) {
        struct Result {
            Result(const kiv::xml::Element& root, LookingMeter& meter) : set(root, errors, meter) {}

            ifc::def::xml::XmlSetErrors errors;
            Set set;
        };
        return std::make_shared<Result>(document->root(), meter);
    };
}

Reader propertySetReader(const std::string& children) {
    return setReader<ifc::def::pset::PropertySetDef>("<PropertySetDef>" + children + "</PropertySetDef>");
}

Reader propertyReader(const std::string& type) {
    return propertySetReader("<PropertyDefs><PropertyDef><PropertyType>" + type +
                             "</PropertyType></PropertyDef></PropertyDefs>");
}

/// A configuration of an entity with that many attributes and inverse attributes; `children` are its own.
Reader configurationReader(std::size_t size, const std::string& children) {
    std::istringstream stream("SCHEMA S;\nENTITY E;\n" + sRepeated("A# : REAL;\n", size) + "INVERSE\n" +
                              sRepeated("I# : E FOR A#;\n", size) + "END_ENTITY;\n" +
                              "ENTITY F\nSUBTYPE OF (E);\nEND_ENTITY;\nEND_SCHEMA;\n");
    const std::shared_ptr<SchemaPset> schema = SchemaPset::pStepStreamRead(stream);
    return [schema, text = "<c id=\"S\">" + children + "</c>"](LookingMeter& meter) {
        std::istringstream read(text);
        schema->vXmlSchemaConfigInit(read, meter);
        return schema;
    };
}

const Input Inputs[] = {
    {"document: elements",
     [](std::size_t size) { return documentReader("<a>" + sRepeated("<b/>", size) + "</a>"); }},
    {"document: different tags",
     [](std::size_t size) { return documentReader("<a>" + sRepeated("<b#/>", size) + "</a>"); }},
    {"document: attributes",
     [](std::size_t size) { return documentReader("<a>" + sRepeated("<b c='1' d='#'/>", size) + "</a>"); }},
    {"document: attributes of one element",
     [](std::size_t size) { return documentReader("<a" + sRepeated(" b#=''", size) + "/>"); }},
    {"document: one long attribute",
     [](std::size_t size) { return documentReader("<a b='" + std::string(size * 8, 'x') + "'/>"); }},
    {"document: one long comment",
     [](std::size_t size) { return documentReader("<a><!--" + std::string(size * 8, 'x') + "--></a>"); }},
    {"document: one long text",
     [](std::size_t size) { return documentReader("<a>" + std::string(size * 8, 'x') + "</a>"); }},
    {"document: lines",
     [](std::size_t size) { return documentReader("<a>" + std::string(size * 8, '\n') + "</a>"); }},
    {"document: a text in pieces",
     [](std::size_t size) { return documentReader("<a>" + sRepeated("&amp;", size) + "</a>"); }},
    {"document: instructions",
     [](std::size_t size) { return documentReader("<a>" + sRepeated("<?b c?>", size) + "</a>"); }},
    {"document: what is before the root",
     [](std::size_t size) { return documentReader(sRepeated("<!--c--><?b c?>\n", size) + "<a/>"); }},
    {"document: declared attributes",
     [](std::size_t size) {
         return documentReader("<!DOCTYPE a [" + sRepeated("<!ATTLIST a b# CDATA 'value'>", size / 40) +
                               "]><a>" + sRepeated("<a/>", size / 400) + "</a>");
     }},
    {"set: properties",
     [](std::size_t size) {
         return propertySetReader("<PropertyDefs>" +
                                  sRepeated("<PropertyDef><Name>A#</Name></PropertyDef>", size) +
                                  "</PropertyDefs>");
     }},
    {"set: lists of properties",
     [](std::size_t size) { return propertySetReader(sRepeated("<PropertyDefs/>", size)); }},
    {"set: one long name",
     [](std::size_t size) { return propertySetReader("<Name>" + std::string(size * 8, 'x') + "</Name>"); }},
    {"set: a name in pieces",
     [](std::size_t size) { return propertySetReader("<Name>" + sRepeated("x<!---->", size) + "</Name>"); }},
    {"set: one long class",
     [](std::size_t size) {
         return propertySetReader("<ApplicableClasses><ClassName>" + std::string(size * 8, 'x') +
                                  "</ClassName></ApplicableClasses>");
     }},
    {"set: classes",
     [](std::size_t size) {
         return propertySetReader("<ApplicableClasses>" + sRepeated("<ClassName>C#/A</ClassName>", size) +
                                  "</ApplicableClasses>");
     }},
    {"set: aliases",
     [](std::size_t size) {
         return propertySetReader("<PsetDefinitionAliases>" +
                                  sRepeated("<PsetDefinitionAlias lang='l#'>A</PsetDefinitionAlias>", size) +
                                  "</PsetDefinitionAliases>");
     }},
    {"set: unknown nodes", [](std::size_t size) { return propertySetReader(sRepeated("<Odd#/>", size)); }},
    {"set: texts between nodes",
     [](std::size_t size) { return propertySetReader(sRepeated("x<!---->", size)); }},
    {"set: items",
     [](std::size_t size) {
         return propertyReader("<TypePropertyEnumeratedValue><EnumList>" +
                               sRepeated("<EnumItem>A#</EnumItem>", size) +
                               "</EnumList></TypePropertyEnumeratedValue>");
     }},
    {"set: constants",
     [](std::size_t size) {
         return propertyReader("<TypePropertyEnumeratedValue><ConstantList>" +
                               sRepeated("<ConstantDef><Name>A#</Name></ConstantDef>", size) +
                               "</ConstantList></TypePropertyEnumeratedValue>");
     }},
    {"set: values of a table",
     [](std::size_t size) {
         return propertyReader("<TypePropertyTableValue>" +
                               sRepeated("<DefiningValue><DataType type='A'/></DefiningValue>", size) +
                               "</TypePropertyTableValue>");
     }},
    {"set: quantities",
     [](std::size_t size) {
         return setReader<ifc::def::qto::QuantitySetDef>(
             "<QtoSetDef><QtoDefs>" +
             sRepeated("<QtoDef><Name>A#</Name><QtoType>Q_AREA</QtoType></QtoDef>", size) +
             "</QtoDefs></QtoSetDef>");
     }},
    {"configuration: attributes",
     [](std::size_t size) {
         return configurationReader(
             size, "<cnf:entity select='F'>" + sRepeated("<cnf:attribute select='A#' keep='true'/>", size) +
                       sRepeated("<cnf:inverse select='I#' exp-attribute='attribute-tag'/>", size) +
                       "</cnf:entity>");
     }},
    {"configuration: entities",
     [](std::size_t size) {
         return configurationReader(
             size, sRepeated("<cnf:entity select='F'><cnf:attribute select='A#' keep='true'/>"
                             "</cnf:entity>",
                             size));
     }},
    {"configuration: names of attributes that there are not",
     [](std::size_t size) {
         return configurationReader(
             size, sRepeated("<cnf:entity select='F'><cnf:attribute select='X#' keep='true'/>"
                             "<cnf:inverse select='X#' keep='true'/></cnf:entity>",
                             size));
     }},
    {"configuration: unknown elements",
     [](std::size_t size) { return configurationReader(10, sRepeated("<odd#/>", size)); }},
    {"configuration: settings",
     [](std::size_t size) {
         return configurationReader(
             10, sRepeated("<cnf:option a#=''/><cnf:schema><cnf:namespace b#=''/></cnf:schema>", size));
     },
     3},
};

// What a host can rely on, as it limits objects and reports: a list of them that grows is moved one by one,
// and texts and comments between elements are passed over one by one.
constexpr std::uint64_t StepsForAnObject = 10;

class ReadingStop : public testing::TestWithParam<Input> {};

TEST_P(ReadingStop, IsLookedAtAfterABoundedNumberOfSteps) {
    if (!isWorkCounted)
        GTEST_SKIP() << "nothing is counted with sanitizers";
    constexpr std::size_t Few = 4'000;
    constexpr std::size_t Many = 16'000;
    const auto few = mostSteps(GetParam().make(Few));
    const auto many = mostSteps(GetParam().make(Many));
    EXPECT_GT(few, 0U);
    EXPECT_LE(many, StepsForAByte * MaxPiece);
    // What grows with the document does so by its objects alone.
    EXPECT_LE(many, std::max<std::uint64_t>({2 * few, 16'000, StepsForAnObject * Many * GetParam().objects}));
}

INSTANTIATE_TEST_SUITE_P(Inputs, ReadingStop, testing::ValuesIn(Inputs));

} // namespace

} // namespace kiv::test
