#include "kiv/Kit/Express/ExpressTypeText.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Kit/Express/DataTypeKinds.h"

#include <set>
#include <string_view>

namespace kiv::kit {

namespace {

using namespace ifc::def::schema;

std::string sBound(const Bound& bound) {
    return bound.state == Bound::State::Given ? std::to_string(bound.value) : "?";
}

template <class Names>
std::string sJoined(std::string text, const Names& names) {
    std::string_view separator;
    for (const auto& name : names) {
        text.append(separator).append(name);
        separator = ", ";
    }
    return text + ')';
}

std::string sDescription(const ObjectBase* object);

std::string sAggregate(const DataTypeBase& dataType, const DataTypeListInterface& aggregate) {
    std::string text(DataTypeKeywords.at(dataTypeIndex(dataType)));
    if (aggregate.getLowerBound().state != Bound::State::NotGiven)
        text += " [" + sBound(aggregate.getLowerBound()) + ":" + sBound(aggregate.getUpperBound()) + "]";
    const auto* list = dynamic_cast<const DataTypeList*>(&dataType);
    return text + (list && list->isUnique() ? " OF UNIQUE " : " OF ") + sDescription(aggregate.pElement());
}

/// One step: names stay names.
std::string sDescription(const ObjectBase* object) {
    if (!object)
        return "?";
    const auto* dataType = DataTypeBase::pFrom(object);
    if (!dataType)
        return std::string(object->getName());
    if (const auto* enumeration = dynamic_cast<const DataTypeEnum*>(dataType))
        return sJoined("ENUMERATION OF (", enumeration->getItems());
    if (const auto* select = dynamic_cast<const DataTypeSelect*>(dataType))
        return sJoined("SELECT (", select->getMemberNames());
    if (const auto* aggregate = DataTypeListInterface::pFrom(dataType))
        return sAggregate(*dataType, *aggregate);
    const auto* string = dynamic_cast<const DataTypeString*>(dataType);
    return std::string(dataType->getName()) + (string && string->isFixed() ? " FIXED" : "");
}

} // namespace

std::string sTypeResolved(const ObjectBase* object) {
    auto text = sDescription(object);
    // A schema may define types by each other.
    std::set<const ObjectBase*> seen;
    while (object && seen.insert(object).second) {
        if (const auto* type = Type::pFrom(object)) {
            object = type->pUnderlying();
            text += " = " + sDescription(object);
        } else if (DataTypeListInterface::pFrom(object)) {
            object = DataTypeBase::pFrom(object)->pBaseType();
            if (Type::pFrom(object))
                text += "; " + sDescription(object);
        } else {
            break;
        }
    }
    return text;
}

} // namespace kiv::kit
