#include "kivifc/Json/DataTypeJson.h"

#include "kivifc/Documents/DataTypeKinds.h"

namespace kiv::kivifc {

namespace {

using namespace ifc::def::schema;

Json boundJson(const Bound& bound) {
    switch (bound.state) {
    case Bound::State::Given:
        return bound.value;
    case Bound::State::Unbounded:
        return "?";
    case Bound::State::NotGiven:
        break;
    }
    return nullptr;
}

} // namespace

DataTypesJson::DataTypesJson(const Schema& schema) : schema_(schema) {
    for (const auto* dataType : schema.getDataTypes())
        places_.emplace(dataType, places_.size());
}

Json DataTypesJson::getReference(const ObjectBase* object) {
    if (!object)
        return nullptr;
    const auto* dataType = DataTypeBase::pFrom(object);
    if (!dataType)
        return {{"object", object->getName()}};
    if (const auto place = places_.find(dataType); place != places_.end())
        return {{"dataType", place->second}};
    shared_.try_emplace(std::string(dataType->getName()), getDescription(*dataType));
    return {{"shared", dataType->getName()}};
}

Json DataTypesJson::getChain(const ObjectBase* object) {
    Json chain = Json::array();
    while (object) {
        auto reference = getReference(object);
        const auto* dataType = DataTypeBase::pFrom(object);
        chain.push_back(dataType ? getDescription(*dataType) : std::move(reference));
        const auto* aggregate = DataTypeListInterface::pFrom(object);
        object = aggregate ? aggregate->pElement() : nullptr;
    }
    return chain;
}

Json DataTypesJson::getAll() {
    Json list = Json::array();
    for (const auto* dataType : schema_.getDataTypes())
        list.push_back(getDescription(*dataType));
    return list;
}

Json DataTypesJson::getShared() const {
    Json list = Json::array();
    for (const auto& [name, description] : shared_)
        list.push_back(description);
    return list;
}

Json DataTypesJson::getDescription(const DataTypeBase& dataType) {
    Json json{{"kind", DataTypeKeywords.at(dataTypeIndex(dataType))}, {"name", dataType.getName()}};
    if (const auto* string = dynamic_cast<const DataTypeString*>(&dataType)) {
        json["width"] = string->getWidth();
        json["fixed"] = string->isFixed();
    }
    if (const auto* binary = dynamic_cast<const DataTypeBinary*>(&dataType))
        json["width"] = binary->getWidth();
    if (const auto* enumeration = dynamic_cast<const DataTypeEnum*>(&dataType))
        json["items"] = enumeration->getItems();
    if (const auto* select = dynamic_cast<const DataTypeSelect*>(&dataType))
        vSelectDescribe(json, *select);
    if (const auto* aggregate = DataTypeListInterface::pFrom(&dataType))
        vAggregateDescribe(json, *aggregate);
    if (const auto* list = dynamic_cast<const DataTypeList*>(&dataType))
        json["unique"] = list->isUnique();
    return json;
}

void DataTypesJson::vSelectDescribe(Json& json, const DataTypeSelect& select) {
    json["memberNames"] = select.getMemberNames();
    json["members"] = Json::array();
    for (const auto* member : select.getMembers())
        json["members"].push_back(member->getName());
    json["allEntities"] = select.isAllEntities();
}

void DataTypesJson::vAggregateDescribe(Json& json, const DataTypeListInterface& aggregate) {
    json["lower"] = boundJson(aggregate.getLowerBound());
    json["upper"] = boundJson(aggregate.getUpperBound());
    json["elementText"] = aggregate.getElementText();
    json["element"] = getReference(aggregate.pElement());
}

} // namespace kiv::kivifc
