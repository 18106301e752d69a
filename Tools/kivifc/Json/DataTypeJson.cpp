#include "kivifc/Json/DataTypeJson.h"

#include "kiv/Kit/Express/DataTypeKinds.h"

namespace kiv::kivifc {

namespace {

using namespace ifc::def::schema;

void vBoundWrite(std::string_view key, const Bound& bound, JsonWriter& writer) {
    switch (bound.state) {
    case Bound::State::Given:
        return writer.vMember(key, bound.value);
    case Bound::State::Unbounded:
        return writer.vMember(key, "?");
    case Bound::State::NotGiven:
        return writer.vMember(key, nullptr);
    }
}

} // namespace

DataTypesJson::DataTypesJson(const Schema& schema, JsonWriter& writer) : schema_(schema), writer_(writer) {
    places_.reserve(schema.getDataTypes().size());
    for (const auto* dataType : schema.getDataTypes())
        places_.emplace(dataType, places_.size());
}

void DataTypesJson::vReferenceWrite(const ObjectBase* object) {
    if (!object)
        return writer_.vValue(nullptr);
    writer_.vObjectBegin();
    const auto* dataType = DataTypeBase::pFrom(object);
    const auto place = dataType ? places_.find(dataType) : places_.end();
    if (!dataType)
        writer_.vMember("object", object->getName());
    else if (place != places_.end())
        writer_.vMember("dataType", place->second);
    else
        writer_.vMember("shared", dataType->getName());
    writer_.vObjectEnd();
    vSharedNote(dataType);
}

void DataTypesJson::vChainWrite(const ObjectBase* object) {
    writer_.vArrayBegin();
    while (object) {
        const auto* dataType = DataTypeBase::pFrom(object);
        if (dataType)
            vDescriptionWrite(*dataType);
        else
            vReferenceWrite(object);
        vSharedNote(dataType);
        const auto* aggregate = DataTypeListInterface::pFrom(object);
        object = aggregate ? aggregate->pElement() : nullptr;
    }
    writer_.vArrayEnd();
}

void DataTypesJson::vAllWrite() {
    writer_.vArrayBegin();
    for (const auto* dataType : schema_.getDataTypes())
        vDescriptionWrite(*dataType);
    writer_.vArrayEnd();
}

void DataTypesJson::vSharedWrite() {
    writer_.vArrayBegin();
    for (const auto& [name, dataType] : shared_)
        vDescriptionWrite(*dataType);
    writer_.vArrayEnd();
}

/// Shared are the data types that are not in the list of the schema.
bool DataTypesJson::isShared(const DataTypeBase& dataType) const {
    return !places_.contains(&dataType);
}

/// Keeps what is shared, and what that refers to, for the end; null is possible.
void DataTypesJson::vSharedNote(const ObjectBase* object) {
    while (const auto* dataType = DataTypeBase::pFrom(object)) {
        if (!isShared(*dataType) || !shared_.try_emplace(dataType->getName(), dataType).second)
            return;
        const auto* aggregate = DataTypeListInterface::pFrom(dataType);
        object = aggregate ? aggregate->pElement() : nullptr;
    }
}

void DataTypesJson::vDescriptionWrite(const DataTypeBase& dataType) {
    writer_.vObjectBegin();
    writer_.vMember("kind", kit::DataTypeKeywords.at(kit::dataTypeIndex(dataType)));
    writer_.vMember("name", dataType.getName());
    if (const auto* string = dynamic_cast<const DataTypeString*>(&dataType)) {
        writer_.vMember("width", string->getWidth());
        writer_.vMember("fixed", string->isFixed());
    } else if (const auto* binary = dynamic_cast<const DataTypeBinary*>(&dataType)) {
        writer_.vMember("width", binary->getWidth());
    } else if (const auto* enumeration = dynamic_cast<const DataTypeEnum*>(&dataType)) {
        writer_.vMembers("items", enumeration->getItems());
    } else if (const auto* select = dynamic_cast<const DataTypeSelect*>(&dataType)) {
        vSelectWrite(*select);
    } else if (const auto* aggregate = DataTypeListInterface::pFrom(&dataType)) {
        vAggregateWrite(*aggregate);
        if (const auto* list = dynamic_cast<const DataTypeList*>(&dataType))
            writer_.vMember("unique", list->isUnique());
    }
    writer_.vObjectEnd();
}

void DataTypesJson::vSelectWrite(const DataTypeSelect& select) {
    writer_.vMembers("memberNames", select.getMemberNames());
    writer_.vKey("members");
    writer_.vArrayBegin();
    for (const auto* member : select.getMembers())
        writer_.vValue(member->getName());
    writer_.vArrayEnd();
    writer_.vMember("allEntities", select.isAllEntities());
}

void DataTypesJson::vAggregateWrite(const DataTypeListInterface& aggregate) {
    vBoundWrite("lower", aggregate.getLowerBound(), writer_);
    vBoundWrite("upper", aggregate.getUpperBound(), writer_);
    writer_.vMember("elementText", aggregate.getElementText());
    writer_.vKey("element");
    vReferenceWrite(aggregate.pElement());
}

} // namespace kiv::kivifc
