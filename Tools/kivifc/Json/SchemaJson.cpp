#include "kivifc/Json/SchemaJson.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kivifc/Json/DataTypeJson.h"
#include "kivifc/Json/ExpressionJson.h"
#include "kivifc/Json/Json.h"
#include "kivifc/Json/JsonWriter.h"

#include <string_view>
#include <vector>

namespace kiv::kivifc {

namespace {

using namespace ifc::def::schema;

/// Writes objects; keeps what is known of the data types on the way.
class Writer {
public:
    Writer(const Schema& schema, JsonWriter& writer) : writer_(writer), dataTypes_(schema, writer) {}

    void vObjectWrite(const ObjectBase& object) {
        writer_.vObjectBegin();
        if (const auto* type = Type::pFrom(&object))
            vTypeWrite(*type);
        else if (const auto* entity = Entity::pFrom(&object))
            vEntityWrite(*entity);
        else if (const auto* function = dynamic_cast<const Function*>(&object))
            vBodyWrite("Function", *function);
        else
            vBodyWrite("Rule", dynamic_cast<const Rule&>(object));
        writer_.vObjectEnd();
    }

    DataTypesJson& getDataTypes() { return dataTypes_; }

private:
    void vHeadWrite(const char* kind, const ObjectBase& object) {
        writer_.vMember("kind", kind);
        writer_.vMember("name", object.getName());
        writer_.vMember("nameUpper", object.getNameUpper());
        writer_.vMember("nameHash", object.getNameHash());
        writer_.vMember("nameUpperHash", object.getNameUpperHash());
    }

    void vTypeWrite(const Type& type) {
        vHeadWrite("Type", type);
        writer_.vMember("underlyingText", type.getUnderlyingText());
        writer_.vMember("underlyingKeyword", type.getUnderlyingKeyword());
        vChainWrite("underlying", type.pUnderlying());
        writer_.vKey("dataType");
        dataTypes_.vReferenceWrite(type.pDataType());
        vWhereWrite(type.pWhere());
        vNamesWrite("derivedTypes", type.getDerivedTypes());
    }

    void vEntityWrite(const Entity& entity) {
        vHeadWrite("Entity", entity);
        vNameWrite("supertype", entity.pSupertype());
        writer_.vMember("abstract", entity.isAbstract());
        writer_.vMembers("supertypeOfNames", entity.getSupertypeOfNames());
        vNamesWrite("subtypes", entity.getSubtypes());
        writer_.vMember("supertypeName", entity.getSupertypeName());
        vAttributesWrite("attributes", entity.getAttributes());
        vAttributesWrite("attributesInverse", entity.getAttributesInverse());
        vWhereWrite(entity.pWhere());
        vUniqueWrite(entity.pUnique());
        vDeriveWrite(entity.pDerive());
        writer_.vMember("firstNumber", entity.getFirstNumber());
        writer_.vMember("lastNumber", entity.getLastNumber());
    }

    template <typename Class>
    void vBodyWrite(const char* kind, const Class& object) {
        vHeadWrite(kind, object);
        writer_.vMembers("bodyLines", object.getBodyLines());
    }

    template <typename Attributes>
    void vAttributesWrite(std::string_view key, const Attributes& attributes) {
        writer_.vKey(key);
        writer_.vArrayBegin();
        for (const auto& attribute : attributes) {
            writer_.vObjectBegin();
            vAttributeWrite(attribute);
            writer_.vObjectEnd();
        }
        writer_.vArrayEnd();
    }

    void vAttributeWrite(const AttributeBase& attribute) {
        writer_.vMember("name", attribute.getName());
        writer_.vMember("nameUpper", attribute.getNameUpper());
        writer_.vMember("nameHash", attribute.getNameHash());
        writer_.vMember("optional", attribute.isOptional());
        writer_.vMember("typeText", attribute.getTypeText());
        vChainWrite("types", attribute.pFirstType());
    }

    void vAttributeWrite(const AttributeInverse& attribute) {
        vAttributeWrite(static_cast<const AttributeBase&>(attribute));
        writer_.vMember("forAttribute", attribute.getForAttributeName());
        vNameWrite("referredEntity", attribute.pReferredEntity());
        vAttributeReferenceWrite("referredAttribute", attribute.pReferredAttribute());
    }

    void vWhereWrite(const Where* where) {
        if (!where)
            return writer_.vMember("where", nullptr);
        writer_.vKey("where");
        writer_.vObjectBegin();
        writer_.vMembers("lines", where->getLines());
        writer_.vKey("rules");
        writer_.vArrayBegin();
        for (const auto& rule : where->getRules()) {
            writer_.vObjectBegin();
            writer_.vMember("label", rule.label.getView());
            writer_.vKey("expression");
            vExpressionWrite(*rule.expression, writer_);
            writer_.vObjectEnd();
        }
        writer_.vArrayEnd();
        writer_.vObjectEnd();
    }

    void vUniqueWrite(const Unique* unique) {
        if (!unique)
            return writer_.vMember("unique", nullptr);
        writer_.vKey("unique");
        writer_.vArrayBegin();
        for (const auto& rule : unique->getRules()) {
            writer_.vObjectBegin();
            writer_.vMember("label", rule.label);
            writer_.vMembers("attributes", rule.attributeNames);
            writer_.vObjectEnd();
        }
        writer_.vArrayEnd();
    }

    void vDeriveWrite(const Derive* derive) {
        if (!derive)
            return writer_.vMember("derive", nullptr);
        writer_.vKey("derive");
        writer_.vArrayBegin();
        for (const auto& value : derive->getValues()) {
            writer_.vObjectBegin();
            writer_.vMember("name", value.getName());
            writer_.vMember("rest", value.getRest());
            vAttributeReferenceWrite("redeclared", value.pRedeclared());
            writer_.vObjectEnd();
        }
        writer_.vArrayEnd();
    }

    /// An attribute by the entity that declares it.
    void vAttributeReferenceWrite(std::string_view key, const Attribute* attribute) {
        if (!attribute)
            return writer_.vMember(key, nullptr);
        writer_.vKey(key);
        writer_.vObjectBegin();
        writer_.vMember("entity", attribute->getEntity().getName());
        writer_.vMember("attribute", attribute->getName());
        writer_.vObjectEnd();
    }

    void vNameWrite(std::string_view key, const ObjectBase* object) {
        if (object)
            writer_.vMember(key, object->getName());
        else
            writer_.vMember(key, nullptr);
    }

    /// The names of the objects, in order.
    template <typename Objects>
    void vNamesWrite(std::string_view key, const Objects& objects) {
        writer_.vKey(key);
        writer_.vArrayBegin();
        for (const auto* object : objects)
            writer_.vValue(object->getName());
        writer_.vArrayEnd();
    }

    void vChainWrite(std::string_view key, const ObjectBase* object) {
        writer_.vKey(key);
        dataTypes_.vChainWrite(object);
    }

    JsonWriter& writer_;
    DataTypesJson dataTypes_;
};

} // namespace

void vSchemaJsonWrite(const SchemaFile& file, Output& output) {
    JsonWriter json([&](std::string_view text) { output.vWrite(text); });
    Writer writer(*file.schema, json);
    json.vObjectBegin();
    json.vMember("name", file.schema->getName());
    json.vKey("objects");
    json.vArrayBegin();
    for (const auto* object : file.schema->getObjects())
        writer.vObjectWrite(*object);
    json.vArrayEnd();
    json.vKey("dataTypes");
    writer.getDataTypes().vAllWrite();
    json.vKey("sharedDataTypes");
    writer.getDataTypes().vSharedWrite();
    json.vObjects("assertions", file.assertions,
                  [&](const auto& record) { vAssertionMembersWrite(record, json); });
    json.vObjectEnd();
    json.vEnd();
}

} // namespace kiv::kivifc
