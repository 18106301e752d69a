#include "RealData/RealData.h"
#include "Support/AssertCollector.h"
#include "Support/ModelText.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <sstream>

namespace kiv::test {

namespace {

using namespace ifc::def::schema;

class SchemaRealDataTest : public RealDataTest {
protected:
    static std::string sSchema(std::string_view name) {
        for (const auto& path : schemaPaths()) {
            if (path.stem() == name)
                return sText(path);
        }
        ADD_FAILURE() << "no schema " << name;
        return {};
    }
};

std::string sWithLineEnd(const std::string& text, std::string_view end) {
    std::istringstream in(text);
    std::string result;
    for (std::string line; std::getline(in, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        result += line;
        result += end;
    }
    return result;
}

/// How many lines of the text begin with the keyword: in real schemas each statement begins its line.
std::size_t linesThatBegin(const std::string& text, std::string_view keyword) {
    std::istringstream in(text);
    std::size_t count = 0;
    for (std::string line; std::getline(in, line);)
        count += line.starts_with(keyword) ? 1U : 0U;
    return count;
}

template <class Object>
std::size_t countOf(const Schema& schema) {
    std::size_t count = 0;
    for (const auto* const object : schema.getObjects())
        count += dynamic_cast<const Object*>(object) ? 1U : 0U;
    return count;
}

/// The word of letters, digits and "_" at the start of a text.
std::string sWord(std::string_view text) {
    const auto end =
        std::find_if(text.begin(), text.end(), [](unsigned char c) { return !std::isalnum(c) && c != '_'; });
    return {text.begin(), end};
}

/// The name that a line declares, when it begins a statement of this keyword; else what was there before.
std::string sOwner(const std::string& line, std::string_view keyword, std::string before) {
    return line.starts_with(keyword) ? sWord(std::string_view(line).substr(keyword.size())) : before;
}

/// The label of the rule that begins on the line; empty when none does.
std::string sLabel(const std::string& line) {
    const auto start = line.find_first_not_of(" \t");
    if (start == 0 || start == std::string::npos)
        return {};
    const auto word = sWord(std::string_view(line).substr(start));
    return !word.empty() && line.compare(start + word.size(), 3, " : ") == 0 ? word : std::string();
}

/// The labels of the rules in each WHERE clause, by owner, found by the layout that all real schemas share: a
/// rule begins on a line with its label and " :", a clause ends with its statement.
std::map<std::string, std::vector<std::string>> labelsByOwner(const std::string& text) {
    std::map<std::string, std::vector<std::string>> labels;
    std::istringstream in(sWithLineEnd(text, "\n"));
    std::string owner;
    bool inWhere = false;
    for (std::string line; std::getline(in, line);) {
        owner = sOwner(line, "TYPE ", sOwner(line, "ENTITY ", owner));
        inWhere = (inWhere || line.starts_with(" WHERE")) && line.find("END_") == std::string::npos;
        if (inWhere && !sLabel(line).empty())
            labels[owner].push_back(sLabel(line));
    }
    return labels;
}

const Where* pWhereOf(const ObjectBase& object) {
    if (const auto* const entity = Entity::pFrom(&object))
        return entity->pWhere();
    const auto* const type = Type::pFrom(&object);
    return type ? type->pWhere() : nullptr;
}

/// How often the rules of an object are parsed: types once for themselves and once for each type that
/// resolves through them.
std::size_t timesResolved(const ObjectBase& object) {
    const auto* const type = Type::pFrom(&object);
    return type ? 1 + type->getDerivedTypes().size() : 1;
}

std::vector<std::string> labelsOf(const Where& where) {
    std::vector<std::string> labels;
    for (const auto& rule : where.getRules())
        labels.emplace_back(rule.label);
    return labels;
}

} // namespace

TEST_F(SchemaRealDataTest, EverySchemaLoadsWithAllItsStatements) {
    for (const auto& path : schemaPaths()) {
        SCOPED_TRACE(path);
        const auto text = sText(path);
        const auto schema = schemaFromWholeText(text);
        ASSERT_TRUE(schema);
        EXPECT_EQ(countOf<Entity>(*schema), linesThatBegin(text, "ENTITY "));
        EXPECT_EQ(countOf<Type>(*schema), linesThatBegin(text, "TYPE "));
        EXPECT_EQ(countOf<Function>(*schema), linesThatBegin(text, "FUNCTION "));
        EXPECT_EQ(countOf<Rule>(*schema), linesThatBegin(text, "RULE "));
    }
}

TEST_F(SchemaRealDataTest, NamesAreThoseOfTheHeader) {
    EXPECT_EQ(schemaFromWholeText(sSchema("IFC4_ADD2"))->getName(), "IFC4");
    EXPECT_EQ(schemaFromWholeText(sSchema("IFC2X3_TC1"))->getName(), "IFC2X3");
}

/// Both schemas qualify the result of a schema's function, "IfcCrossProduct(Axis,RefDirection).Magnitude",
/// which is more than the parser takes; nothing else in them is left unresolved.
TEST_F(SchemaRealDataTest, TheOneReportOfEachSchemaIsTheQualifiedCall) {
    for (const auto* name : {"IFC4_ADD2", "IFC2X3_TC1"}) {
        SCOPED_TRACE(name);
        const AssertCollector reports;
        const auto schema = schemaFromWholeText(sSchema(name));
        ASSERT_EQ(reports.getMessages().size(), 1U);
        const auto message = reports.getMessages().front();
        EXPECT_TRUE(message.starts_with(
            "Got SyntaxError when parsing an express rule: Expected token RIGHT_PAREN but "
            "got DOT at 4:"))
            << message;
        EXPECT_NE(message.find("IfcCrossProduct(Axis,RefDirection).Magnitude > 0.0"), std::string::npos)
            << message;
    }
}

TEST_F(SchemaRealDataTest, EveryRuleIsAccountedFor) {
    for (const auto* name : {"IFC4_ADD2", "IFC2X3_TC1"}) {
        SCOPED_TRACE(name);
        const auto text = sSchema(name);
        const auto schema = schemaFromWholeText(text);
        auto labels = labelsByOwner(text);
        // The rule with the qualified call and the one after it are not parsed.
        labels.at("IfcAxis2Placement3D").resize(3);
        for (const auto* const object : schema->getObjects()) {
            SCOPED_TRACE(object->getName());
            const auto* const where = pWhereOf(*object);
            const auto& ownLabels = labels[std::string(object->getName())];
            std::vector<std::string> expected;
            for (std::size_t time = 0; time < timesResolved(*object); ++time)
                expected.insert(expected.end(), ownLabels.begin(), ownLabels.end());
            EXPECT_EQ(where ? labelsOf(*where) : std::vector<std::string>(), expected);
        }
    }
}

TEST_F(SchemaRealDataTest, LineEndsAndByteOrderMarkMakeNoDifference) {
    for (const auto& path : schemaPaths()) {
        SCOPED_TRACE(path);
        const auto text = sText(path);
        const auto withLineFeeds = sWithLineEnd(text, "\n");
        const auto expected = sModelText(*schemaFromWholeText(withLineFeeds));
        EXPECT_GT(expected.size(), 100000U);
        EXPECT_EQ(sModelText(*schemaFromWholeText(sWithLineEnd(text, "\r\n"))), expected);
        EXPECT_EQ(sModelText(*schemaFromWholeText("\xEF\xBB\xBF" + withLineFeeds)), expected);
    }
}

TEST_F(SchemaRealDataTest, EveryAttributeOfAnIfc4EntityHasAType) {
    const auto schema = schemaFromWholeText(sSchema("IFC4_ADD2"));
    for (const auto* const object : schema->getObjects()) {
        const auto* const entity = Entity::pFrom(object);
        if (!entity)
            continue;
        for (const auto& attribute : entity->getAttributes())
            EXPECT_TRUE(attribute.pFirstType()) << entity->getName() << '.' << attribute.getName();
        for (const auto& attribute : entity->getAttributesInverse())
            EXPECT_TRUE(attribute.pReferredAttribute()) << entity->getName() << '.' << attribute.getName();
    }
}

TEST_F(SchemaRealDataTest, NumbersAgreeWithTheLineOfSupertypes) {
    const auto schema = schemaFromWholeText(sSchema("IFC4_ADD2"));
    const auto& product = entityOf(*schema, "IfcProduct");
    std::size_t below = 0;
    for (const auto* const object : schema->getObjects()) {
        const auto* const entity = Entity::pFrom(object);
        if (!entity)
            continue;
        const bool inside = product.getFirstNumber() <= entity->getFirstNumber() &&
                            entity->getFirstNumber() <= product.getLastNumber();
        EXPECT_EQ(inside, entity->isSameOrSubtypeOf(product)) << entity->getName();
        below += inside ? 1U : 0U;
    }
    EXPECT_GT(below, 100U);
}

} // namespace kiv::test
