#include "kivifc/Pictures/SchemaSummary.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Kit/Express/DataTypeKinds.h"
#include "kivifc/Pictures/TextTable.h"
#include "kivifc/Program/OneLine.h"

#include <algorithm>
#include <fmt/format.h>
#include <numeric>

namespace kiv::kivifc {

namespace {

using namespace ifc::def::schema;

template <typename Range, typename Test>
std::size_t countOf(const Range& range, Test test) {
    return static_cast<std::size_t>(std::ranges::count_if(range, test));
}

void vWhereCount(SchemaCounts& counts, const Where* where) {
    if (where)
        counts.whereRules += where->getRules().size();
}

void vEntityCount(SchemaCounts& counts, const Entity& entity) {
    ++counts.entities;
    counts.entitiesAbstract += entity.isAbstract() ? 1U : 0U;
    counts.attributes += entity.getAttributes().size();
    counts.attributesOptional +=
        countOf(entity.getAttributes(), [](auto& each) { return each.isOptional(); });
    counts.attributesInverse += entity.getAttributesInverse().size();
    if (const auto* derive = entity.pDerive()) {
        counts.attributesDerived += derive->getValues().size();
        counts.attributesRedeclared +=
            countOf(derive->getValues(), [](auto& value) { return value.pRedeclared() != nullptr; });
    }
    if (const auto* unique = entity.pUnique())
        counts.uniqueRules += unique->getRules().size();
    vWhereCount(counts, entity.pWhere());
}

void vObjectCount(SchemaCounts& counts, const ObjectBase& object) {
    switch (object.getKind()) {
    case ObjectBase::Type::Type:
        ++counts.types;
        return vWhereCount(counts, Type::pFrom(&object)->pWhere());
    case ObjectBase::Type::Entity:
        return vEntityCount(counts, *Entity::pFrom(&object));
    case ObjectBase::Type::Function:
        ++counts.functions;
        return;
    case ObjectBase::Type::Rule:
        ++counts.rules;
        return;
    case ObjectBase::Type::DataType:
        return;
    }
}

bool isRuleFailure(const kit::Assertion& record) {
    return record.message.starts_with("Got SyntaxError when parsing an express rule: ");
}

std::string sDataTypes(const SchemaCounts& counts) {
    auto text = fmt::format("{}", std::reduce(counts.dataTypes.begin(), counts.dataTypes.end()));
    std::string_view separator = ": ";
    for (std::size_t kind = 0; kind < counts.dataTypes.size(); ++kind) {
        if (counts.dataTypes[kind] == 0)
            continue;
        text += fmt::format("{}{} {}", separator, counts.dataTypes[kind], kit::DataTypeKeywords[kind]);
        separator = ", ";
    }
    return text;
}

std::string sWhereRules(const SchemaCounts& counts) {
    return fmt::format(
        "{} parsed, {} failed{}", counts.whereRules, counts.whereRulesFailed,
        counts.whereRulesFailed == 0 ? "" : " (each ends its clause: rules behind it are not read)");
}

std::string sAttributes(const SchemaCounts& counts) {
    return fmt::format("{} explicit ({} optional), {} inverse, {} derived ({} redeclared)", counts.attributes,
                       counts.attributesOptional, counts.attributesInverse, counts.attributesDerived,
                       counts.attributesRedeclared);
}

std::string sAssertions(std::size_t count, bool areListed) {
    return fmt::format("{}{}", count, count == 0 || areListed ? "" : " (--assertions lists them)");
}

std::string sCounted(std::size_t count, std::string_view thing) {
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

} // namespace

SchemaCounts schemaCounts(const SchemaFile& file, const InheritanceTree& tree) {
    SchemaCounts counts;
    for (const auto* object : file.schema->getObjects())
        vObjectCount(counts, *object);
    for (const auto* dataType : file.schema->getDataTypes())
        ++counts.dataTypes.at(kit::dataTypeIndex(*dataType));
    counts.whereRulesFailed = countOf(file.assertions, isRuleFailure);
    counts.roots = tree.getRoots().size();
    counts.depth = tree.getDepth();
    return counts;
}

std::string sSchemaSummary(const SchemaFile& file, const InheritanceTree& tree, bool areAssertionsListed) {
    const auto counts = schemaCounts(file, tree);
    return sTableLine("schema", sOneLine(file.schema->getName())) +
           sTableLine("types", fmt::format("{}", counts.types)) +
           sTableLine("entities", fmt::format("{} ({} abstract)", counts.entities, counts.entitiesAbstract)) +
           sTableLine("functions", fmt::format("{}", counts.functions)) +
           sTableLine("rules", fmt::format("{}", counts.rules)) +
           sTableLine("attributes", sAttributes(counts)) + sTableLine("data types", sDataTypes(counts)) +
           sTableLine("WHERE rules", sWhereRules(counts)) +
           sTableLine("UNIQUE rules", fmt::format("{}", counts.uniqueRules)) +
           sTableLine("tree", sCounted(counts.roots, "root") + ", " + sCounted(counts.depth, "level")) +
           sTableLine("assertions", sAssertions(file.assertions.size(), areAssertionsListed)) +
           sTableLine("time", sMilliseconds(file.time));
}

} // namespace kiv::kivifc
