#include "kivifc/Site/EntityAttributes.h"

#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/RedeclaredName.h"
#include "kivifc/Site/TypeHtml.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// Inherited rows of one kind.
constexpr std::size_t InheritedMax = 200;
/// Where an attribute is declared again.
constexpr std::size_t RedeclarationsMax = 20;

std::span<const DeriveValue> derivedOf(const Entity& entity) {
    return entity.pDerive() ? std::span(entity.pDerive()->getValues()) : std::span<const DeriveValue>();
}

std::span<const UniqueRule> uniqueOf(const Entity& entity) {
    return entity.pUnique() ? std::span(entity.pUnique()->getRules()) : std::span<const UniqueRule>();
}

std::span<const Attribute> explicitOf(const Entity& entity) {
    return entity.getAttributes();
}

std::span<const AttributeInverse> inversesOf(const Entity& entity) {
    return entity.getAttributesInverse();
}

template <typename Named>
std::string_view nameOf(const Named& named) {
    return ownNameOf(named.getName());
}

std::string_view labelOf(const UniqueRule& rule) {
    return rule.label;
}

/// How many of a kind the entities of a line have.
template <typename ItemsOf>
std::size_t countOf(std::span<const Entity* const> line, const ItemsOf& itemsOf) {
    std::size_t count = 0;
    for (const auto* entity : line)
        count += itemsOf(*entity).size();
    return count;
}

} // namespace

std::vector<const Entity*> nearestOf(const Entity& entity) {
    std::vector<const Entity*> line;
    for (const auto* each = &entity; each && line.size() < LineMax; each = each->pSupertype())
        line.push_back(each);
    return line;
}

EntityAttributes::EntityAttributes(const SiteModel& model, const Entity& entity, RowIds& ids, Html& html) :
    model_(model), entity_(entity), ids_(ids), html_(html), line_(nearestOf(entity)) {
    std::ranges::copy_if(line_, std::back_inserter(redeclaring_),
                         [&](const Entity* each) { return !model.redeclaredBy(*each).empty(); });
    vOwnIdsTake();
}

void EntityAttributes::vOwnIdsTake() {
    for (const auto& attribute : explicitOf(entity_))
        ownIds_.emplace(&attribute, ids_.take(nameOf(attribute)));
    for (const auto& inverse : inversesOf(entity_))
        ownIds_.emplace(&inverse, ids_.take(nameOf(inverse)));
    for (const auto& value : derivedOf(entity_))
        ownIds_.emplace(&value, ids_.take(nameOf(value)));
    for (const auto& rule : uniqueOf(entity_))
        ownIds_.emplace(&rule, ids_.take(rule.label));
}

std::optional<Redeclaration> EntityAttributes::nearestRedeclarationOf(const Attribute& attribute) const {
    for (const auto* entity : redeclaring_) {
        const auto& redeclared = model_.redeclaredBy(*entity);
        if (const auto found = redeclared.find(&attribute); found != redeclared.end())
            return Redeclaration{entity, found->second};
    }
    return std::nullopt;
}

void EntityAttributes::vWrite() {
    vExplicitWrite();
    vInverseWrite();
    vDerivedWrite();
    vUniqueWrite();
}

/// The entity's own first, then those that it inherits, the nearest first.
template <typename ItemsOf, typename NameOf, typename WriteCell>
void EntityAttributes::vKindWrite(const Kind& kind, const ItemsOf& itemsOf, const NameOf& sName,
                                  const WriteCell& vCellWrite) {
    const auto count = countOf(line_, itemsOf);
    if (count == 0)
        return;
    // What is declared again is in two rows, and one attribute.
    std::size_t again = 0;
    for (const auto* entity : line_)
        again += kind.again ? model_.declaredAgainIn(*entity).*kind.again : 0;
    vSectionBegin(html_, kind.id, kind.title, count - std::min(again, count - 1));
    // The regions of a page have different names, as programs list them that read pages aloud.
    std::string label(kind.title.getView());
    label.append(" of ").append(sShort(entity_.getName()));
    vTableBegin(html_, label, {"Name", kind.column});
    std::size_t inherited = 0;
    for (const auto* entity : line_) {
        if (inherited <= InheritedMax && entity != &entity_ && !itemsOf(*entity).empty())
            vGroupBegin(*entity);
        for (const auto& item : itemsOf(*entity)) {
            if (entity != &entity_ && ++inherited > InheritedMax)
                break;
            vRowBegin(*entity, &item, sName(item));
            vCellWrite(*entity, item);
            html_ << "</td></tr>\n";
        }
    }
    vTableEnd(html_);
    if (inherited > InheritedMax)
        html_ << "<p>More are inherited; the pages of the supertypes have them.</p>\n";
    vSectionEnd(html_);
}

void EntityAttributes::vGroupBegin(const Entity& declaring) {
    html_ << "</tbody>\n<tbody class=\"inherited\">\n<tr class=\"group\"><th colspan=\"2\" "
             "scope=\"rowgroup\">From ";
    vObjectLinkWrite(model_, declaring, html_);
    html_ << "</th></tr>\n";
}

/// The name of an inherited one leads to the page of the entity that declares it.
void EntityAttributes::vRowBegin(const Entity& declaring, const void* item, std::string_view name) {
    const auto own = ownIds_.find(item);
    const auto id = own == ownIds_.end() ? ids_.take(name) : own->second;
    html_ << "<tr" << attribute("id", id.getText()) << "><th scope=\"row\">";
    if (&declaring == &entity_) {
        html_ << "<code>" << escaped(sShort(name)) << "</code>";
    } else {
        vBareLinkWrite(html_, model_.getAddresses().of(declaring).row(name), name);
    }
    vRowLinkWrite(html_, id, name);
    html_ << "</th><td>";
}

void EntityAttributes::vExplicitWrite() {
    vKindWrite({"attributes", "Attributes", "Type", &DeclaredAgain::explicitly}, explicitOf,
               nameOf<Attribute>, [&](const Entity&, const Attribute& attribute) {
                   vTypeTextWrite(model_, attribute, html_);
                   vStateWrite(attribute);
               });
}

/// Optional, declared again, and where.
void EntityAttributes::vStateWrite(const Attribute& attribute) {
    if (attribute.isOptional())
        html_ << " <span class=\"badge\">optional</span>";
    if (const auto* former = pRedeclared(attribute, model_.getSchema())) {
        html_ << " <span class=\"badge redeclared\">redeclares</span> ";
        vAttributeLinkWrite(model_, *former, html_);
    }
    if (const auto again = nearestRedeclarationOf(attribute)) {
        html_ << (again->isDerived ? Markup(" <span class=\"badge derived\">derived</span> in ")
                                   : Markup(" <span class=\"badge redeclared\">redeclared</span> in "));
        vObjectLinkWrite(model_, *again->entity, html_);
    }
    if (&attribute.getEntity() == &entity_)
        vRedeclarationsBelowWrite(attribute);
}

void EntityAttributes::vRedeclarationsBelowWrite(const Attribute& attribute) {
    const auto& all = model_.redeclarationsOf(attribute);
    if (all.empty())
        return;
    html_ << "<p class=\"below\">Further down: ";
    for (std::size_t index = 0; index < std::min(all.size(), RedeclarationsMax); ++index) {
        html_ << (index == 0 ? Markup("") : Markup(", "))
              << (all[index].isDerived ? Markup("derived in ") : Markup("redeclared in "));
        vObjectLinkWrite(model_, *all[index].entity, html_);
    }
    if (all.size() > RedeclarationsMax)
        html_ << " and " << all.size() - RedeclarationsMax << " more";
    html_ << "</p>";
}

void EntityAttributes::vInverseWrite() {
    vKindWrite({"inverse", "Inverse attributes", "Type and the attribute that it mirrors"}, inversesOf,
               nameOf<AttributeInverse>, [&](const Entity&, const AttributeInverse& inverse) {
                   vTypeTextWrite(model_, inverse, html_);
                   html_ << " <b>FOR</b> ";
                   const auto name = inverse.getForAttributeName();
                   const auto* mirrored = inverse.pReferredAttribute();
                   if (!mirrored) {
                       html_ << "<code>" << escaped(sShort(name)) << "</code>";
                       return;
                   }
                   const auto& addresses = model_.getAddresses();
                   vBareLinkWrite(html_, addresses.of(mirrored->getEntity()).row(nameOf(*mirrored)), name);
               });
}

void EntityAttributes::vDerivedWrite() {
    vKindWrite({"derived", "Derived attributes", "Type and value", &DeclaredAgain::derived}, derivedOf,
               nameOf<DeriveValue>, [&](const Entity& entity, const DeriveValue& value) {
                   html_ << "<code class=\"express\">";
                   const auto text = model_.getDeclarations().textOf(value);
                   vExpressWrite(model_, {.pSelf = &entity},
                                 text.empty() ? ascii::trimmed(value.getRest(), " \t\r\n;") : text, html_);
                   html_ << "</code>";
                   if (!value.pRedeclared())
                       return;
                   html_ << " <span class=\"badge redeclared\">redeclares</span> ";
                   vAttributeLinkWrite(model_, *value.pRedeclared(), html_);
               });
}

void EntityAttributes::vUniqueWrite() {
    vKindWrite({"unique", "Unique", "Attributes whose values are unique together"}, uniqueOf, labelOf,
               [&](const Entity& entity, const UniqueRule& rule) {
                   html_ << "<code>";
                   for (std::size_t index = 0; index < rule.attributeNames.size(); ++index) {
                       html_ << (index == 0 ? Markup("") : Markup(", "));
                       vExpressWrite(model_, {.pSelf = &entity}, sShort(rule.attributeNames[index]), html_);
                   }
                   html_ << "</code>";
               });
}

} // namespace kiv::kivifc::site
