#include "kivifc/Pictures/ApplicableSets.h"

#include "kiv/Kit/Documents/SetMembers.h"
#include "kivifc/Json/BytesJson.h"
#include "kivifc/Json/SetJson.h"
#include "kivifc/Program/OneLine.h"

#include <fmt/format.h>
#include <unordered_set>
#include <utility>

namespace kiv::kivifc {

namespace {

using ifc::def::SchemaPset;
using ifc::def::xml::SetDef;
using Sets = std::vector<const SetDef*>;

Sets withoutRepeats(const Sets& sets) {
    Sets once;
    std::unordered_set<const SetDef*> known;
    for (const auto* set : sets) {
        if (known.insert(set).second)
            once.push_back(set);
    }
    return once;
}

/// Whether a search by name finds a set of an earlier context instead.
bool isHidden(const SchemaPset& schema, const SetDef& set) {
    return schema.pXmlSetFromName(set.getName(), {}) != &set;
}

std::string sSetLine(const SchemaPset& schema, const SetDef& set) {
    return fmt::format("{}  {}, members: {}, applies to {}{}\n", sOneLine(set.getName()), kit::pSetKind(set),
                       kit::setMembers(set).size(), sOneLine(kit::sSetClasses(set)),
                       isHidden(schema, set) ? "; hidden by a set of an earlier context" : "");
}

} // namespace

std::vector<ApplicableGroup> applicableSets(const SchemaPset& schema, const ifc::def::schema::Entity& entity,
                                            const ApplicableOptions& options) {
    std::vector<ApplicableGroup> groups;
    schema.forEachDefinition(
        [&](const auto& context, const auto& definitions) {
            auto sets = withoutRepeats(
                options.isOwn ? definitions.getXmlSetsToEntity(entity, options.isUnrestricted)
                              : definitions.getXmlSetsAllToEntity(entity, options.isUnrestricted));
            if (!sets.empty())
                groups.push_back({context, std::move(sets)});
        },
        {});
    return groups;
}

std::string sApplicableSets(const SchemaPset& schema, const std::vector<ApplicableGroup>& groups,
                            const std::string& indent) {
    std::string text;
    for (const auto& group : groups) {
        text += indent + sContext(group.context) + '\n';
        for (const auto* set : group.sets)
            text += indent + "  " + sSetLine(schema, *set);
    }
    return text;
}

void vApplicableSetsWrite(const SchemaWithSets& loaded, const std::vector<ApplicableGroup>& groups,
                          JsonWriter& writer) {
    writer.vArrayBegin();
    for (const auto& group : groups) {
        for (const auto* set : group.sets) {
            vJsonWrite(withBytes({{"name", set->getName()},
                                  {"kind", set->pXmlElementName()},
                                  {"context", contextJson(group.context)},
                                  {"path", loaded.paths.at(set)},
                                  {"hidden", isHidden(*loaded.schema.schema, *set)}},
                                 "path"),
                       writer);
        }
    }
    writer.vArrayEnd();
}

} // namespace kiv::kivifc
