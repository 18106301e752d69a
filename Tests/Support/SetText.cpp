#include "Support/SetText.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include <string_view>
#include <utility>

namespace kiv::test {

namespace {

namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;
namespace xml = ifc::def::xml;

class Writer {
public:
    explicit Writer(After after) : isReadBack_(after == After::ReadingBack) {}

    std::string takeText() { return std::move(text_); }

    void vSet(const xml::SetDef& set) {
        vItem("set", set.getName());
        vItem("definition", set.getDefinition());
        for (const auto& applicable : set.getApplicableClasses())
            vClass(applicable);
        vItem("type value", set.getApplicableTypeValue());
        vAliases(set.getDefinitionAliases());
        if (const auto* properties = dynamic_cast<const pset::PropertySetDef*>(&set)) {
            for (const auto& property : properties->getProperties())
                vProperty(property);
        }
        if (const auto* quantities = dynamic_cast<const qto::QuantitySetDef*>(&set)) {
            for (const auto& quantity : quantities->getQuantities())
                vQuantity(quantity);
        }
    }

private:
    /// Texts may hold anything, so each is written with its length.
    void vItem(std::string_view name, std::string_view text) {
        text_.append(name)
            .append(" ")
            .append(std::to_string(text.size()))
            .append(" ")
            .append(text)
            .append("\n");
    }

    void vClass(const xml::ApplicableClasses& applicable) {
        auto name = applicable.sCombined();
        if (isReadBack_)
            name.erase(name.find_last_not_of(' ') + 1);
        if (!isReadBack_ || !name.empty())
            vItem("class", name);
    }

    void vAliases(const xml::Aliases& aliases) {
        for (const auto& entry : aliases.getEntries()) {
            if (isReadBack_ && entry.text.empty())
                continue;
            vItem("language", entry.locale.getCombined());
            vItem("alias", entry.text);
        }
    }

    void vMember(const xml::Def& member) {
        vItem("member", member.getName());
        vItem("definition", member.getDefinition());
        vItem("guid", member.getIfdGuid().toString(false));
        vAliases(member.getDefinitionAliases());
        text_ += "name aliases\n";
        if (!isReadBack_)
            vAliases(member.getNameAliases());
    }

    void vQuantity(const qto::QuantityDef& quantity) {
        vMember(quantity);
        vItem("type", quantity.pType() ? quantity.pType()->pTypeCode() : "none");
    }

    void vProperty(const pset::PropertyDef& property) {
        vMember(property);
        const auto* type = property.pType();
        if (!type || (isReadBack_ && dynamic_cast<const pset::TypeComplexProperty*>(type)))
            return vItem("type", "none");
        vItem("type", type->sEntityName());
        vTypeContent(*type);
    }

    void vTypeContent(const pset::PropertyType& type) {
        if (const auto* table = dynamic_cast<const pset::TypePropertyTableValue*>(&type))
            vTable(*table);
        else if (const auto* list = dynamic_cast<const pset::TypePropertyListValue*>(&type))
            vList(*list);
        else if (const auto* enumeration = dynamic_cast<const pset::TypePropertyEnumeratedValue*>(&type))
            vEnumeration(*enumeration);
        else if (const auto* value = dynamic_cast<const pset::TypePropertyReferenceValue*>(&type))
            vValue(*value);
    }

    void vTable(const pset::TypePropertyTableValue& table) {
        vItem("defining", table.getDefiningTypeName());
        vItem("defined", table.getDefinedTypeName());
    }

    void vList(const pset::TypePropertyListValue& list) {
        for (const auto& value : list.getListValues())
            vItem("value", value.getDataTypeName());
        auto itemType = list.getListItemTypeName();
        if (isReadBack_ && !itemType.empty())
            vItem("value", itemType);
        // No value more is written then, and the last one gives the type.
        else if (isReadBack_ && !list.getListValues().empty())
            itemType = list.getListValues().back().getDataTypeName();
        vItem("item type", itemType);
    }

    void vEnumeration(const pset::TypePropertyEnumeratedValue& enumeration) {
        vItem("enumeration", enumeration.getEnumerationName());
        for (const auto& item : enumeration.getItems())
            vItem("item", item);
    }

    void vValue(const pset::TypePropertyReferenceValue& value) {
        const bool isReference = !dynamic_cast<const pset::TypePropertySingleValue*>(&value);
        vItem("data type", isReadBack_ && isReference ? "" : value.getDataTypeName());
        if (const auto* bounded = dynamic_cast<const pset::TypePropertyBoundedValue*>(&value)) {
            vBound(bounded->getLowerBoundValue(), value);
            vBound(bounded->getUpperBoundValue(), value);
        }
    }

    void vBound(const std::string& bound, const pset::TypePropertyReferenceValue& value) {
        vItem("bound", isReadBack_ && bound.empty() ? value.getDataTypeName() : bound);
    }

    bool isReadBack_;
    std::string text_;
};

} // namespace

std::string sSetText(const xml::SetDef& set, After after) {
    Writer writer(after);
    writer.vSet(set);
    return writer.takeText();
}

} // namespace kiv::test
