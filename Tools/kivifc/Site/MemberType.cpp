#include "kivifc/Site/MemberType.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityType.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/EnumeratedItems.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/Translations.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

namespace {

namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;
using ifc::def::xml::Def;

const pset::PropertyType* pPropertyType(const Def& def) {
    const auto* property = dynamic_cast<const pset::PropertyDef*>(&def);
    return property ? property->pType() : nullptr;
}

const qto::QuantityType* pQuantityType(const Def& def) {
    const auto* quantity = dynamic_cast<const qto::QuantityDef*>(&def);
    return quantity ? quantity->pType() : nullptr;
}

Markup quantityKind(std::string_view code) {
    if (code == qto::kinds::Count.typeCode)
        return "Count";
    if (code == qto::kinds::Weight.typeCode)
        return "Weight";
    if (code == qto::kinds::Length.typeCode)
        return "Length";
    if (code == qto::kinds::Area.typeCode)
        return "Area";
    if (code == qto::kinds::Volume.typeCode)
        return "Volume";
    return "Time";
}

/// A derived class comes before its base.
Markup propertyKind(const pset::PropertyType& type) {
    if (dynamic_cast<const pset::TypePropertyBoundedValue*>(&type))
        return "Bounded value";
    if (dynamic_cast<const pset::TypePropertySingleValue*>(&type))
        return "Single value";
    if (dynamic_cast<const pset::TypePropertyReferenceValue*>(&type))
        return "Reference";
    if (dynamic_cast<const pset::TypePropertyEnumeratedValue*>(&type))
        return "Enumeration";
    if (dynamic_cast<const pset::TypePropertyTableValue*>(&type))
        return "Table";
    if (dynamic_cast<const pset::TypePropertyListValue*>(&type))
        return "List";
    return "Complex";
}

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, ascii::isAscii);
}

bool isDescribed(const pset::ConstantDef& constant) {
    return !constant.getDefinition().empty() || !constant.getNameAliases().getEntries().empty() ||
           !constant.getDefinitionAliases().getEntries().empty();
}

class TypeWriter {
public:
    TypeWriter(const SiteModel& model, const MemberTypeDetail& detail, Html& html) :
        model_(model), detail_(detail), html_(html) {}

    /// The type as the first of these classes that it is; derived classes come before their bases.
    template <typename Class, typename... Others>
    void vWriteAs(const pset::PropertyType& type) {
        if (const auto* derived = dynamic_cast<const Class*>(&type))
            return vWrite(*derived);
        if constexpr (sizeof...(Others) > 0)
            vWriteAs<Others...>(type);
    }

    /// The measure is a name of ours, which some schema may lack: that is no mistake of the document.
    void vWrite(const qto::QuantityType& type) { boNameWrite(type.sMeasureTypeName()); }

private:
    void vWrite(const pset::TypePropertyReferenceValue& type) { vNameWrite(type.getDataTypeName()); }

    void vWrite(const pset::TypePropertySingleValue& type) {
        vNameWrite(type.getDataTypeName());
        vUnitWrite(type.getUnitType());
    }

    void vWrite(const pset::TypePropertyBoundedValue& type) {
        vWrite(static_cast<const pset::TypePropertySingleValue&>(type));
        vTextWrite(" from ", type.getLowerBoundValue());
        vTextWrite(" to ", type.getUpperBoundValue());
    }

    void vWrite(const pset::TypePropertyEnumeratedValue& type) {
        if (!type.getEnumerationName().empty())
            html_ << "<code>" << escaped(sShort(type.getEnumerationName())) << "</code>";
        const auto items = enumeratedItems(type);
        if (items.empty())
            return;
        html_ << ": ";
        const bool areDescribed =
            detail_.hasDefinitions && std::ranges::any_of(items, [](const EnumeratedItem& item) {
                return item.constant && isDescribed(*item.constant);
            });
        if (areDescribed)
            vItemsDescribe(items);
        else
            vItemsWrite(items);
    }

    void vItemsWrite(const std::vector<EnumeratedItem>& items) {
        const auto count = std::min(items.size(), detail_.itemsMax);
        // One element for all is less to read and to keep, but letters written from right to left would
        // change the order of the items.
        const auto shown = std::span(items).first(count);
        const bool areApart = !std::ranges::all_of(shown, isAscii, &EnumeratedItem::name);
        html_ << "<code>";
        Markup separator = "";
        for (const auto& item : shown) {
            html_ << separator << escaped(sShort(item.name));
            separator = areApart ? Markup("</code>, <code>") : Markup(", ");
        }
        html_ << "</code>";
        if (count < items.size())
            html_ << " and " << items.size() - count << " more";
    }

    void vItemsDescribe(const std::vector<EnumeratedItem>& items) {
        html_ << "<ul>\n";
        for (const auto& item : items) {
            html_ << "<li><code>" << escaped(sShort(item.name)) << "</code>";
            if (item.constant)
                vConstantDescribe(*item.constant);
            html_ << "</li>\n";
        }
        html_ << "</ul>";
    }

    void vConstantDescribe(const pset::ConstantDef& constant) {
        vNameTranslationsWrite(constant.getNameAliases(), html_);
        if (constant.getDefinition().empty() && constant.getDefinitionAliases().getEntries().empty())
            return;
        html_ << " <span class=\"note\">";
        vTranslatedWrite(constant.getDefinition(), constant.getDefinitionAliases(), html_);
        html_ << "</span>";
    }

    void vWrite(const pset::TypePropertyTableValue& type) {
        if (type.getDefiningTypeName().empty() && type.getDefinedTypeName().empty() &&
            type.getDefiningValues().empty() && type.getDefinedValues().empty()) {
            html_ << "no types given";
            return vTextWrite(", by ", type.getExpression());
        }
        vColumnWrite(type.getDefiningTypeName(), type.getDefiningValues());
        html_ << " to ";
        vColumnWrite(type.getDefinedTypeName(), type.getDefinedValues());
        vTextWrite(" by ", type.getExpression());
    }

    void vWrite(const pset::TypePropertyListValue& type) {
        html_ << "of ";
        vColumnWrite(type.getListItemTypeName(), type.getListValues());
    }

    void vWrite(const pset::TypeComplexProperty& type) {
        vTextWrite("", type.getName());
        html_ << " of " << type.getProperties().size()
              << (type.getProperties().size() == 1 ? Markup(" property") : Markup(" properties"));
    }

    void vColumnWrite(std::string_view typeName, const std::vector<pset::TypePropertyValue>& values) {
        if (typeName.empty())
            html_ << "no type given";
        vNameWrite(typeName);
        for (const auto& value : values) {
            vUnitWrite(value.getUnitType());
            vTextWrite(": ", value.getValues());
        }
    }

    void vUnitWrite(std::string_view unit) { vTextWrite(" in ", unit); }

    /// A text that documents need not give.
    void vTextWrite(Markup before, std::string_view text) {
        if (!text.empty())
            html_ << before << "<code>" << escaped(sShort(text)) << "</code>";
    }

    /// As for classes: what looks like a type and is none is marked.
    void vNameWrite(std::string_view name) {
        if (!boNameWrite(name) && !name.empty())
            html_ << " <span class=\"badge warning\">not in the schema</span>";
    }

    /// Whether the schema has an object of that name.
    bool boNameWrite(std::string_view name) {
        const auto* object = model_.getSchema().pObjectFromName(name);
        if (!object)
            vTextWrite("", name);
        else if (detail_.withKind)
            vBareLinkWrite(html_, model_.getAddresses().of(*object), object->getName());
        else
            vObjectLinkWrite(model_, *object, html_);
        return object != nullptr;
    }

    const SiteModel& model_;
    const MemberTypeDetail& detail_;
    Html& html_;
};

} // namespace

Markup memberKind(const Def& def) {
    if (const auto* type = pQuantityType(def))
        return quantityKind(type->pTypeCode());
    if (const auto* type = pPropertyType(def))
        return propertyKind(*type);
    return "No known type";
}

namespace {

/// Whether what is shown of the type says of which kind it is: most members are single values, items are
/// those of an enumeration, and measures are those of quantities.
bool isKindClear(const Def& def) {
    const auto* type = pPropertyType(def);
    if (!type)
        return true;
    return dynamic_cast<const pset::TypePropertyEnumeratedValue*>(type) ||
           (dynamic_cast<const pset::TypePropertySingleValue*>(type) &&
            !dynamic_cast<const pset::TypePropertyBoundedValue*>(type));
}

void vTypeWrite(const SiteModel& model, const Def& def, const MemberTypeDetail& detail, Html& html) {
    TypeWriter writer(model, detail, html);
    if (const auto* quantity = pQuantityType(def))
        writer.vWrite(*quantity);
    if (const auto* type = pPropertyType(def)) {
        writer.vWriteAs<pset::TypePropertyBoundedValue, pset::TypePropertySingleValue,
                        pset::TypePropertyReferenceValue, pset::TypePropertyEnumeratedValue,
                        pset::TypePropertyTableValue, pset::TypePropertyListValue, pset::TypeComplexProperty>(
            *type);
    }
}

} // namespace

void vMemberTypeWrite(const SiteModel& model, const Def& def, const MemberTypeDetail& detail, Html& html) {
    if (!detail.withKind)
        return vTypeWrite(model, def, detail, html);
    Html type(html.getRoot());
    vTypeWrite(model, def, detail, type);
    const bool isTable = dynamic_cast<const pset::TypePropertyTableValue*>(pPropertyType(def)) != nullptr;
    if (!isKindClear(def))
        html << memberKind(def) << (isTable ? Markup(": ") : Markup(" "));
    else if (type.isEmpty())
        html << "<span class=\"note\">no type given</span>";
    html << type;
}

} // namespace kiv::kivifc::site
