#include "kiv/Kit/Documents/SetCollection.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Kit/Documents/SetDocument.h"

#include <memory>
#include <utility>

namespace kiv::kit {

namespace {

using ifc::def::xml::SetDef;

std::string sNamed(const SetDef& set) {
    return "the set \"" + std::string(set.getName()) + "\" is ";
}

/// Why a set was refused: the record that decided it is the last one.
std::string sRefusal(const SetDef& set, const ifc::def::xml::XmlSetErrors& errors) {
    const auto& record = errors.getRecords().back();
    return sNamed(set) + "refused: " + record.item + ": " + record.message;
}

} // namespace

void vSetAdd(SetCollection& collection, const ifc::def::schema::Schema& schema, SetDocument document) {
    auto& problems = collection.problems;
    if (document.failure) {
        auto reason = document.failure->reason;
        problems.push_back({std::move(document.path), std::move(reason), std::move(document.failure)});
        return;
    }
    auto set = document.takeSet();
    const auto& added = *set;
    if (const auto* present = collection.definitions.getXmlSetFromName(added.getName())) {
        problems.push_back(
            {std::move(document.path),
             sNamed(added) + "left out: " + collection.paths.at(present) + " has one of that name",
             std::nullopt});
        return;
    }
    // Assigned, as a set that was dropped for want of memory may have been in the same place.
    const auto place = collection.paths.insert_or_assign(&added, std::move(document.path)).first;
    if (collection.definitions.xmlSetAdd(schema, std::move(set), document.errors))
        return;
    problems.push_back({std::move(place->second), sRefusal(added, document.errors), std::nullopt});
    collection.paths.erase(place);
}

SetCollection setCollectionRead(const ifc::def::schema::Schema& schema,
                                const std::vector<std::string>& documents, const ReadOptions& options) {
    SetCollection collection;
    auto withoutPositions = options;
    withoutPositions.withPositions = false;
    for (const auto& path : documents)
        vSetAdd(collection, schema, setDocumentRead(path, withoutPositions));
    return collection;
}

} // namespace kiv::kit
