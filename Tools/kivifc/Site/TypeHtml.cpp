#include "kivifc/Site/TypeHtml.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"

#include <cstddef>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// A select of IFC4 has 71 members. What is longer is there again in each row of an attribute of that type.
constexpr std::size_t NamesMax = 100;

template <typename Names, typename WriteName>
void vNamesWrite(const Names& names, const Address& page, Html& html, const WriteName& vNameWrite) {
    html << "(";
    std::size_t count = 0;
    for (const auto& name : names) {
        html << (count == 0 ? Markup("") : Markup(", "));
        if (count++ == NamesMax && names.size() > NamesMax + 1) {
            html << "<a" << href(page) << ">and " << names.size() - NamesMax << " more</a>";
            break;
        }
        vNameWrite(name);
    }
    html << ")";
}

/// The defined type that a type is, or is an aggregate of; null for none.
const Type* pNamedType(const ObjectBase* object) {
    const auto* dataType = DataTypeBase::pFrom(object);
    return Type::pFrom(dataType ? dataType->pBaseType() : object);
}

} // namespace

void vUnderlyingWrite(const SiteModel& model, const Type& type, Html& html) {
    const auto page = model.getAddresses().of(type);
    if (const auto* items = dynamic_cast<const DataTypeEnum*>(type.pUnderlying())) {
        html << "<b>ENUMERATION</b> ";
        return vNamesWrite(items->getItems(), page, html,
                           [&](std::string_view item) { vBareLinkWrite(html, page.row(item), item); });
    }
    if (const auto* select = dynamic_cast<const DataTypeSelect*>(type.pUnderlying())) {
        html << "<b>SELECT</b> ";
        return vNamesWrite(select->getMemberNames(), page, html,
                           [&](std::string_view name) { vExpressWrite(model, {}, sShort(name), html); });
    }
    vExpressWrite(model, {}, sShort(type.getUnderlyingText()), html);
}

void vTypeTextWrite(const SiteModel& model, const AttributeBase& attribute, Html& html) {
    html << "<code>";
    vExpressWrite(model, {}, sShort(attribute.getTypeText()), html);
    if (const auto* type = pNamedType(attribute.pFirstType())) {
        html << " <span class=\"unfolded\">= ";
        vUnderlyingWrite(model, *type, html);
        html << "</span>";
    }
    html << "</code>";
}

} // namespace kiv::kivifc::site
