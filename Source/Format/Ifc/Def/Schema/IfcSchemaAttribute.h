/// The attributes of an entity: what explicit and inverse attributes share, and the explicit attribute
/// itself.
///
///     if (const auto* name = wall.pAttributeFromName(AttributeName("Name"), true))
///         std::cout << name->getTypeText(); // IfcLabel
///
/// Ownership: attributes belong to their entity, by value; what they point at belongs to the schema.
/// Threads:   read-only once the schema is built, but for the link to the XML configuration, which must not
///            be set while others read it.
#pragma once

#include "Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::xmlschema {
class Attribute;
}

namespace kiv::ifc::def::schema {

class KIV_EXPORT AttributeBase {
public:
    /// An explicit attribute; `line` from byte offset `pos` is what stands behind the colon.
    AttributeBase(Entity& entity, std::string&& name, const std::string& line, std::size_t pos);
    /// An inverse attribute.
    AttributeBase(Entity& entity, std::string&& name);

    /// The entity that declares the attribute.
    const Entity& getEntity() const { return entity_; }
    /// The name as the schema writes it.
    std::string_view getName() const { return name_; }
    /// The name with a to z made A to Z.
    std::string_view getNameUpper() const { return nameUpper_; }
    /// `nameHash` of the name as written.
    std::uint32_t getNameHash() const { return nameHash_; }
    bool isOptional() const { return optional_; }
    /// The type as written, without OPTIONAL, up to the ';'.
    std::string_view getTypeText() const { return typeText_; }

    /// The attribute's type from outside in: a named object alone, or a data type followed, for aggregates,
    /// by what their elements are. Empty when the type text names nothing.
    std::span<const ObjectBase* const> getResolvedTypes() const { return resolvedTypes_; }

    /// The first of the resolved types; null when there is none.
    const ObjectBase* pFirstType() const { return resolvedTypes_.empty() ? nullptr : resolvedTypes_.front(); }

protected:
    ~AttributeBase() = default;
    AttributeBase(AttributeBase&&) = default;

    void vUpdate(Schema& schema);
    void vTypeTextSet(std::string&& text) { typeText_ = std::move(text); }

private:
    Entity& entity_;
    std::string name_;
    std::string nameUpper_;
    std::uint32_t nameHash_;
    bool optional_ = false;
    std::string typeText_;
    std::vector<const ObjectBase*> resolvedTypes_;
};

class KIV_EXPORT Attribute final : public AttributeBase {
public:
    using AttributeBase::AttributeBase;

    /// How the attribute is written in IFC-XML; null until a configuration is read.
    const xmlschema::Attribute* pXmlAttribute() const { return xmlAttribute_; }

    /// Links the configuration's record, which must outlive the schema; a later one replaces it.
    void vXmlAttributeSet(const xmlschema::Attribute* attribute) const { xmlAttribute_ = attribute; }

private:
    friend class Entity;

    // The configuration is read after the schema was built, through a const schema.
    mutable const xmlschema::Attribute* xmlAttribute_ = nullptr;
};

/// A look-up key for an attribute: its name as written and that name's hash.
///
/// Ownership: refers to the name it was made from, which must outlive it.
class KIV_EXPORT AttributeName {
public:
    explicit AttributeName(const Attribute& attribute);
    explicit AttributeName(std::string_view name);

    /// True when the attribute bears exactly this name.
    bool boMatches(const AttributeBase& attribute) const {
        return attribute.getNameHash() == hash_ && attribute.getName() == name_;
    }

    std::string_view getView() const { return name_; }
    std::uint32_t getHash() const { return hash_; }

private:
    std::string_view name_;
    std::uint32_t hash_;
};

} // namespace kiv::ifc::def::schema
