/// @file
/// An ENTITY of the schema: its place in the inheritance tree, its attributes and its rules.
///
///     const auto* wall = Entity::pFrom(schema.pObjectFromName("IfcWall"));
///     for (const auto& attribute : wall->getAttributes())
///         std::cout << attribute.getName() << " : " << attribute.getTypeText() << '\n';
///
/// Ownership: belongs to its schema and owns its attributes and clauses; supertype and subtypes are the
///            schema's. One that a host reads by itself refers to its ReadLineHelper until it is destroyed.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    names that resolve to nothing are assertion reports; look-ups answer null.
#pragma once

#include "kiv/Base/WorkMeter.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDerive.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaUnique.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace kiv::ifc::def::schema {

class KIV_EXPORT Entity final : public ObjectBase {
public:
    /// Reads the declaration whose keyword is at byte offset `keywordPos` of the current line, up to
    /// END_ENTITY or the end of the stream.
    Entity(Schema& schema, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream);
    ~Entity() override;

    /// The object as an entity; null for null and for everything else.
    static const Entity* pFrom(const ObjectBase* object);

    /// `nameHash` of the name as written. An entity keeps it, as look-ups of sets need it each time.
    std::uint32_t getNameHash() const { return nameHash_; }

    /// Resolves the supertype, the subtypes, the attributes and the rules. The list of subtypes lies in the
    /// memory of the schema, and a second call makes it anew.
    void vUpdate(Schema& schema) override;
    /// Resolves the inverse attributes, in order.
    void vUpdateInverse(Schema& schema);

    /// The entity named in SUBTYPE OF; null for a root, and when it was not found or would be its own
    /// ancestor.
    const Entity* pSupertype() const { return supertype_; }
    /// The text between the parentheses of SUBTYPE OF, as written; empty for a root.
    std::string_view getSupertypeName() const { return {supertypeName_, supertypeNameSize_}; }
    /// ABSTRACT is on the first line after the header that is not empty.
    bool isAbstract() const { return abstract_; }
    /// The names listed in SUPERTYPE OF (ONEOF (...)), as written.
    std::span<const std::string_view> getSupertypeOfNames() const {
        return tree_ ? std::span(tree_->names, tree_->nameCount) : std::span<const std::string_view>();
    }
    /// The entities of those names, in the same order. A subtype that is not listed there is not among
    /// them.
    std::span<const Entity* const> getSubtypes() const {
        return tree_ ? std::span<const Entity* const>(tree_->subtypes, tree_->subtypeCount)
                     : std::span<const Entity* const>();
    }
    /// The explicit attributes that the entity itself declares, in order.
    std::span<const Attribute> getAttributes() const { return {attributes_, attributesCount_}; }
    /// The inverse attributes that the entity itself declares, in order.
    std::span<const AttributeInverse> getAttributesInverse() const {
        return clauses_ ? std::span<const AttributeInverse>(clauses_->inverse, clauses_->inverseCount)
                        : std::span<const AttributeInverse>();
    }
    /// The clauses; null when the declaration has none.
    const Where* pWhere() const { return where_; }
    const Unique* pUnique() const { return clauses_ ? clauses_->unique.get() : nullptr; }
    const Derive* pDerive() const { return clauses_ ? clauses_->derive.get() : nullptr; }

    /// The pre-order number in the tree of subtypes, from 1. 0 for an entity that has a supertype and is in
    /// no subtype list that a root leads to, and for the later of two entities of one name. Numbers have 16
    /// bits: after the 65,535th entity they begin again with 0, so that entities share them. Supertypes,
    /// subtypes and all look-ups stay right then; nothing in the library relies on the numbers.
    std::uint16_t getFirstNumber() const { return firstNumber_; }
    /// The number that was given last when the entity and what is below it were numbered: the highest number
    /// among them, unless numbers began again there; then it may be less than the first number.
    std::uint16_t getLastNumber() const { return lastNumber_; }

    /// The attribute of exactly this name, letter case included; null when there is none.
    const Attribute* pAttributeFromName(const AttributeName& key, bool withSupertypes) const;
    /// The attribute of this name, which must be upper-case already; null when there is none.
    const Attribute* pAttributeFromNameUpper(const std::string& upperName, bool withSupertypes) const;
    /// The inverse attribute of this name, in any letter case; null when there is none.
    const AttributeInverse* pAttributeInverseFromName(const std::string& name, bool withSupertypes) const;
    /// The inverse attribute of this name, which must be upper-case already; null when there is none.
    const AttributeInverse* pAttributeInverseFromNameUpper(const std::string& upperName,
                                                           bool withSupertypes) const;

    /// True when this entity is the other one or has it among its supertypes.
    bool isSameOrSubtypeOf(const Entity& other) const;

    /// The deepest entity that is, or is a supertype of, both; null when their roots differ.
    static const Entity* pCommonBaseGet(const Entity& a, const Entity& b);

private:
    friend class SchemaBuilder;
    class Reader;

    /// What SUPERTYPE OF lists.
    struct Tree {
        const std::string_view* names = nullptr;
        std::uint32_t nameCount = 0;
        std::uint32_t subtypeCount = 0;
        Entity** subtypes = nullptr;
    };

    /// The clauses that few entities have.
    struct Clauses {
        AttributeInverse* inverse = nullptr;
        std::uint32_t inverseCount = 0;
        std::unique_ptr<Unique> unique;
        std::unique_ptr<Derive> derive;
    };

    Entity(ReadLineHelper& line, std::size_t namePos, std::size_t nameEnd);

    Clauses& clauses(WorkMeter* meter);
    void vLineResolve(Schema& schema);
    void vSupertypeResolve(Schema& schema);
    void vSubtypesResolve(Schema& schema);
    Entity* getTopmost(WorkMeter* meter);

    // All lists and the rules lie in the arena of the line helper that the entity was read with, or of its
    // schema. The order leaves hardly any room unused.

    bool abstract_ : 1 = false;
    bool supertypeSearched_ : 1 = false;
    // The supertypes of all entities above are searched too.
    bool lineResolved_ : 1 = false;
    // Met by the numbering already; the numbers alone do not show it, as they wrap around.
    bool numbered_ : 1 = false;
    std::uint16_t firstNumber_ = 0;
    // Next to each other: a look-up of an attribute goes along the supertypes and looks at nothing else of
    // most of them.
    Entity* supertype_ = nullptr;
    // The bits of the names of all explicit attributes.
    std::uint64_t attributeBits_ = 0;
    Attribute* attributes_ = nullptr;
    std::uint32_t attributesCount_ = 0;
    std::uint32_t nameHash_;
    const char* supertypeName_ = nullptr;
    std::uint32_t supertypeNameSize_ = 0;
    std::uint16_t lastNumber_ = 0;
    // Null when nothing is listed.
    Tree* tree_ = nullptr;
    Where* where_ = nullptr;
    // Null when there is none of them. Not in the arena, which the entity may outlive.
    std::unique_ptr<Clauses> clauses_;
    // Leads to the topmost supertype on ever shorter ways; finds circles in the inheritance at hardly any
    // cost.
    Entity* towardsTop_ = nullptr;
};

} // namespace kiv::ifc::def::schema
