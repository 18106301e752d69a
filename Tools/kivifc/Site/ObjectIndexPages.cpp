#include "kivifc/Site/ObjectIndexPages.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSelect.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/IndexElements.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/RowIds.h"

#include <cstddef>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

std::string_view objectNameOf(const ObjectBase* object) {
    return object->getName();
}

void vAbstractWrite(const Entity& entity, Html& html) {
    if (entity.isAbstract())
        html << " <span class=\"badge abstract\">abstract</span>";
}

void vAbstractWrite(const ObjectBase&, Html&) {}

template <typename Object>
void vNamesWrite(const SiteModel& model, const std::vector<const Object*>& objects, Html& html) {
    html << "<ul class=\"names\">\n";
    for (const auto* object : objects) {
        html << "<li>";
        vObjectLinkWrite(model, *object, html);
        vAbstractWrite(*object, html);
        html << "</li>\n";
    }
    html << "</ul>\n";
}

/// Objects under their letters; without letters when there are few.
template <typename Object>
void vByLetterWrite(const SiteModel& model, const std::vector<const Object*>& objects, Html& html) {
    constexpr std::size_t LettersFrom = 30;
    const auto groups = letterGroups(objects, objectNameOf);
    if (objects.size() < LettersFrom) {
        auto sorted = objects;
        vIndexSort(sorted, objectNameOf);
        return vNamesWrite(model, sorted, html);
    }
    vLettersWrite(groups, html);
    for (const auto& [letter, group] : groups) {
        vLetterWrite(letter, html);
        vNamesWrite(model, group, html);
    }
}

/// The tree of entities as lists within lists. A line of inheritance may be too long to recurse along, and
/// too deep for browsers: below some depth, entities are in the list of their supertype.
class TreeWriter {
public:
    TreeWriter(const SiteModel& model, Html& html) : model_(model), html_(html) {}

    void vWrite() {
        html_ << "<ul class=\"tree\">\n";
        vChildrenPush(model_.getTree().getRoots());
        while (!open_.empty()) {
            if (open_.back().isDone()) {
                vListEnd();
                continue;
            }
            vEntityWrite(*open_.back().next());
        }
        vRestWrite();
        html_ << "</ul>\n";
    }

private:
    static constexpr std::size_t ListsMax = 40;
    /// What has as many entities below it is a branch that can be closed; those of the first levels are open.
    static constexpr std::size_t BranchMin = 12;
    static constexpr std::size_t OpenMax = 2;

    /// Siblings that are yet to be written.
    struct Siblings {
        const InheritanceTree::Entities* entities;
        std::size_t at = 0;
        // Whether they have a list of their own, and whether that can be closed.
        bool isList = false;
        bool isBranch = false;

        bool isDone() const { return at == entities->size(); }
        const Entity* next() { return (*entities)[at++]; }
    };

    void vChildrenPush(const InheritanceTree::Entities& entities) { open_.push_back({&entities}); }

    void vListEnd() {
        if (open_.back().isList) {
            html_ << (open_.back().isBranch ? Markup("</ul></details></li>\n") : Markup("</ul></li>\n"));
            --lists_;
        }
        open_.pop_back();
    }

    void vEntityWrite(const Entity& entity) {
        written_.insert(&entity);
        vRowBegin(entity);
        vAbstractWrite(entity, html_);
        const auto& children = model_.getTree().getChildren(entity);
        if (children.empty() || lists_ == ListsMax) {
            html_ << "</li>\n";
            if (!children.empty())
                vChildrenPush(children);
            return;
        }
        const bool isBranch = model_.countBelow(entity) >= BranchMin;
        if (isBranch)
            vBranchBegin(entity);
        html_ << "\n<ul>\n";
        vChildrenPush(children);
        open_.back().isList = true;
        open_.back().isBranch = isBranch;
        ++lists_;
    }

    void vRowBegin(const Entity& entity) {
        const auto id = ids_.take(entity.getName());
        html_ << "<li" << attribute("id", id.getText()) << ">";
        vObjectLinkWrite(model_, entity, html_);
        vRowLinkWrite(html_, id, entity.getName());
    }

    /// The way to the entity is beside what opens the list, not in it.
    void vBranchBegin(const Entity& entity) {
        html_ << " <span class=\"count\">" << model_.countBelow(entity) << "</span>\n"
              << (lists_ < OpenMax ? Markup("<details open>") : Markup("<details>"))
              << "<summary><span class=\"hidden\">Below " << escaped(sShort(entity.getName()))
              << "</span></summary>";
    }

    /// None, unless supertypes go in a circle.
    void vRestWrite() {
        for (const auto* entity : model_.getEntities()) {
            if (written_.contains(entity))
                continue;
            vRowBegin(*entity);
            html_ << " <span class=\"note\">its supertypes form a cycle</span></li>\n";
        }
    }

    const SiteModel& model_;
    Html& html_;
    std::vector<Siblings> open_;
    std::size_t lists_ = 0;
    std::unordered_set<const Entity*> written_;
    RowIds ids_;
};

void vTreePageWrite(const SiteModel& model, SiteFolder& folder) {
    Page page(model.getTitle(), {.title = "Entities", .kind = "", .crumbs = {}});
    auto& html = page.body();
    html << "<p class=\"lead\">" << model.getEntities().size()
         << " entities, each below its supertype. They are listed <a" << href(Address(EntitiesByLetterPage))
         << ">by letter</a> as well.</p>\n";
    TreeWriter(model, html).vWrite();
    folder.vWrite(EntitiesPage, page.takeText());
}

void vLetterPageWrite(const SiteModel& model, SiteFolder& folder) {
    Page page(model.getTitle(),
              {.title = "Entities by letter", .kind = "", .crumbs = {{"Entities", EntitiesPage}}});
    vByLetterWrite(model, model.getEntities(), page.body());
    folder.vWrite(EntitiesByLetterPage, page.takeText());
}

/// The types of an index of types.
struct TypeGroups {
    std::vector<const Type*> enumerations;
    std::vector<const Type*> selects;
    std::vector<const Type*> others;
};

TypeGroups typeGroups(const SiteModel& model) {
    TypeGroups groups;
    for (const auto* type : model.getTypes()) {
        if (dynamic_cast<const DataTypeEnum*>(type->pUnderlying()))
            groups.enumerations.push_back(type);
        else if (dynamic_cast<const DataTypeSelect*>(type->pUnderlying()))
            groups.selects.push_back(type);
        else
            groups.others.push_back(type);
    }
    return groups;
}

void vTypesWrite(const SiteModel& model, Markup id, Markup title, std::vector<const Type*> types,
                 Html& html) {
    if (types.empty())
        return;
    vIndexSort(types, objectNameOf);
    vSectionBegin(html, id, title, types.size());
    vNamesWrite(model, types, html);
    vSectionEnd(html);
}

void vTypesPageWrite(const SiteModel& model, SiteFolder& folder) {
    Page page(model.getTitle(), {.title = "Types", .kind = "", .crumbs = {}});
    auto& html = page.body();
    const auto groups = typeGroups(model);
    html << "<p class=\"lead\">" << model.getTypes().size() << " types, by what they are made of.</p>\n";
    vTypesWrite(model, "simple", "Simple types and aggregates", groups.others, html);
    vTypesWrite(model, "enumerations", "Enumerations", groups.enumerations, html);
    vTypesWrite(model, "selects", "Selects", groups.selects, html);
    folder.vWrite(TypesPage, page.takeText());
}

template <typename Object>
void vListPageWrite(const SiteModel& model, SiteFolder& folder, PageName name, std::string_view title,
                    const std::vector<const Object*>& objects) {
    Page page(model.getTitle(), {.title = title, .kind = "", .crumbs = {}});
    if (objects.empty())
        page.body() << "<p>The schema has none.</p>\n";
    else
        vByLetterWrite(model, objects, page.body());
    folder.vWrite(name, page.takeText());
}

} // namespace

void vObjectIndexPagesWrite(const SiteModel& model, SiteFolder& folder) {
    vTreePageWrite(model, folder);
    vLetterPageWrite(model, folder);
    vTypesPageWrite(model, folder);
    vListPageWrite(model, folder, FunctionsPage, "Functions", model.getFunctions());
    vListPageWrite(model, folder, RulesPage, "Rules", model.getRules());
}

} // namespace kiv::kivifc::site
