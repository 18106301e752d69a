#include "kivifc/Site/SearchIndexFile.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDerive.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaUnique.h"
#include "kiv/Kit/Documents/SetMembers.h"
#include "kivifc/Site/DistinctRules.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/EnumeratedItems.h"
#include "kivifc/Site/IndexPages.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/RedeclaredName.h"
#include "kivifc/Site/RowIds.h"
#include "kivifc/Site/SearchIndex.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;
namespace pset = ifc::def::pset;
namespace xml = ifc::def::xml;

constexpr PageName IndexFile("assets/search-index.js");

std::string sDigits(const Guid& guid) {
    return guid.isNull() ? std::string() : guid.toString(false);
}

/// Names in other languages, with the texts that they refer to.
class Translations {
public:
    explicit Translations(const xml::Aliases& aliases) {
        const auto& entries = aliases.getEntries();
        std::ranges::transform(entries, std::back_inserter(tags_),
                               [](const auto& entry) { return entry.locale.getCombined(); });
        for (std::size_t at = 0; at < entries.size(); ++at)
            translations_.push_back({tags_[at], entries[at].text});
    }
    Translations(const Translations&) = delete;
    Translations& operator=(const Translations&) = delete;

    SearchTranslations get() const { return translations_; }

private:
    std::vector<std::string> tags_;
    std::vector<SearchTranslation> translations_;
};

class Filling {
public:
    explicit Filling(const SiteModel& model) : model_(model) {}

    std::string sText() {
        for (const auto* entity : model_.getEntities())
            vEntityAdd(*entity);
        for (const auto* type : model_.getTypes())
            vTypeAdd(*type);
        for (const auto* function : model_.getFunctions())
            vPageAdd(SearchKind::Function, *function);
        for (const auto* rule : model_.getRules())
            vPageAdd(SearchKind::Rule, *rule);
        for (const auto& set : model_.getSets())
            vSetAdd(set);
        for (const auto& index : IndexPages) {
            if (isOffered(model_, index))
                index_.vPageAdd(SearchKind::Page, index.getFullTitle(), index.page.getView());
        }
        return index_.sText();
    }

private:
    void vPageAdd(SearchKind kind, const ObjectBase& object) {
        index_.vPageAdd(kind, object.getName(), model_.getAddresses().of(object).getPath());
        ids_ = {};
    }

    void vRowAdd(SearchKind kind, std::string_view name) {
        index_.vRowAdd(kind, name, ids_.take(name).getText());
    }

    /// Rows are asked for their ids in the order in which the page does that.
    void vEntityAdd(const Entity& entity) {
        const auto* above = entity.pSupertype();
        index_.vPageAdd(SearchKind::Entity, entity.getName(), model_.getAddresses().of(entity).getPath(), {},
                        {}, {}, above ? std::string_view(above->getName()) : std::string_view());
        ids_ = {};
        for (const auto& attribute : entity.getAttributes())
            vRowAdd(SearchKind::Attribute, ownNameOf(attribute.getName()));
        for (const auto& attribute : entity.getAttributesInverse())
            vRowAdd(SearchKind::InverseAttribute, attribute.getName());
        if (entity.pDerive()) {
            for (const auto& value : entity.pDerive()->getValues())
                vRowAdd(SearchKind::DerivedAttribute, ownNameOf(value.getName()));
        }
        if (entity.pUnique()) {
            for (const auto& rule : entity.pUnique()->getRules())
                vRowAdd(SearchKind::UniqueRule, rule.label);
        }
        vWhereAdd(entity.pWhere());
        vUnreadAdd(entity);
    }

    void vWhereAdd(const Where* where) {
        for (const auto* rule : distinctRules(where))
            vRowAdd(SearchKind::DomainRule, rule->label.getView());
    }

    void vUnreadAdd(const ObjectBase& owner) {
        for (const auto* rule : model_.getDeclarations().unreadRulesOf(owner))
            vRowAdd(SearchKind::DomainRule, rule->name.text);
    }

    void vTypeAdd(const Type& type) {
        // What a type is built on says what it is; a renamed enumeration has its items on the page of the
        // other.
        if (const auto* enumeration = dynamic_cast<const DataTypeEnum*>(type.pUnderlying())) {
            vPageAdd(SearchKind::Enumeration, type);
            for (const auto item : enumeration->getItems())
                vRowAdd(SearchKind::EnumerationValue, item);
        } else {
            const auto* select = dynamic_cast<const DataTypeSelect*>(type.pUnderlying());
            vPageAdd(select ? SearchKind::Select : SearchKind::Type, type);
            // Found as what they are themselves.
            for (const auto name : select ? select->getMemberNames() : std::span<const std::string_view>())
                ids_.take(name);
        }
        vWhereAdd(type.pWhere());
        vUnreadAdd(type);
    }

    /// Why who looks for it may rather want another one.
    static std::string sNote(const SiteSet& set) {
        if (!set.isUsed())
            return "not used";
        return set.hiddenBy ? "hidden by " + sShort(set.hidingContext) : std::string();
    }

    void vSetAdd(const SiteSet& siteSet) {
        const auto& set = *siteSet.set;
        const auto kind = kit::pSetKind(set) == std::string_view("quantity set") ? SearchKind::QuantitySet
                                                                                 : SearchKind::PropertySet;
        index_.vPageAdd(kind, set.getName(), model_.getAddresses().of(set).getPath(),
                        sDigits(set.getIfdGuid()), {}, sNote(siteSet));
        ids_ = {};
        for (const auto& member : memberList(set))
            vMemberAdd(member);
    }

    void vMemberAdd(const ListedMember& listed) {
        const auto& member = *listed.def;
        const auto* property = dynamic_cast<const pset::PropertyDef*>(&member);
        const auto& anchor = listed.row.getText();
        index_.vRowAdd(property ? SearchKind::Property : SearchKind::Quantity, member.getName(), anchor,
                       sDigits(member.getIfdGuid()), Translations(member.getNameAliases()).get());
        if (property && property->pType())
            vValuesAdd(*property->pType(), anchor);
    }

    /// The values of an enumeration, with what they are called in other languages, and its name, are at the
    /// row of the property.
    void vValuesAdd(const pset::PropertyType& type, std::string_view anchor) {
        const auto* enumerated = dynamic_cast<const pset::TypePropertyEnumeratedValue*>(&type);
        if (!enumerated)
            return;
        if (!enumerated->getEnumerationName().empty())
            index_.vRowAdd(SearchKind::Enumeration, enumerated->getEnumerationName(), anchor);
        static const xml::Aliases None;
        std::unordered_set<std::string_view> known;
        for (const auto& item : enumeratedItems(*enumerated)) {
            const Translations translations(item.constant ? item.constant->getNameAliases() : None);
            // Of several constants of one name, the first is that of the item.
            if (known.insert(item.name).second)
                index_.vRowAdd(SearchKind::EnumerationValue, item.name, anchor, {}, translations.get());
        }
    }

    const SiteModel& model_;
    SearchIndex index_;
    RowIds ids_;
};

} // namespace

void vSearchIndexWrite(const SiteModel& model, SiteFolder& folder) {
    folder.vWrite(IndexFile, Filling(model).sText());
}

} // namespace kiv::kivifc::site
