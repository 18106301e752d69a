#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Kit/Documents/SetMembers.h"
#include "kiv/Kit/Names/KnownNames.h"
#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/LookUpArguments.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Documents/SchemaWithSets.h"
#include "kivifc/Json/Json.h"
#include "kivifc/Pictures/MissingName.h"
#include "kivifc/Program/OneLine.h"

#include <algorithm>
#include <fmt/format.h>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

// `kivifc type`: which type the value of a property, quantity or attribute has.
namespace kiv::kivifc {

namespace {

using ifc::def::SchemaPset;
using ifc::def::schema::Entity;

constexpr const char* TypeFooter =
    "A question is Set.Member or Entity.Attribute, as in Pset_WallCommon.IsExternal or IfcWall.Name. An\n"
    "argument that is an existing path, or NAME=PATH, means sets; any other one is a question.\n"
    "\n"
    "Exit status: 0 all questions have a value, 1 some have none, 2 a file could not be read or an argument\n"
    "is neither sets nor a question.";

/// Distinguishes questions from paths that do not exist: a question has a dot, and a slash only after the
/// name of a set or an entity that exists.
bool isQuestion(const std::string& argument, const SchemaPset& schema) {
    const auto dot = argument.find('.');
    if (dot == std::string::npos)
        return false;
    if (argument.find('/') == std::string::npos)
        return true;
    const auto owner = argument.substr(0, dot);
    return schema.pXmlSetFromName(owner, {}) || schema.pObjectFromName(owner);
}

std::string sNoMember(const ifc::def::xml::SetDef& set, std::string_view member) {
    std::vector<std::string_view> names;
    for (const auto* def : kit::setMembers(set)) {
        if (def->getName() == member)
            return def->getEntityName().empty() ? "it has no type" : "what is of its kind has no single type";
        names.push_back(def->getName());
    }
    return sNoName("member", member, names);
}

std::string sNoAttribute(const Entity& entity, std::string_view attribute) {
    std::vector<std::string_view> names;
    for (const auto* each = &entity; each; each = each->pSupertype()) {
        for (const auto& declared : each->getAttributes())
            names.push_back(declared.getName());
    }
    if (std::ranges::find(names, attribute) != names.end())
        return "its type is not known to the schema";
    if (const auto* inverse = entity.pAttributeInverseFromName(std::string(attribute), true))
        return fmt::format("\"{}\" is an inverse attribute, {} FOR {}; only explicit ones have a value",
                           inverse->getName(), inverse->getTypeText(), inverse->getForAttributeName());
    return sNoName("attribute", attribute, names);
}

std::string sNoValue(const SchemaPset& schema, const std::string& question) {
    const auto dot = question.find('.');
    const auto owner = question.substr(0, dot);
    const auto member = std::string_view(question).substr(dot + 1);
    if (const auto* set = schema.pXmlSetFromName(owner, {}))
        return sNoMember(*set, member);
    if (const auto* entity = Entity::pFrom(schema.pObjectFromName(owner)))
        return sNoAttribute(*entity, member);
    auto names = kit::setNames(schema);
    const auto entities = kit::entityNames(schema);
    names.insert(names.end(), entities.begin(), entities.end());
    return sNoName("set or entity", owner, names);
}

/// The line of an answer. The name of a type may be empty in a document, which is a value all the same.
std::string sAnswer(const std::string& question, const std::optional<std::string>& type) {
    const auto text = type && type->empty() ? R"("")" : sOneLine(type.value_or("no value"));
    return fmt::format("{}  {}\n", sOneLine(question), text);
}

class TypeCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    /// Sets and questions.
    LookUpArguments arguments_;
};

} // namespace

void TypeCommand::vOptionsAdd(CLI::App& app) {
    const Options options(app);
    arguments_.vOptionsAdd(app, "SETS... QUESTION", "Write the answers as JSON");
    options.vFooter(TypeFooter);
}

void TypeCommand::vRun(Console& console) {
    std::vector<std::string> questions = arguments_.words;
    const auto middle = std::stable_partition(questions.begin(), questions.end(), isSetsArgument);
    const std::vector<std::string> sets(questions.begin(), middle);
    questions.erase(questions.begin(), middle);
    if (questions.empty())
        return console.diagnostics.vFail("command line", "a question is missing; see kivifc type --help");
    const auto loaded = schemaWithSetsRead(arguments_.schemaPath, sets, console.diagnostics);
    if (!loaded)
        return;
    Json answers = Json::array();
    for (const auto& question : questions) {
        if (!isQuestion(question, *loaded->schema.schema)) {
            console.diagnostics.vFail(question, "neither an existing path nor a question such as Set.Member");
            continue;
        }
        const auto type = ifc::findPropertyTypeName(question, *loaded->schema.schema);
        if (arguments_.isJsonAsked)
            answers.push_back({{"question", question}, {"type", type ? Json(*type) : Json(nullptr)}});
        else
            console.output.vWrite(sAnswer(question, type));
        if (type)
            continue;
        console.diagnostics.vFinding();
        console.diagnostics.vNote(question, sNoValue(*loaded->schema.schema, question));
    }
    if (arguments_.isJsonAsked)
        vJsonWrite(answers, console.output);
}

std::unique_ptr<Command> pTypeCommand() {
    return std::make_unique<TypeCommand>();
}

} // namespace kiv::kivifc
