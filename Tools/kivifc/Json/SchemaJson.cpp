#include "kivifc/Json/SchemaJson.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kivifc/Json/DataTypeJson.h"
#include "kivifc/Json/ExpressionJson.h"

#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kivifc {

namespace {

using namespace ifc::def::schema;

Json headJson(const char* kind, const ObjectBase& object) {
    return {{"kind", kind},
            {"name", object.getName()},
            {"nameUpper", object.getNameUpper()},
            {"nameHash", object.getNameHash()},
            {"nameUpperHash", object.getNameUpperHash()}};
}

Json nameOf(const ObjectBase* object) {
    return object ? Json(object->getName()) : Json(nullptr);
}

/// The names of the objects, in order.
template <typename Objects>
Json namesJson(const Objects& objects) {
    Json names = Json::array();
    for (const auto* object : objects)
        names.push_back(object->getName());
    return names;
}

Json linesJson(const std::vector<std::string_view>& lines) {
    return Json(lines);
}

/// An attribute by the entity that declares it.
Json attributeReference(const Attribute* attribute) {
    if (!attribute)
        return nullptr;
    return {{"entity", attribute->getEntity().getName()}, {"attribute", attribute->getName()}};
}

Json whereJson(const Where* where) {
    if (!where)
        return nullptr;
    Json rules = Json::array();
    for (const auto& rule : where->getRules())
        rules.push_back({{"label", rule.label.getView()}, {"expression", expressionJson(*rule.expression)}});
    return {{"lines", linesJson(where->getLines())}, {"rules", std::move(rules)}};
}

Json uniqueJson(const Unique* unique) {
    if (!unique)
        return nullptr;
    Json rules = Json::array();
    for (const auto& rule : unique->getRules())
        rules.push_back({{"label", rule.label}, {"attributes", rule.attributeNames}});
    return rules;
}

Json deriveJson(const Derive* derive) {
    if (!derive)
        return nullptr;
    Json values = Json::array();
    for (const auto& value : derive->getValues()) {
        values.push_back({{"name", value.getName()},
                          {"rest", value.getRest()},
                          {"redeclared", attributeReference(value.pRedeclared())}});
    }
    return values;
}

/// Turns objects into JSON; keeps what is known of the data types on the way.
class Writer {
public:
    explicit Writer(const Schema& schema) : dataTypes_(schema) {}

    Json getJson(const ObjectBase& object) {
        if (const auto* type = Type::pFrom(&object))
            return typeJson(*type);
        if (const auto* entity = Entity::pFrom(&object))
            return entityJson(*entity);
        if (const auto* function = dynamic_cast<const Function*>(&object))
            return bodyJson("Function", *function);
        return bodyJson("Rule", dynamic_cast<const Rule&>(object));
    }

    DataTypesJson& getDataTypes() { return dataTypes_; }

private:
    Json typeJson(const Type& type) {
        auto json = headJson("Type", type);
        json["underlyingText"] = type.getUnderlyingText();
        json["underlyingKeyword"] = type.getUnderlyingKeyword();
        json["underlying"] = dataTypes_.getChain(type.pUnderlying());
        json["dataType"] = dataTypes_.getReference(type.pDataType());
        json["where"] = whereJson(type.pWhere());
        json["derivedTypes"] = namesJson(type.getDerivedTypes());
        return json;
    }

    Json entityJson(const Entity& entity) {
        auto json = headJson("Entity", entity);
        json["supertype"] = nameOf(entity.pSupertype());
        json["abstract"] = entity.isAbstract();
        json["supertypeOfNames"] = entity.getSupertypeOfNames();
        json["subtypes"] = namesJson(entity.getSubtypes());
        json["supertypeName"] = entity.getSupertypeName();
        json["attributes"] = Json::array();
        for (const auto& attribute : entity.getAttributes())
            json["attributes"].push_back(attributeJson(attribute));
        json["attributesInverse"] = Json::array();
        for (const auto& attribute : entity.getAttributesInverse())
            json["attributesInverse"].push_back(inverseJson(attribute));
        json["where"] = whereJson(entity.pWhere());
        json["unique"] = uniqueJson(entity.pUnique());
        json["derive"] = deriveJson(entity.pDerive());
        json["firstNumber"] = entity.getFirstNumber();
        json["lastNumber"] = entity.getLastNumber();
        return json;
    }

    Json attributeJson(const AttributeBase& attribute) {
        return {
            {"name", attribute.getName()},         {"nameUpper", attribute.getNameUpper()},
            {"nameHash", attribute.getNameHash()}, {"optional", attribute.isOptional()},
            {"typeText", attribute.getTypeText()}, {"types", dataTypes_.getChain(attribute.pFirstType())}};
    }

    Json inverseJson(const AttributeInverse& attribute) {
        auto json = attributeJson(attribute);
        json["forAttribute"] = attribute.getForAttributeName();
        json["referredEntity"] = nameOf(attribute.pReferredEntity());
        json["referredAttribute"] = attributeReference(attribute.pReferredAttribute());
        return json;
    }

    template <typename Class>
    static Json bodyJson(const char* kind, const Class& object) {
        auto json = headJson(kind, object);
        json["bodyLines"] = linesJson(object.getBodyLines());
        return json;
    }

    DataTypesJson dataTypes_;
};

} // namespace

Json schemaJson(const SchemaFile& file) {
    Writer writer(*file.schema);
    Json objects = Json::array();
    for (const auto* object : file.schema->getObjects())
        objects.push_back(writer.getJson(*object));
    Json dataTypes = writer.getDataTypes().getAll();
    return {{"name", file.schema->getName()},
            {"objects", std::move(objects)},
            {"dataTypes", std::move(dataTypes)},
            {"sharedDataTypes", writer.getDataTypes().getShared()},
            {"assertions", assertionsJson(file.assertions)}};
}

} // namespace kiv::kivifc
