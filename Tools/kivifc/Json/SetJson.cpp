#include "kivifc/Json/SetJson.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kivifc/Json/BytesJson.h"

#include <string_view>
#include <vector>

namespace kiv::kivifc {

namespace {

namespace defs = ifc::def::xml;
namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;

/// Writes definitions. They are nested as deep as a document may be, and no deeper.
class DefinitionWriter {
public:
    explicit DefinitionWriter(JsonWriter& writer) : writer_(writer) {}

    void vSetWrite(const defs::SetDef& set) {
        writer_.vObjectBegin();
        vHeadWrite(set);
        writer_.vMember("ifcVersion", set.getIfcVersion());
        writer_.vMember("templateType", defs::sTemplateTypeText(set.getTemplateType()));
        vClassesWrite(set.getApplicableClasses());
        writer_.vMember("applicableTypeValue", set.getApplicableTypeValue());
        if (const auto* properties = dynamic_cast<const pset::PropertySetDef*>(&set))
            vDefsWrite("properties", properties->getProperties());
        if (const auto* quantities = dynamic_cast<const qto::QuantitySetDef*>(&set))
            vDefsWrite("quantities", quantities->getQuantities());
        writer_.vObjectEnd();
    }

    void vDefWrite(const defs::Def& def) {
        writer_.vObjectBegin();
        vHeadWrite(def);
        vAliasesWrite("nameAliases", def.getNameAliases());
        writer_.vMember("entityName", def.getEntityName());
        if (const auto* property = dynamic_cast<const pset::PropertyDef*>(&def))
            vPropertyTypeWrite(property->pType());
        if (const auto* quantity = dynamic_cast<const qto::QuantityDef*>(&def))
            vQuantityTypeWrite(quantity->pType());
        writer_.vObjectEnd();
    }

private:
    /// Name, text, GUID and line of a set or a member.
    void vHeadWrite(const defs::DefBase& def) {
        writer_.vMember("name", def.getName());
        writer_.vMember("definition", def.getDefinition());
        const auto& guid = def.getIfdGuid();
        if (guid.isNull())
            writer_.vMember("ifdGuid", nullptr);
        else
            writer_.vMember("ifdGuid", guid.toString(false));
        writer_.vMember("line", def.getLine());
        vAliasesWrite("definitionAliases", def.getDefinitionAliases());
    }

    void vAliasesWrite(std::string_view key, const defs::Aliases& aliases) {
        writer_.vObjects(key, aliases.getEntries(), [this](const auto& entry) {
            writer_.vMember("lang", entry.locale.getCombined());
            writer_.vMember("text", entry.text);
        });
    }

    void vClassesWrite(const std::vector<defs::ApplicableClasses>& classes) {
        writer_.vObjects("applicableClasses", classes, [this](const auto& each) {
            writer_.vMember("className", each.getClassName());
            writer_.vMember("predefinedType", each.getPredefinedType());
            writer_.vMember("line", each.getLine());
        });
    }

    template <typename Defs>
    void vDefsWrite(std::string_view key, const Defs& defs) {
        writer_.vKey(key);
        writer_.vArrayBegin();
        for (const auto& def : defs)
            vDefWrite(def);
        writer_.vArrayEnd();
    }

    void vPropertyTypeWrite(const pset::PropertyType* type) {
        if (!type)
            return writer_.vMember("type", nullptr);
        writer_.vKey("type");
        vTypeWriteAs<pset::TypePropertyBoundedValue, pset::TypePropertySingleValue,
                     pset::TypePropertyReferenceValue, pset::TypePropertyEnumeratedValue,
                     pset::TypePropertyTableValue, pset::TypePropertyListValue, pset::TypeComplexProperty>(
            *type);
    }

    /// The type as the first of these classes that it is; derived classes come before their bases.
    template <typename Class, typename... Others>
    void vTypeWriteAs(const pset::PropertyType& type) {
        if (const auto* derived = dynamic_cast<const Class*>(&type)) {
            writer_.vObjectBegin();
            writer_.vMember("kind", Class::ElementName);
            vMembersWrite(*derived);
            writer_.vObjectEnd();
        } else if constexpr (sizeof...(Others) > 0) {
            vTypeWriteAs<Others...>(type);
        } else {
            writer_.vValue(nullptr);
        }
    }

    void vMembersWrite(const pset::TypePropertyReferenceValue& type) {
        writer_.vMember("dataTypeName", type.getDataTypeName());
    }

    void vMembersWrite(const pset::TypePropertySingleValue& type) {
        writer_.vMember("dataTypeName", type.getDataTypeName());
        writer_.vMember("unitType", type.getUnitType());
    }

    void vMembersWrite(const pset::TypePropertyBoundedValue& type) {
        vMembersWrite(static_cast<const pset::TypePropertySingleValue&>(type));
        writer_.vMember("lowerBoundValue", type.getLowerBoundValue());
        writer_.vMember("upperBoundValue", type.getUpperBoundValue());
    }

    void vMembersWrite(const pset::TypePropertyEnumeratedValue& type) {
        writer_.vMember("enumerationName", type.getEnumerationName());
        writer_.vMembers("items", type.getItems());
        writer_.vObjects("constants", type.getConstants(), [this](const auto& constant) {
            writer_.vMember("name", constant.getName());
            writer_.vMember("definition", constant.getDefinition());
            vAliasesWrite("nameAliases", constant.getNameAliases());
            vAliasesWrite("definitionAliases", constant.getDefinitionAliases());
        });
    }

    void vMembersWrite(const pset::TypePropertyTableValue& type) {
        writer_.vMember("expression", type.getExpression());
        writer_.vMember("definingTypeName", type.getDefiningTypeName());
        writer_.vMember("definedTypeName", type.getDefinedTypeName());
        vValuesWrite("definingValues", type.getDefiningValues());
        vValuesWrite("definedValues", type.getDefinedValues());
    }

    void vMembersWrite(const pset::TypePropertyListValue& type) {
        writer_.vMember("listItemTypeName", type.getListItemTypeName());
        vValuesWrite("listValues", type.getListValues());
    }

    void vMembersWrite(const pset::TypeComplexProperty& type) {
        writer_.vMember("name", type.getName());
        vDefsWrite("properties", type.getProperties());
    }

    /// What the values of a table column or of a list are.
    void vValuesWrite(std::string_view key, const std::vector<pset::TypePropertyValue>& values) {
        writer_.vObjects(key, values, [this](const auto& value) {
            writer_.vMember("dataTypeName", value.getDataTypeName());
            writer_.vMember("unitType", value.getUnitType());
            writer_.vMember("values", value.getValues());
        });
    }

    void vQuantityTypeWrite(const qto::QuantityType* type) {
        if (!type)
            return writer_.vMember("type", nullptr);
        writer_.vKey("type");
        writer_.vObjectBegin();
        writer_.vMember("code", type->pTypeCode());
        writer_.vMember("valueAttributeName", type->sValueAttributeName());
        writer_.vMember("measureTypeName", type->sMeasureTypeName());
        writer_.vObjectEnd();
    }

    JsonWriter& writer_;
};

void vRecordsWrite(const defs::XmlSetErrors& errors, JsonWriter& writer) {
    writer.vObjects("records", errors.getRecords(), [&](const auto& record) {
        writer.vMember("kind", record.kind == defs::ErrorKind::FatalError ? "FatalError" : "Error");
        writer.vMember("set", errors.getSetName());
        writer.vMember("item", record.item);
        writer.vMember("message", record.message);
        writer.vMember("line", record.line);
    });
}

} // namespace

void vSetWrite(const defs::SetDef& set, JsonWriter& writer) {
    DefinitionWriter(writer).vSetWrite(set);
}

void vDefWrite(const defs::Def& def, JsonWriter& writer) {
    DefinitionWriter(writer).vDefWrite(def);
}

void vSetDocumentWrite(const SetDocument& document, JsonWriter& writer) {
    writer.vObjectBegin();
    writer.vMember("path", document.path);
    writer.vMember("kind", document.pSet()->pXmlElementName());
    writer.vMember("refused", document.isRefused);
    writer.vKey("set");
    vSetWrite(*document.pSet(), writer);
    vRecordsWrite(document.errors, writer);
    writer.vObjects("assertions", document.assertions,
                    [&](const auto& assertion) { vAssertionMembersWrite(assertion.record, writer); });
    vBytesWrite("path", document.path, writer);
    writer.vObjectEnd();
}

Json contextJson(const ifc::def::SchemaPset::Context& context) {
    return withBytes({{"name", context.name}, {"standard", context.isStandard}}, "name");
}

} // namespace kiv::kivifc
