// Every limit at the last value that passes and at the first that does not, on a usual stack and on a small
// one. All that is read is destroyed there too.
//
// `maxTokenSize` is looked at between two blocks only and its last value is exact where one ends; it is
// tested with smaller ones in Host/Xml/KivXmlParserTest.cpp.

#include "kiv/Format/Ifc/Def/IfcLimits.h"

#include "Host/Xml/KivXmlRecords.h"
#include "Robustness/Growth/GrowthRow.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "Support/SmallStack.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def;
using namespace ifc::def::limits;

// Our own document model keeps what the list says of documents; a host's own need not.
static_assert(limits::maxElementDepth == kiv::xml::maxElementDepth);
static_assert(limits::maxDeclaredAttributes == kiv::xml::maxDeclaredAttributes);
static_assert(limits::maxDefaultAttributeSize == kiv::xml::maxDefaultAttributeSize);
static_assert(limits::maxTokenSize == kiv::xml::maxTokenSize);

std::string sNested(std::string_view open, std::string_view middle, std::string_view close,
                    std::size_t times) {
    return sTimes(open, times).append(middle) + sTimes(close, times);
}

/// A limit, and what comes of a text that keeps it and of one that does not.
struct LimitRow {
    std::string name;
    std::function<std::string()> within;
    std::string withinIs;
    std::function<std::string()> beyond;
    std::string beyondIs;
};

using Rows = std::vector<LimitRow>;

// ---- Schema texts

/// What was reported, each up to its first line and place.
std::string sReports(const AssertCollector& reports) {
    std::string text;
    for (const auto& message : reports.getMessages())
        text += message.substr(0, message.find(" at "));
    return text;
}

/// The number of rules that were read and what was reported, for an expression as the only rule.
std::string sRules(const std::string& expression) {
    AssertCollector reports;
    const auto schema = schemaFromText("ENTITY Known;\n WHERE\n  WR1 : " + expression + ";\nEND_ENTITY;");
    return std::to_string(entityOf(*schema, "Known").pWhere()->getRules().size()) + " rules" +
           sReports(reports);
}

void vExpressionRowsAdd(Rows& rows) {
    constexpr std::string_view Opened[][2] = {{"(", ")"},
                                              {"- ", ""},
                                              {"+", ""},
                                              {"NOT ", ""},
                                              {"[", "]"},
                                              {"[1:", "]"},
                                              {"Other(", ")"},
                                              {"Known(", ")"},
                                              {"QUERY(x <* ", " | b)"},
                                              {"QUERY(x <* b | ", ")"},
                                              {"b[", "]"},
                                              {"b[1:", "]"},
                                              {"{", " < b < c}"},
                                              {"{b < c <= ", "}"}};
    const auto read = [](std::string_view open, std::string_view close, std::size_t levels) {
        return [=] { return sRules(sNested(open, "a", close, levels)); };
    };
    for (const auto& [open, close] : Opened)
        rows.push_back({"expression " + std::string(open), read(open, close, ExpressionNestingMax), "1 rules",
                        read(open, close, ExpressionNestingMax + 1),
                        "0 rulesGot SyntaxError when parsing an express rule: Unexpected token"});
}

/// How many aggregates are inside each other below the type, what the innermost holds, and what was
/// reported.
std::string sAggregates(const std::string& statement) {
    AssertCollector reports;
    const auto schema = schemaFromText(statement);
    const auto* type = schema::Type::pFrom(schema->getObjects().front());
    const schema::ObjectBase* object =
        type ? type->pDataType() : entityOf(*schema, "X").getAttributes().front().pFirstType();
    std::size_t levels = 0;
    for (; const auto* aggregate = schema::DataTypeListInterface::pFrom(object); ++levels)
        object = aggregate->pElement();
    return std::to_string(levels) + (object ? " of " + std::string(object->getName()) : "") +
           sReports(reports);
}

void vAggregateRowsAdd(Rows& rows) {
    struct Statement {
        std::string_view open;
        std::string_view close;
    };
    constexpr Statement Statements[] = {{"TYPE T = ", ";\nEND_TYPE;"},
                                        {"ENTITY X;\n  A : ", ";\nEND_ENTITY;"}};
    for (const auto& statement : Statements)
        for (const std::string_view aggregate : {"LIST OF ", "SET [0:?] OF ", "ARRAY [1:2] OF "}) {
            const auto read = [=](std::size_t levels) {
                return [=] {
                    return sAggregates(std::string(statement.open) + sNested(aggregate, "REAL", "", levels) +
                                       std::string(statement.close));
                };
            };
            rows.push_back({std::string(statement.open) + std::string(aggregate), read(AggregateNestingMax),
                            "256 of REAL", read(AggregateNestingMax + 1), "257Type not found"});
        }
}

/// The numbers of the last of that many entities of one tree.
std::string sLastNumbers(std::uint64_t count) {
    std::string list;
    std::string text;
    for (std::uint64_t i = 1; i != count; ++i) {
        const auto name = "E" + std::to_string(i);
        list.append("\n,").append(name);
        text.append("ENTITY ").append(name).append("\n SUBTYPE OF (Root);\nEND_ENTITY;\n");
    }
    const auto schema =
        schemaFromText("ENTITY Root\n SUPERTYPE OF (ONEOF (" + list + "));\nEND_ENTITY;\n" + text);
    const auto& last = entityOf(*schema, "E" + std::to_string(count - 1));
    return std::to_string(last.getFirstNumber()) + ".." + std::to_string(last.getLastNumber()) +
           (last.isSameOrSubtypeOf(entityOf(*schema, "Root")) ? " below Root" : "");
}

std::string sUpperBound(const std::string& number) {
    const auto schema = schemaFromText("TYPE T = LIST [0:" + number + "] OF REAL;\nEND_TYPE;");
    return std::to_string(
        schema::DataTypeListInterface::pFrom(typeOf(*schema, "T").pDataType())->getUpperBound().value);
}

template <class DataType>
std::string sWidth(const std::string& keyword, const std::string& number) {
    const auto schema = schemaFromText("TYPE T = " + keyword + "(" + number + ");\nEND_TYPE;");
    return std::to_string(dynamic_cast<const DataType&>(*typeOf(*schema, "T").pDataType()).getWidth());
}

std::string sNumberRead(const std::string& number) {
    try {
        return sRules(number);
    } catch (const std::out_of_range& failure) {
        return failure.what();
    }
}

void vNumberRowsAdd(Rows& rows) {
    rows.push_back({"numbers of entities", [] { return sLastNumbers(EntityNumberMax); },
                    "65535..65535 below Root", [] { return sLastNumbers(EntityNumberMax + 1); },
                    "0..0 below Root"});
    rows.push_back({"bound", [] { return sUpperBound(std::to_string(BoundMax)); }, "4294967295",
                    [] { return sUpperBound(std::to_string(BoundMax + 1)); }, "4294967295"});
    rows.push_back({"width of STRING",
                    [] { return sWidth<schema::DataTypeString>("STRING", std::to_string(WidthMax)); },
                    "18446744073709551615",
                    [] { return sWidth<schema::DataTypeString>("STRING", "18446744073709551616"); },
                    "18446744073709551615"});
    rows.push_back({"width of BINARY",
                    [] { return sWidth<schema::DataTypeBinary>("BINARY", std::to_string(WidthMax)); },
                    "18446744073709551615",
                    [] { return sWidth<schema::DataTypeBinary>("BINARY", "18446744073709551616"); },
                    "18446744073709551615"});
    rows.push_back({"number in a rule", [] { return sNumberRead(std::to_string(IntegerLiteralMax)); },
                    "1 rules", [] { return sNumberRead(std::to_string(IntegerLiteralMax + 1)); },
                    "stoi argument out of range"});
    // The largest double is 2 to the power of 1024 less 2 to the power of 970; half of the latter more is not
    // below it.
    rows.push_back({"number with a point in a rule", [] { return sNumberRead("1.7976931348623158E308"); },
                    "1 rules", [] { return sNumberRead("1.7976931348623159E308"); },
                    "stod argument out of range"});
}

// ---- XML documents

/// The reason why the text is refused; "read" when it is not.
std::string sXmlRead(const std::string& text) {
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    std::istringstream stream(text);
    return file.parse(stream, "", nullptr) ? "read" : file.pError()->reason;
}

/// How many levels of elements a document has in the end to which that many are appended, each below the
/// last.
std::string sLevelsWritten(std::size_t levels) {
    XmlTarget target("e");
    auto element = target.root();
    for (std::size_t i = 1; i != levels; ++i)
        element = element.ElementNodeAppend("e");
    const auto text = target.sText();
    std::size_t count = 0;
    for (auto at = text.find("<e"); at != std::string::npos; at = text.find("<e", at + 1))
        ++count;
    return std::to_string(count);
}

/// Sixteen elements, to which an attribute that they do not write adds about a sixteenth of that many bytes
/// each, and one to which another attribute adds the rest.
std::string sDefaults(std::size_t bytes) {
    constexpr std::size_t Count = 16;
    const auto value = [](std::size_t size) {
        return std::string(size - sizeof(kiv::xml::AttributeRecord) - 1, 'x');
    };
    const auto bytesEach = bytes / (Count + 1);
    return "<!DOCTYPE r [<!ATTLIST e b CDATA '" + value(bytesEach) + "'><!ATTLIST f b CDATA '" +
           value(bytes - Count * bytesEach) + "'>]><r>" + sTimes("<e/>", Count) + "<f/></r>";
}

std::size_t levelsOf(const pset::PropertyDef& property) {
    std::size_t levels = 0;
    const auto* at = &property;
    while (const auto* complex = dynamic_cast<const pset::TypeComplexProperty*>(at->pType())) {
        ++levels;
        if (complex->getProperties().empty())
            break;
        at = &complex->getProperties().front();
    }
    return levels;
}

/// How deep the complex properties of a set nest that was read, checked and written.
std::string sComplexProperties(std::size_t levels) {
    const auto text = "<PropertySetDef><PropertyDefs>" +
                      sNested("<PropertyDef><PropertyType><TypeComplexProperty>", "",
                              "</TypeComplexProperty></PropertyType></PropertyDef>", levels) +
                      "</PropertyDefs></PropertySetDef>";
    const auto reason = sXmlRead(text);
    if (reason != "read")
        return reason;
    ifc::def::xml::XmlSetErrors errors;
    const pset::PropertySetDef set(XmlFromText(text).root(), errors);
    set.checkForErrors(*schemaFromText(""), errors);
    XmlTarget target("PropertySetDef");
    set.exportDef(target.root(), nullptr);
    return std::to_string(levelsOf(set.getProperties().front())) + " levels";
}

void vXmlRowsAdd(Rows& rows) {
    const std::string tooDeep = "elements are nested deeper than 256 levels";
    rows.push_back({"elements", [] { return sXmlRead(sNested("<e>", "", "</e>", maxElementDepth)); }, "read",
                    [] { return sXmlRead(sNested("<e>", "", "</e>", maxElementDepth + 1)); }, tooDeep});
    rows.push_back({"elements that a program appends", [] { return sLevelsWritten(maxElementDepth); }, "256",
                    [] { return sLevelsWritten(maxElementDepth + 1); }, "256"});
    const auto declared = [](std::size_t count) {
        return sXmlRead("<!DOCTYPE e [<!ATTLIST e" + sTimes(" b CDATA #IMPLIED", count) + ">]><e/>");
    };
    rows.push_back({"declared attributes", [=] { return declared(maxDeclaredAttributes); }, "read",
                    [=] { return declared(maxDeclaredAttributes + 1); },
                    "the document type declares more than 1000 attributes"});
    rows.push_back({"default attribute values", [] { return sXmlRead(sDefaults(maxDefaultAttributeSize)); },
                    "read", [] { return sXmlRead(sDefaults(maxDefaultAttributeSize + 1)); },
                    "default attribute values add more than 16 MiB"});
    rows.push_back({"complex properties", [] { return sComplexProperties(ComplexPropertyNestingMax); },
                    "84 levels", [] { return sComplexProperties(ComplexPropertyNestingMax + 1); }, tooDeep});
}

Rows allRows() {
    Rows rows;
    vExpressionRowsAdd(rows);
    vAggregateRowsAdd(rows);
    vNumberRowsAdd(rows);
    vXmlRowsAdd(rows);
    return rows;
}

void vAllExpect() {
    for (const auto& row : allRows()) {
        EXPECT_EQ(row.within(), row.withinIs) << row.name;
        EXPECT_EQ(row.beyond(), row.beyondIs) << row.name;
    }
}

TEST(LimitsTest, TheLastValuePassesAndTheNextDoesNot) {
    vAllExpect();
}

TEST(LimitsTest, TheLastValuePassesAndTheNextDoesNotOnASmallStack) {
    onSmallStack(vAllExpect);
}

// ---- What has no limit needs no stack

/// Asks what follows chains that the text makes long.
void vChainsFollow(const schema::Schema& schema) {
    const auto& first = *schema.getObjects().front();
    if (const auto* entity = schema::Entity::pFrom(schema.getObjects().back())) {
        EXPECT_EQ(entity->pAttributeFromName(schema::AttributeName("missing"), true), nullptr);
    }
    const auto* type = schema::Type::pFrom(&first);
    const auto* select = type ? dynamic_cast<const schema::DataTypeSelect*>(type->pDataType()) : nullptr;
    if (select) {
        EXPECT_FALSE(select->isCompatible(first));
    }
}

TEST(LimitsTest, WhatHasNoLimitNeedsNoStack) {
    constexpr std::size_t Long = 100000;
    const std::string rule = "ENTITY X;\n WHERE\n  WR1 : ";
    std::vector<std::string> texts = {
        rule + "a" + sTimes(" + a", Long) + ";\nEND_ENTITY;",
        rule + "a" + sTimes(".a", Long) + ";\nEND_ENTITY;",
        rule + "a" + sTimes("[1]", Long) + ";\nEND_ENTITY;",
        rule + sTimes("(", Long) + ";\nEND_ENTITY;",
        "TYPE T = " + sTimes("LIST OF ", Long) + "REAL;\nEND_TYPE;",
    };
    std::string entities = "ENTITY E0;\nEND_ENTITY;\n";
    std::string types;
    std::string selects;
    for (std::size_t i = 1; i <= 20000; ++i) {
        const auto number = std::to_string(i);
        const auto last = std::to_string(i - 1);
        entities.append("ENTITY E" + number + "\n SUPERTYPE OF (ONEOF (E" + std::to_string(i + 1) +
                        "))\n SUBTYPE OF (E" + last + ");\nEND_ENTITY;\n");
        types.append("TYPE T" + last + " = T" + number + ";\nEND_TYPE;\n");
        selects.append("TYPE S" + last + " = SELECT (S" + number + ");\nEND_TYPE;\n");
    }
    texts.insert(texts.end(), {entities, types, selects});
    onSmallStack([&] {
        for (const auto& text : texts)
            vChainsFollow(*schemaFromText(text));
    });
}

} // namespace

} // namespace kiv::test
