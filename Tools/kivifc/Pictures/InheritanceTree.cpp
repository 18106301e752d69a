#include "kivifc/Pictures/InheritanceTree.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

using ifc::def::schema::Entity;

void vSortByName(InheritanceTree::Entities& entities) {
    std::ranges::stable_sort(entities, {},
                             [](const Entity* entity) { return std::string_view(entity->getName()); });
}

} // namespace

InheritanceTree::InheritanceTree(const ifc::def::schema::Schema& schema) {
    for (const auto* object : schema.getObjects()) {
        const auto* entity = Entity::pFrom(object);
        if (!entity)
            continue;
        auto& siblings = entity->pSupertype() ? children_[entity->pSupertype()] : roots_;
        siblings.push_back(entity);
    }
    vSortByName(roots_);
    for (auto& [parent, children] : children_)
        vSortByName(children);
}

const InheritanceTree::Entities& InheritanceTree::getChildren(const Entity& entity) const {
    const auto found = children_.find(&entity);
    return found == children_.end() ? none_ : found->second;
}

std::size_t InheritanceTree::getDepth() const {
    // Level by level: a line of inheritance may be too long to recurse along.
    std::size_t depth = 0;
    for (auto level = roots_; !level.empty(); ++depth) {
        Entities next;
        for (const auto* entity : level)
            std::ranges::copy(getChildren(*entity), std::back_inserter(next));
        level = std::move(next);
    }
    return depth;
}

} // namespace kiv::kivifc
