#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include "Base/Metered.h"
#include "Base/NameHash.h"
#include "Base/Words8.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "Format/Ifc/Def/Schema/IfcSchemaModel.h"
#include "Format/Ifc/Def/Schema/ResolutionOrder.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <algorithm>
#include <cstdint>
#include <istream>
#include <span>

namespace kiv::ifc::def::schema {

namespace {

using AttributeEntry = NameDirectory<const Attribute>::Entry;

/// How many of the attributes are of entities that are resolved before the one of this name.
std::size_t countBefore(std::span<const AttributeEntry> entries, std::string_view name) {
    const ResolutionKey key{upperNameHash(name), name};
    const auto end = std::partition_point(entries.begin(), entries.end(), [&](const AttributeEntry& entry) {
        const auto& entity = entry.value->getEntity();
        return isResolvedBefore({entity.getNameUpperHash(), entity.getNameUpper()}, key);
    });
    return static_cast<std::size_t>(end - entries.begin());
}

} // namespace

Schema::Schema(std::istream& stream, const std::string& headerLine, std::size_t schemaPos) :
    model_(std::make_unique<Model>()) {
    SchemaBuilder(*this, nullptr).vBuild(stream, headerLine, schemaPos);
}

Schema::Schema(std::istream& stream, const std::string& headerLine, std::size_t schemaPos,
               BudgetMeter& meter) {
    const BudgetMeter::Reading reading(meter);
    meter.vPieceBegin();
    vMemoryTake(&meter, sizeof(Model));
    model_ = std::make_unique<Model>();
    SchemaBuilder(*this, &meter).vBuild(stream, headerLine, schemaPos);
}

Schema::~Schema() = default;

std::string_view Schema::getName() const {
    return model_->name;
}

const ObjectBase* Schema::pObjectFromName(std::string_view name) const {
    return model_->objectTable.pFindUpper(name);
}

const ObjectBase* Schema::pObjectFromName(const ObjectName& name) const {
    return model_->objectTable.pFind(name.getView());
}

const Attribute* Schema::pAttributeGet(const std::string& entityName,
                                       const std::string& attributeName) const {
    auto entries = model_->attributesDirectory.find(attributeName);
    // Attributes of one name are in the order in which their entities were resolved.
    if (entries.size() > FewInBucket)
        entries = entries.subspan(countBefore(entries, entityName));
    for (const auto& entry : entries.first(std::min(entries.size(), FewInBucket))) {
        if (isUpperOf(entityName, entry.value->getEntity().getNameUpper()))
            return entry.value;
    }
    return nullptr;
}

std::vector<std::reference_wrapper<const Attribute>>
Schema::attributesGet(const std::string& attributeName) const {
    const auto found = model_->attributesDirectory.find(attributeName);
    std::vector<std::reference_wrapper<const Attribute>> attributes;
    attributes.reserve(found.size());
    for (const auto& entry : found)
        attributes.emplace_back(*entry.value);
    return attributes;
}

std::vector<const DataTypeBase*> Schema::getDataTypes() const {
    std::vector<const DataTypeBase*> types;
    types.reserve(model_->dataTypes.size());
    for (const auto& type : model_->dataTypes)
        types.push_back(type.get());
    return types;
}

std::vector<const DataTypeBase*> Schema::getSharedDataTypes() const {
    std::vector<const DataTypeBase*> types;
    for (const auto& type : model_->sharedTypes) {
        if (type)
            types.push_back(type.get());
    }
    return types;
}

std::vector<std::reference_wrapper<const Attribute>> Schema::getAttributesByName() const {
    std::vector<std::reference_wrapper<const Attribute>> attributes;
    const auto entries = model_->attributesDirectory.getEntries();
    attributes.reserve(entries.size());
    for (const auto& entry : entries)
        attributes.emplace_back(*entry.value);
    std::stable_sort(attributes.begin(), attributes.end(), [](const Attribute& left, const Attribute& right) {
        return left.getNameUpper() < right.getNameUpper();
    });
    return attributes;
}

std::span<const ObjectBase* const> Schema::getObjects() const {
    return model_->objectsAsRead;
}

std::span<const ObjectBase* const> Schema::getObjectsByName() const {
    return model_->objectsByName;
}

namespace {

using SchemaFactory = std::function<Schema*(std::istream&, const std::string&, std::size_t)>;

Schema* pHeadersRead(std::istream& stream, const SchemaFactory& factory, WorkMeter* meter) {
    Schema* result = nullptr;
    ReadLineHelper line(meter);
    bool inComment = false;
    for (bool first = true; line.boNextLine(stream); first = false) {
        if (first)
            line.vByteOrderMarkRemove();
        if (meter)
            meter->vPieceBegin();
        const auto text = line.getLine();
        // Comments are recognised at the start of a line only; one that opens and closes on its line is not
        // skipped.
        if (!inComment && text.starts_with("(*"))
            inComment = text.find("*)") == std::string::npos;
        else if (text.starts_with("*)"))
            inComment = false;
        const auto pos = inComment ? std::string::npos : text.find("SCHEMA");
        if (pos != std::string::npos) {
            MeteredScope held(meter);
            held.vTake(text.size());
            result = factory(stream, std::string(text), pos);
        }
    }
    return result;
}

} // namespace

Schema* pStepStreamRead(std::istream& stream,
                        std::function<Schema*(std::istream&, const std::string&, std::size_t)> factory) {
    return pHeadersRead(stream, factory, nullptr);
}

Schema* pStepStreamRead(std::istream& stream,
                        std::function<Schema*(std::istream&, const std::string&, std::size_t)> factory,
                        BudgetMeter& meter) {
    const BudgetMeter::Reading reading(meter);
    meter.vPieceBegin();
    return pHeadersRead(stream, factory, &meter);
}

} // namespace kiv::ifc::def::schema
