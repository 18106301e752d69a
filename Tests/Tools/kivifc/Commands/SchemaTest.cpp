#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/KivifcRun.h"

#include <algorithm>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

namespace kiv::kivifc::test {

namespace {

using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

/// A schema of these statements, in a file of its own.
std::string sSchemaWrite(const TemporaryFolder& folder, const std::string& statements) {
    return folder.sWrite("test.exp", "SCHEMA TEST;\n" + statements + "\nEND_SCHEMA;\n");
}

Run schemaRun(const std::string& statements, std::vector<std::string> options = {}) {
    const TemporaryFolder folder;
    options.insert(options.begin(), {"schema", sSchemaWrite(folder, statements)});
    return kivifcRun(options);
}

/// The line of the summary that begins with this label; empty when there is none.
std::string sSummaryLine(const Run& run, const std::string& label) {
    const auto lines = linesOf(run.out);
    const auto line = std::ranges::find_if(lines, [&](auto& each) { return each.starts_with(label + ' '); });
    return line == lines.end() ? std::string() : line->substr(17);
}

struct Unreadable {
    const char* name;
    std::string path;
    /// Why the file is not read; empty for what is a finding.
    std::string reason;
    std::string finding = {};
};

TEST(SchemaCommand, WhatIsNoSchemaFileIsNamedWithTheReason) {
    const TemporaryFolder folder;
    const Unreadable rows[] = {
        {"missing", folder.sPath("none.exp"), "No such file or directory"},
        {"a folder", folder.sPath(""), "Is a directory"},
        {"a reading error", "/proc/self/mem", "Input/output error"},
        {"empty", folder.sWrite("empty.exp", ""), "", "the file is empty [E001]\n"},
        {"no header", folder.sWrite("text.exp", "ENTITY A;\nEND_ENTITY;\n"), "",
         "no line has the keyword SCHEMA [E001]\nENTITY A;\n^\n"},
        {"header in a comment", folder.sWrite("comment.exp", "(*\nSCHEMA A;\n*)\n"), "",
         "no line has the keyword SCHEMA [E001]\n(*\n^\n"},
        {"lower case", folder.sWrite("lower.exp", "schema A;\nend_schema;\n"), "",
         "the keyword is written \"schema\" [E001]\nschema A;\n^~~~~~\n" + folder.sPath("lower.exp") +
             ":1:1: note: keywords are found in capitals only\n"},
        {"UTF-16", folder.sWrite("utf16.exp", std::string("\xFF\xFES\0C\0H\0\n\0", 10)), "",
         "the text is UTF-16 [E001]\nSCH\n^\n" + folder.sPath("utf16.exp") +
             ":1:1: note: save it as UTF-8\n"},
        {"exchange file", folder.sWrite("walls.ifc", "ISO-10303-21;\nFILE_SCHEMA(('IFC4'));\n"), "",
         "the file is an IFC model [E001]\nISO-10303-21;\n^\n"},
        {"a set document", folder.sWrite("set.xml", "<?xml version=\"1.0\"?>\n<PropertySetDef/>\n"), "",
         "the file is an XML document [E001]\n<?xml version=\"1.0\"?>\n^\n"},
        {"blank", folder.sWrite("blank.exp", " \n\t\n"), "",
         "there is nothing but white space in the file [E001]\n \n^\n"},
        {"an archive", folder.sWrite("zip.exp", std::string("PK\x03\x04\x14\0\0\0\x08\0", 10)), "",
         "the file is a ZIP archive [E001]\nPK\\x03\\x04\\x14\\x00\\x00\\x00\\x08\\x00\n^\n" +
             folder.sPath("zip.exp") + ":1:1: note: a schema is a text file in EXPRESS\n"},
        {"header without a name", folder.sWrite("nameless.exp", "SCHEMA ;\nEND_SCHEMA;\n"), "",
         "the last line that mentions SCHEMA counts, and gives no name [E001]\nSCHEMA ;\n^~~~~~\n"},
        {"open list", folder.sWrite("open.exp", "SCHEMA A;\nTYPE B = SELECT\n (C,\n"),
         "the schema ends in the middle of a list of names"},
        {"integer out of range",
         folder.sWrite("integer.exp",
                       "SCHEMA A;\nTYPE B = REAL;\n WHERE\n  W : SELF < 99999999999;\nEND_TYPE;\n"),
         "a literal of a WHERE rule is out of range: stoi argument out of range"},
        {"real out of range",
         folder.sWrite("real.exp", "SCHEMA A;\nTYPE B = REAL;\n WHERE\n  W : SELF < 1.0E999;\nEND_TYPE;\n"),
         "a literal of a WHERE rule is out of range: stod argument out of range"},
    };
    const std::string Summary = "1 error in the schema; no document was checked\n";
    for (const auto& row : rows) {
        for (const auto& command :
             std::vector<std::vector<std::string>>{{"schema", row.path}, {"check", row.path, "Sets"}}) {
            const auto run = kivifcRun(command);
            EXPECT_EQ(run.status, 2) << row.name;
            const auto finding = row.path + ":1:1: error: no schema was found: " + row.finding;
            const auto summary = command.front() == "check" ? Summary : "";
            EXPECT_EQ(run.out, row.finding.empty() ? "" : finding + summary) << row.name;
            EXPECT_EQ(run.err, row.reason.empty() ? "" : "kivifc: " + row.path + ": " + row.reason + "\n")
                << row.name;
        }
    }
}

TEST(SchemaCommand, SchemaWithoutDeclarationsIsOne) {
    const auto run = schemaRun("");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(sSummaryLine(run, "schema"), "TEST");
    EXPECT_EQ(sSummaryLine(run, "entities"), "0 (0 abstract)");
    EXPECT_EQ(sSummaryLine(run, "tree"), "0 roots, 0 levels");
    EXPECT_EQ(sSummaryLine(run, "data types"), "0");
}

TEST(SchemaCommand, SampleHasTheNumbersOfItsDescription) {
    const auto run = kivifcRun({"schema", "Building.exp"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(sSummaryLine(run, "schema"), "BUILDING1");
    EXPECT_EQ(sSummaryLine(run, "types"), "36");
    EXPECT_EQ(sSummaryLine(run, "entities"), "43 (9 abstract)");
    EXPECT_EQ(sSummaryLine(run, "functions"), "2");
    EXPECT_EQ(sSummaryLine(run, "rules"), "2");
    EXPECT_EQ(sSummaryLine(run, "attributes"),
              "75 explicit (33 optional), 8 inverse, 7 derived (3 redeclared)");
    EXPECT_EQ(sSummaryLine(run, "WHERE rules"), "30 parsed, 0 failed");
    EXPECT_EQ(sSummaryLine(run, "UNIQUE rules"), "4");
    EXPECT_EQ(sSummaryLine(run, "tree"), "5 roots, 5 levels");
    EXPECT_EQ(sSummaryLine(run, "assertions"), "0");
}

TEST(SchemaCommand, ReportsMakeStatusOne) {
    const auto run = kivifcRun({"schema", "Broken.exp"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(sSummaryLine(run, "WHERE rules"), HasSubstr("3 parsed, 5 failed"));
    EXPECT_EQ(sSummaryLine(run, "assertions"), "14 (--assertions lists them)");
    EXPECT_EQ(run.out.find("warning: Not type found"), std::string::npos)
        << "findings are listed, reports are not";
}

TEST(SchemaCommand, FindingsAreListedWithTheirLinesBelowTheNumbers) {
    const auto run = schemaRun("TYPE A = Nowhere;\nEND_TYPE;");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out,
                HasSubstr("test.exp:2:10: error: the type \"Nowhere\" of \"A\" is not declared [E013]\n"
                          "TYPE A = Nowhere;\n"
                          "         ^~~~~~~\n"));
}

TEST(SchemaCommand, WarningsAloneDoNotFailIt) {
    const auto run = schemaRun("TYPE A = REAL;\n WHERE\n\tW : SELF > ;\nEND_TYPE;");
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("test.exp:4:2: warning: the rule \"W\" of \"A\" cannot be read [E007]\n"));
}

TEST(SchemaCommand, ErrorsWithoutReportsAreMentionedBesideTheTree) {
    const auto run = schemaRun("ENTITY A;\n\tB : Nowhere;\nEND_ENTITY;", {"--tree"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "A\n");
    EXPECT_THAT(run.err, HasSubstr("has errors (kivifc schema lists them)\n"));
}

TEST(SchemaCommand, AFileWithoutASchemaHasALikelyReason) {
    const TemporaryFolder folder;
    const auto run = kivifcRun({"schema", folder.sWrite("lower.exp", "schema a;\nend_schema;\n"), "--json"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err,
                HasSubstr("no schema was found: the keyword is written \"schema\"; keywords are found in "
                          "capitals only\n"));
}

TEST(SchemaCommand, AssertionsAreListedOneLineEachWithTheRuleBelow) {
    const auto run = schemaRun(
        "TYPE A = Nowhere;\nEND_TYPE;\nTYPE B = REAL;\n WHERE\n\tW : SELF > ;\nEND_TYPE;", {"--assertions"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(sSummaryLine(run, "assertions"), "2") << "one who asked for them needs no hint";
    EXPECT_THAT(run.out,
                HasSubstr("test.exp: warning: Not type found (kiv::ifc::def::schema::Type::vUpdate)\n"));
    EXPECT_THAT(run.out, HasSubstr("at 1:14 (kiv::ifc::def::schema::Where::parseRules)\n"
                                   "    Rule:  W : SELF > ;\n"));
}

TEST(SchemaCommand, LastOfSeveralSchemasIsUsed) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("two.exp", "SCHEMA FIRST;\nTYPE A = Nowhere;\nEND_TYPE;\nEND_SCHEMA;\n"
                                               "SCHEMA SECOND;\nENTITY B;\nEND_ENTITY;\nEND_SCHEMA;\n");
    const auto run = kivifcRun({"schema", path});
    // The report about the first schema is none about the second.
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(sSummaryLine(run, "schema"), "SECOND");
    EXPECT_EQ(sSummaryLine(run, "types"), "0");
    EXPECT_EQ(sSummaryLine(run, "entities"), "1 (0 abstract)");
    EXPECT_EQ(run.err, "kivifc: " + path + ": holds 2 schemas (FIRST, SECOND); the last one is used\n");
}

TEST(SchemaCommand, LineEndsAndByteOrderMarkChangeNothing) {
    const auto expected = kivifcRun({"schema", "Building.exp", "--json"});
    std::string text = "\xEF\xBB\xBF";
    for (const auto& line : linesOf(sFileText(KIVIFC_SAMPLES "/Building.exp")))
        text += line + "\r\n";
    const TemporaryFolder folder;
    const auto run = kivifcRun({"schema", folder.sWrite("dos.exp", text), "--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, expected.out);
}

TEST(SchemaTree, ShowsSubtypesThatNoListNames) {
    const auto run = kivifcRun({"schema", "Building.exp", "--tree", "BldElement"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "BldElement (abstract)\n"
                       "|-- BldDoor\n"
                       "|-- BldFlowPart (abstract)\n"
                       "|   |-- BldDuct\n"
                       "|   `-- BldPipe\n"
                       "|-- BldStair\n"
                       "`-- BldWall\n"
                       "    `-- BldStandardWall\n");
}

TEST(SchemaTree, EntityIsFoundInAnyLetterCase) {
    EXPECT_EQ(kivifcRun({"schema", "Building.exp", "--tree", "bldUNIT"}).out, "BldUnit\n`-- BldBaseUnit\n");
}

TEST(SchemaTree, FileMayFollowTheOptionWithoutAnEntity) {
    const auto run = kivifcRun({"schema", "--tree", "Building.exp"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, kivifcRun({"schema", "Building.exp", "--tree"}).out);
}

TEST(SchemaTree, UnknownEntityIsAFailureWithASuggestion) {
    struct Row {
        const char* entity;
        const char* reason;
    };
    const Row rows[] = {
        {"BldWal", "no entity \"BldWal\"; did you mean \"BldWall\"?"},
        {"BldPipes", "no entity \"BldPipes\"; did you mean \"BldPipe\"?"},
        {"Xyz", "no entity \"Xyz\""},
        {"BldLabel", "\"BldLabel\" is no entity"},
        {"BldProduct", "\"BldProduct\" is no entity"},
    };
    for (const auto& row : rows) {
        const auto run = kivifcRun({"schema", "Building.exp", "--tree", row.entity});
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, std::string("kivifc: Building.exp: ") + row.reason + "\n");
    }
}

TEST(SchemaTree, ReportsAreMentioned) {
    const auto run = kivifcRun({"schema", "Broken.exp", "--tree"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "BrkBase\n`-- BrkHouse\nBrkOrphan\nBrkQuiet\n");
    EXPECT_EQ(run.err, "kivifc: Broken.exp: reports made while it was read: 14 (--assertions lists them)\n");
}

/// A line of inheritance: E1, E2 SUBTYPE OF (E1), ...
std::string sInheritanceLine(std::size_t length) {
    std::string text = "ENTITY E1;\nEND_ENTITY;\n";
    for (std::size_t number = 2; number <= length; ++number)
        text += fmt::format("ENTITY E{};\n SUBTYPE OF (E{});\nEND_ENTITY;\n", number, number - 1);
    return text;
}

TEST(SchemaTree, LongLineOfInheritanceIsDrawnWithoutEndlessIndentation) {
    const auto run = schemaRun(sInheritanceLine(20'000), {"--tree"});
    EXPECT_EQ(run.status, 0);
    const auto lines = linesOf(run.out);
    ASSERT_THAT(lines, SizeIs(20'000));
    EXPECT_EQ(lines[0], "E1");
    EXPECT_EQ(lines[1], "`-- E2");
    EXPECT_EQ(lines[2], "    `-- E3");
    // 40 levels below the top are indented; what is deeper stays in that column and shows its level.
    EXPECT_EQ(lines[40], std::string(156, ' ') + "`-- E41");
    EXPECT_EQ(lines[41], std::string(156, ' ') + "`-- (42) E42");
    EXPECT_EQ(lines[19'999], std::string(156, ' ') + "`-- (20000) E20000");
}

TEST(SchemaTree, DrawingGoesOnAfterADeepLine) {
    const auto run =
        schemaRun(sInheritanceLine(50) + "ENTITY F;\n SUBTYPE OF (E2);\nEND_ENTITY;", {"--tree"});
    const auto lines = linesOf(run.out);
    ASSERT_THAT(lines, SizeIs(51));
    EXPECT_EQ(lines[2], "    |-- E3");
    EXPECT_EQ(lines[3], "    |   `-- E4");
    EXPECT_EQ(lines[49], "    |" + std::string(151, ' ') + "`-- (50) E50");
    EXPECT_EQ(lines[50], "    `-- F");
}

TEST(SchemaCommand, LongLineOfInheritanceIsCounted) {
    EXPECT_EQ(sSummaryLine(schemaRun(sInheritanceLine(20'000)), "tree"), "1 root, 20000 levels");
    EXPECT_EQ(sSummaryLine(schemaRun("ENTITY A;\nEND_ENTITY;"), "tree"), "1 root, 1 level");
}

/// The objects of the JSON of one kind.
std::size_t kindCount(const json& schema, const char* kind) {
    const auto& objects = schema["objects"];
    return static_cast<std::size_t>(
        std::ranges::count_if(objects, [&](const json& object) { return object["kind"] == kind; }));
}

/// How many elements the member of all objects has together.
std::size_t memberCount(const json& schema, const char* member) {
    std::size_t count = 0;
    for (const auto& object : schema["objects"]) {
        if (object.contains(member))
            count += object[member].size();
    }
    return count;
}

TEST(SchemaJson, SampleIsWhole) {
    const auto run = kivifcRun({"schema", "Building.exp", "--json"});
    ASSERT_EQ(run.status, 0);
    const auto schema = json::parse(run.out);
    EXPECT_EQ(schema["name"], "BUILDING1");
    EXPECT_EQ(schema["assertions"], json::array());
    EXPECT_EQ(kindCount(schema, "Type"), 36U);
    EXPECT_EQ(kindCount(schema, "Entity"), 43U);
    EXPECT_EQ(kindCount(schema, "Function"), 2U);
    EXPECT_EQ(kindCount(schema, "Rule"), 2U);
    EXPECT_EQ(memberCount(schema, "attributes"), 75U);
    EXPECT_EQ(memberCount(schema, "attributesInverse"), 8U);
    EXPECT_EQ(memberCount(schema, "derive"), 7U);
    EXPECT_EQ(memberCount(schema, "unique"), 4U);
    EXPECT_EQ(memberCount(schema, "bodyLines"), 2U + 10U + 3U + 5U);
    std::size_t rules = 0;
    for (const auto& object : schema["objects"])
        rules += object.value("where", json()).is_null() ? 0 : object["where"]["rules"].size();
    EXPECT_EQ(rules, 30U);
}

TEST(SchemaJson, AssertionsOfTheBrokenSampleAreThoseOfItsDescription) {
    const auto run = kivifcRun({"schema", "Broken.exp", "--json"});
    EXPECT_EQ(run.status, 1);
    const auto schema = json::parse(run.out);
    const auto& assertions = schema["assertions"];
    ASSERT_THAT(assertions, SizeIs(14));
    EXPECT_EQ(assertions[0], json({{"code", 0},
                                   {"message", "Type not found"},
                                   {"function", "kiv::ifc::def::schema::DataTypeListBase<9>::vUpdate"},
                                   {"file", "Source/Format/Ifc/Def/Schema/IfcSchemaDataType"},
                                   {"line", 228}}));
    EXPECT_EQ(assertions[13]["function"], "kiv::ifc::def::schema::AttributeInverse::vUpdate");
    std::vector<int> lines;
    for (const auto& assertion : assertions) {
        if (assertion["function"] == "kiv::ifc::def::schema::Entity::vUpdate")
            lines.push_back(assertion["line"].get<int>());
    }
    std::ranges::sort(lines);
    EXPECT_THAT(lines, ElementsAre(316, 325));
}

TEST(SchemaJson, WhatIsNotFoundIsNull) {
    const auto schema =
        json::parse(schemaRun("ENTITY A;\n SUBTYPE OF (Nowhere);\n  B : LIST [1:2] OF Nothing;\n"
                              " DERIVE\n  SELF\\X.Y : REAL := 1.0;\n INVERSE\n"
                              "  C : SET OF A FOR Missing;\nEND_ENTITY;",
                              {"--json"})
                        .out);
    const auto& entity = schema["objects"][0];
    EXPECT_EQ(entity["supertypeName"], "Nowhere");
    EXPECT_EQ(entity["supertype"], nullptr);
    EXPECT_EQ(entity["attributes"][0]["types"][0]["element"], nullptr);
    EXPECT_EQ(entity["derive"][0]["redeclared"], nullptr);
    EXPECT_EQ(entity["attributesInverse"][0]["referredEntity"], "A");
    EXPECT_EQ(entity["attributesInverse"][0]["referredAttribute"], nullptr);
    EXPECT_EQ(entity["where"], nullptr);
    EXPECT_EQ(entity["unique"], nullptr);
}

TEST(SchemaJson, BytesThatAreNotUtf8LeaveItValid) {
    const auto run = schemaRun("ENTITY W\xE4nde;\nEND_ENTITY;", {"--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(json::parse(run.out)["objects"][0]["name"], "W\xEF\xBF\xBDnde");
}

TEST(SchemaJson, LongChainOfOperatorsIsOneFlatList) {
    // OR and || are one operator in the tree, but of different productions.
    for (const std::vector<std::string>& operators :
         {std::vector<std::string>{"-"}, {"*", " || "}, {"+", " OR ", " XOR "}}) {
        std::string rule = "TYPE A = REAL;\n WHERE\n  W : 1";
        for (std::size_t operand = 1; operand < 100'000; ++operand)
            rule += operators[operand % operators.size()] + "1";
        const auto run = schemaRun(rule + ";\nEND_TYPE;", {"--json"});
        ASSERT_EQ(run.status, 0) << operators.front();
        const auto schema = json::parse(run.out);
        const auto& expression = schema["objects"][0]["where"]["rules"][0]["expression"];
        EXPECT_THAT(expression["operands"], SizeIs(100'000)) << operators.front();
        EXPECT_THAT(expression["operators"], SizeIs(99'999)) << operators.front();
    }
}

TEST(SchemaJson, LongChainOfQualifiersIsOneFlatList) {
    std::string rule = "TYPE A = REAL;\n WHERE\n  W : x";
    for (int qualifier = 0; qualifier < 100'000; ++qualifier)
        rule += ".y";
    const auto run = schemaRun(rule + ";\nEND_TYPE;", {"--json"});
    ASSERT_EQ(run.status, 0);
    const auto schema = json::parse(run.out);
    EXPECT_THAT(schema["objects"][0]["where"]["rules"][0]["expression"]["qualifiers"], SizeIs(100'000));
}

TEST(SchemaJson, DeeplyNestedRuleIsWritten) {
    // As deep as the parser goes; each pair of parentheses adds a relation, a sum, a product and a power.
    constexpr int Depth = 255;
    std::string rule = "TYPE Deep = REAL;\n WHERE\n  W : ";
    for (int level = 0; level < Depth; ++level)
        rule += "a < b + c * d ** (";
    const auto run = schemaRun(rule + "1" + std::string(Depth, ')') + ";\nEND_TYPE;", {"--json"});
    ASSERT_EQ(run.status, 0);
    const auto schema = json::parse(run.out);
    const auto* node = &schema["objects"][0]["where"]["rules"][0]["expression"];
    int nodes = 0;
    for (; (*node)["node"] == "BinaryExpression"; ++nodes)
        node = &(*node)["operands"].back();
    EXPECT_EQ(nodes, 4 * Depth);
    EXPECT_EQ((*node)["value"], 1);
}

} // namespace

} // namespace kiv::kivifc::test
