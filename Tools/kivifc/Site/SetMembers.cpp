#include "kivifc/Site/SetMembers.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Kit/Documents/SetMembers.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"

#include <string_view>

namespace kiv::kivifc::site {

namespace {

namespace defs = ifc::def::xml;
namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;

class MembersTable {
public:
    MembersTable(const SiteModel& model, Html& html) : model_(model), html_(html) {}

    void vRowWrite(const SiteSet& set, const defs::Def& def, bool isPointedAt) {
        html_ << "<tr";
        if (isPointedAt)
            html_ << attribute("id", sAnchor(def.getName()));
        html_ << "><th scope=\"row\">";
        if (isPointedAt)
            html_ << isolated(sShort(def.getName()));
        else
            html_ << "<a" << href(model_.getAddresses().of(*set.set).row(def.getName())) << ">"
                  << isolated(sShort(def.getName())) << "</a>";
        if (isPointedAt)
            vRowLinkWrite(html_, def.getName());
        html_ << "</th><td>";
        vTypeWrite(def);
        html_ << "</td><td>" << isolated(def.getDefinition()) << "</td></tr>\n";
    }

private:
    void vTypeWrite(const defs::Def& def) {
        if (const auto* property = dynamic_cast<const pset::PropertyDef*>(&def)) {
            if (property->pType())
                vTypeWrite(*property->pType());
        } else if (const auto* quantity = dynamic_cast<const qto::QuantityDef*>(&def)) {
            if (quantity->pType())
                vNameWrite(quantity->pType()->sMeasureTypeName());
        }
    }

    void vTypeWrite(const pset::PropertyType& type) {
        if (const auto* enumerated = dynamic_cast<const pset::TypePropertyEnumeratedValue*>(&type)) {
            Markup separator = "";
            for (const auto& item : enumerated->getItems()) {
                html_ << separator << "<code>" << escaped(sShort(item)) << "</code>";
                separator = ", ";
            }
        } else if (const auto* reference = dynamic_cast<const pset::TypePropertyReferenceValue*>(&type)) {
            vNameWrite(reference->getDataTypeName());
        }
    }

    void vNameWrite(std::string_view name) {
        const auto* object = model_.getSchema().pObjectFromName(name);
        if (object)
            return vObjectLinkWrite(model_, *object, html_);
        html_ << "<code>" << escaped(sShort(name)) << "</code>";
    }

    const SiteModel& model_;
    Html& html_;
};

} // namespace

void vSetMembersWrite(const SiteModel& model, const SiteSet& set, MembersDetail detail, Html& html) {
    const auto members = kit::setMembers(*set.set);
    vTableBegin(html, "Members of " + sShort(set.set->getName()), {"Name", "Type", "Definition"});
    MembersTable table(model, html);
    for (const auto* member : members)
        table.vRowWrite(set, *member, detail == MembersDetail::Full);
    vTableEnd(html);
}

} // namespace kiv::kivifc::site
