#include "kivifc/TypeCommand.h"

#include "Format/Ifc/Def/PropertyNameSearcher.h"
#include "Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kivifc/MissingName.h"
#include "kivifc/OneLine.h"
#include "kivifc/SetMembers.h"
#include "kivifc/Store.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

using ifc::def::SchemaPset;
using ifc::def::schema::Entity;

constexpr const char* Footer =
    "A question is Set.Member or Entity.Attribute, as in Pset_WallCommon.IsExternal or IfcWall.Name. An\n"
    "argument that is an existing path, or NAME=PATH, is sets; any other one is a question.\n"
    "\n"
    "Exit status: 0 all questions have a value, 1 some have none, 2 a file could not be read or an argument "
    "is\n"
    "neither sets nor a question.";

/// Paths that do not exist are told apart from questions: names have no strokes, and questions have a dot.
bool isQuestion(const std::string& argument) {
    return argument.find('.') != std::string::npos && argument.find('/') == std::string::npos;
}

std::string sNoMember(const ifc::def::xml::SetDef& set, std::string_view member) {
    std::vector<std::string_view> names;
    for (const auto* def : setMembers(set))
        names.push_back(def->getName());
    if (std::ranges::find(names, member) != names.end())
        return "what is of its kind has no single type";
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
    auto names = setNames(schema);
    const auto entities = entityNames(schema);
    names.insert(names.end(), entities.begin(), entities.end());
    return sNoName("set or entity", owner, names);
}

} // namespace

void TypeCommand::vOptionsAdd(CLI::App& app) {
    app.add_option("FILE", schemaPath_, "The schema file")->required();
    app.add_option("SETS... QUESTION", arguments_, SetsDescription)->required();
    app.add_flag("--json", jsonAsked_, "Write the answers as JSON");
    app.footer(Footer);
}

void TypeCommand::vRun(Console& console) {
    std::vector<std::string> questions = arguments_;
    const auto middle = std::ranges::stable_partition(questions, isSetsArgument);
    const std::vector<std::string> sets(questions.begin(), middle.begin());
    questions.erase(questions.begin(), middle.begin());
    if (questions.empty())
        return console.diagnostics.vFail("command line", "a question is missing; see kivifc type --help");
    const auto store = storeRead(schemaPath_, sets, console.diagnostics);
    if (!store)
        return;
    Json answers = Json::array();
    for (const auto& question : questions) {
        if (!isQuestion(question)) {
            console.diagnostics.vFail(question, "neither an existing path nor a question such as Set.Member");
            continue;
        }
        const auto type = ifc::findPropertyTypeName(question, *store->schema.schema);
        if (jsonAsked_)
            answers.push_back({{"question", question}, {"type", type ? Json(*type) : Json(nullptr)}});
        else
            console.output.vWrite(
                fmt::format("{}  {}\n", sOneLine(question), sOneLine(type.value_or("no value"))));
        if (type)
            continue;
        console.diagnostics.vFinding();
        console.diagnostics.vNote(question, sNoValue(*store->schema.schema, question));
    }
    if (jsonAsked_)
        vJsonWrite(answers, console.output);
}

} // namespace kiv::kivifc
