#include "kivifc/Site/TypePage.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/RowIds.h"
#include "kivifc/Site/RuleHtml.h"
#include "kivifc/Site/TypeHtml.h"
#include "kivifc/Site/UsesHtml.h"
#include "kivifc/Site/ValueMembers.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

Markup kindOf(const Type& type) {
    if (dynamic_cast<const DataTypeEnum*>(type.pUnderlying()))
        return "Enumeration";
    if (dynamic_cast<const DataTypeSelect*>(type.pUnderlying()))
        return "Select";
    return DataTypeListInterface::pFrom(type.pUnderlying()) ? Markup("Aggregate") : Markup("Type");
}

/// Writes the page of one type.
class TypePage {
public:
    TypePage(const SiteModel& model, const Type& type) :
        model_(model),
        type_(type),
        page_(model.getTitle(),
              {.title = type.getName(), .kind = kindOf(type), .crumbs = {{"Types", TypesPage}}}),
        html_(page_.body()) {}

    std::string sText() {
        const auto* items = dynamic_cast<const DataTypeEnum*>(type_.pUnderlying());
        const auto* select = dynamic_cast<const DataTypeSelect*>(type_.pUnderlying());
        const auto rowIds = idsTake(items    ? items->getItems()
                                    : select ? select->getMemberNames()
                                             : std::span<const std::string_view>());
        const auto ruleIds = ruleIdsTake(type_.pWhere(), ids_);
        const auto unreadIds = unreadRuleIdsTake(model_, type_, ids_);
        if (items)
            vItemsWrite(*items, rowIds);
        else if (select)
            vMembersWrite(*select, rowIds);
        else
            vDefinitionWrite();
        vWhereWrite(model_, {}, type_.pWhere(), ruleIds, html_);
        vUnreadRulesWrite(model_, {}, type_, unreadIds, html_);
        vUsesWrite(model_, type_, html_);
        return page_.takeText();
    }

private:
    std::vector<RowId> idsTake(std::span<const std::string_view> names) {
        std::vector<RowId> taken;
        for (const auto name : names)
            taken.push_back(ids_.take(name));
        return taken;
    }

    void vItemsWrite(const DataTypeEnum& items, const std::vector<RowId>& ids) {
        vSectionBegin(html_, "items", "Items", items.getItems().size());
        html_ << "<ul class=\"names\">\n";
        auto id = ids.begin();
        for (const auto item : items.getItems()) {
            html_ << "<li" << attribute("id", id->getText()) << "><code>" << escaped(sShort(item))
                  << "</code>";
            vRowLinkWrite(html_, *id++, item);
            html_ << "</li>\n";
        }
        html_ << "</ul>\n";
        vSectionEnd(html_);
    }

    void vMembersWrite(const DataTypeSelect& select, const std::vector<RowId>& ids) {
        vSectionBegin(html_, "items", "Members", select.getMemberNames().size());
        unfolded_.insert(&select);
        vMemberListWrite(select, ids, 0);
        vSectionEnd(html_);
    }

    /// Members that are selects have theirs below them, each select once.
    void vMemberListWrite(const DataTypeSelect& select, const std::vector<RowId>& ids, std::size_t depth) {
        // Names alone are set in columns; with lists below them they are a tree.
        html_ << (isFlat(select) ? Markup("<ul class=\"names\">\n") : Markup("<ul class=\"tree\">\n"));
        auto id = ids.begin();
        for (const auto name : select.getMemberNames()) {
            const auto* object = model_.getSchema().pObjectFromName(name);
            html_ << "<li" << attribute("id", id->getText()) << ">";
            vMemberWrite(object, name);
            vRowLinkWrite(html_, *id++, name);
            if (const auto* inner = pSelect(object))
                vInnerWrite(*inner, depth + 1);
            html_ << "</li>\n";
        }
        html_ << "</ul>\n";
    }

    void vInnerWrite(const DataTypeSelect& select, std::size_t depth) {
        if (unfolded_.contains(&select))
            return;
        if (depth > DepthMax || written_ + select.getMemberNames().size() > MembersMax) {
            html_ << " <span class=\"note\">has its members on its page</span>";
            return;
        }
        unfolded_.insert(&select);
        vMemberListWrite(select, idsTake(select.getMemberNames()), depth);
    }

    static bool isFlat(const DataTypeSelect& select) {
        return std::ranges::none_of(select.getMembers(), pSelect);
    }

    void vMemberWrite(const ObjectBase* object, std::string_view name) {
        ++written_;
        if (object)
            return vObjectLinkWrite(model_, *object, html_);
        html_ << "<code>" << escaped(sShort(name)) << "</code>";
    }

    /// As the schema has it, and what that leads to.
    void vDefinitionWrite() {
        vSectionBegin(html_, "definition", "Definition");
        html_ << "<pre class=\"express\"><code><b>TYPE</b> " << escaped(sShort(type_.getName())) << " = ";
        vExpressWrite(model_, {}, type_.getUnderlyingText(), html_);
        html_ << ";</code></pre>\n";
        const auto* next = Type::pFrom(type_.pUnderlying());
        // Types may be defined by each other.
        std::unordered_set<const Type*> known{&type_};
        for (; next && known.size() <= DepthMax && known.insert(next).second;
             next = Type::pFrom(next->pUnderlying())) {
            html_ << "<p>";
            vObjectLinkWrite(model_, *next, html_);
            html_ << " = <code>";
            vUnderlyingWrite(model_, *next, html_);
            html_ << "</code></p>\n";
        }
        if (next && !known.contains(next))
            html_ << "<p class=\"note\">Continued on the page of the last one.</p>\n";
        vSectionEnd(html_);
    }

    /// Of selects within selects, and of types made of types: more is left to their pages.
    static constexpr std::size_t DepthMax = 8;
    static constexpr std::size_t MembersMax = 1000;

    const SiteModel& model_;
    const Type& type_;
    Page page_;
    Html& html_;
    RowIds ids_;
    std::unordered_set<const DataTypeSelect*> unfolded_;
    std::size_t written_ = 0;
};

} // namespace

void vTypePagesWrite(const SiteModel& model, SiteFolder& folder) {
    for (const auto* type : model.getTypes())
        folder.vWrite(model.getAddresses().of(*type), TypePage(model, *type).sText());
}

} // namespace kiv::kivifc::site
