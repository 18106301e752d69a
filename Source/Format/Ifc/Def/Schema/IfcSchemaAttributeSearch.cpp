#include "Format/Ifc/Def/Schema/IfcSchemaAttributeSearch.h"

#include "Base/Metered.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kiv::ifc::def::schema {

namespace {

std::string_view viewOf(const AttributeName& key) {
    return key.getView();
}

std::string_view viewOf(const std::string& upperName) {
    return upperName;
}

/// What a key must equal.
std::string_view nameOf(const Attribute& attribute) {
    return attribute.getName();
}

std::string_view nameOf(const AttributeInverse& attribute) {
    return attribute.getNameUpper();
}

template <class Kind>
std::span<const Kind> attributesOf(const Entity& entity) {
    if constexpr (std::is_same_v<Kind, Attribute>)
        return entity.getAttributes();
    else
        return entity.getAttributesInverse();
}

const Attribute* pDeclared(const Entity& entity, const AttributeName& key) {
    return entity.pAttributeFromName(key, false);
}

const AttributeInverse* pDeclared(const Entity& entity, const std::string& upperName) {
    return entity.pAttributeInverseFromNameUpper(upperName, false);
}

} // namespace

/// The attribute of each name in each entity that was asked about, and in all above it.
///
/// Names are numbered as they are met. The scope of an entity is a binary tree with the attributes of all
/// numbers at its leaves; a number's bits lead there, the highest first. A tree is never changed: that of a
/// subtype shares with that of its supertype all that is the same, and is a few new nodes for each attribute
/// of its own.
template <class Kind>
class AttributeSearch<Kind>::Table {
public:
    explicit Table(WorkMeter* meter) : meter_(meter), nodesHeld_(meter) {
        vRoomForOne(nodes_, meter_);
        nodes_.push_back({Nothing, Nothing});
        vRoomForOne(attributes_, meter_);
        attributes_.push_back(nullptr);
    }
    ~Table() {
        if (meter_)
            meter_->vMemoryGiveBack(nodes_.capacity() * sizeof(Node) +
                                    attributes_.capacity() * sizeof(Kind*));
    }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    const Kind* pFind(const Entity& entity, std::string_view name) {
        const auto scope = scopeOf(entity);
        const auto number = numbers_.find(name);
        return number == numbers_.end() ? nullptr : attributes_[indexIn(scope, number->second)];
    }

private:
    /// The root of a tree and the levels of nodes in it; without any the root is a leaf.
    struct Scope {
        std::size_t root = 0;
        unsigned levels = 0;
    };
    using Node = std::array<std::size_t, 2>;

    Scope scopeOf(const Entity& entity) {
        std::vector<const Entity*> line;
        const auto* above = &entity;
        for (; above && !scopes_.contains(above); above = above->pSupertype()) {
            vLook(meter_);
            vRoomForOne(line, meter_);
            line.push_back(above);
        }
        auto scope = above ? scopes_.at(above) : Scope();
        for (; !line.empty(); line.pop_back()) {
            vAttributesEnter(scope, *line.back());
            nodesHeld_.vTake(ScopeMemory);
            scopes_.emplace(line.back(), scope);
        }
        if (meter_)
            // Pointers. NOLINTNEXTLINE(bugprone-sizeof-expression)
            meter_->vMemoryGiveBack(line.capacity() * sizeof(const Entity*));
        return scope;
    }

    /// Backwards, as what is entered later counts: of equal names in one entity that is the first.
    void vAttributesEnter(Scope& scope, const Entity& entity) {
        const auto attributes = attributesOf<Kind>(entity);
        std::for_each(attributes.rbegin(), attributes.rend(),
                      [&](const Kind& attribute) { vEnter(scope, attribute); });
    }

    void vEnter(Scope& scope, const Kind& attribute) {
        vLook(meter_);
        const auto before = numbers_.size();
        const auto number = numbers_.try_emplace(nameOf(attribute), before).first->second;
        nodesHeld_.vTake((numbers_.size() - before) * NumberMemory);
        for (; !isWithin(scope, number); ++scope.levels) {
            vRoomForOne(nodes_, meter_);
            nodes_.push_back({scope.root, Nothing});
            scope.root = nodes_.size() - 1;
        }
        vLeafSet(scope, number, attributes_.size());
        vRoomForOne(attributes_, meter_);
        attributes_.push_back(&attribute);
    }

    /// Copies the nodes that lead to the number; each copy follows the one that leads to it.
    void vLeafSet(Scope& scope, std::size_t number, std::size_t leaf) {
        auto replaced = std::exchange(scope.root, scope.levels == 0 ? leaf : nodes_.size());
        for (auto level = scope.levels; level-- > 0;) {
            auto node = nodes_[replaced];
            replaced = std::exchange(node[branch(number, level)], level == 0 ? leaf : nodes_.size() + 1);
            vRoomForOne(nodes_, meter_);
            nodes_.push_back(node);
        }
    }

    std::size_t indexIn(const Scope& scope, std::size_t number) const {
        if (!isWithin(scope, number))
            return Nothing;
        auto index = scope.root;
        for (auto level = scope.levels; level-- > 0;)
            index = nodes_[index][branch(number, level)];
        return index;
    }

    static bool isWithin(const Scope& scope, std::size_t number) { return number >> scope.levels == 0; }
    static std::size_t branch(std::size_t number, unsigned level) { return number >> level & 1U; }

    // The empty tree of any height, and the leaf without an attribute.
    static constexpr std::size_t Nothing = 0;

    // What a node of the standard library's trees holds besides its value: three links and a colour; and of
    // its hash tables: a link, and a place or two in the list of buckets.
    static constexpr std::size_t NumberMemory =
        4 * sizeof(void*) + sizeof(std::pair<std::string_view, std::size_t>);
    static constexpr std::size_t ScopeMemory = 2 * sizeof(void*) + sizeof(std::pair<const Entity*, Scope>);

    WorkMeter* meter_;
    MeteredScope nodesHeld_;
    std::map<std::string_view, std::size_t> numbers_;
    // Both begin with an entry for `Nothing`.
    std::vector<Node> nodes_;
    std::vector<const Kind*> attributes_;
    std::unordered_map<const Entity*, Scope> scopes_;
};

template <class Kind>
AttributeSearch<Kind>::AttributeSearch(std::size_t stepsMax, WorkMeter* meter) :
    stepsLeft_(stepsMax), meter_(meter) {}

template <class Kind>
AttributeSearch<Kind>::~AttributeSearch() = default;

template <class Kind>
const Kind* AttributeSearch<Kind>::pFind(const Entity& entity, const Key& key) {
    const auto* above = &entity;
    for (; above && stepsLeft_ > 0; above = above->pSupertype()) {
        vLook(meter_);
        stepsLeft_ -= std::min(stepsLeft_, 1 + attributesOf<Kind>(*above).size());
        if (const auto* const attribute = pDeclared(*above, key))
            return attribute;
    }
    if (!above)
        return nullptr;
    if (!table_)
        table_ = std::make_unique<Table>(meter_);
    return table_->pFind(*above, viewOf(key));
}

template class AttributeSearch<Attribute>;
template class AttributeSearch<AttributeInverse>;

} // namespace kiv::ifc::def::schema
