/// @file
/// The attributes of an entity: what explicit and inverse attributes share, and the explicit attribute
/// itself.
///
///     if (const auto* name = wall.pAttributeFromName(AttributeName("Name"), true))
///         std::cout << name->getTypeText(); // IfcLabel
///
/// Ownership: attributes belong to their entity, by value; what they point at belongs to the schema.
/// Threads:   read-only once the schema is built, but for the link to the XML configuration, which must not
///            be set while others read it.
/// Errors:    a type text that names nothing gives an attribute without resolved types.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace kiv::ifc::def::xmlschema {
class Attribute;
}

namespace kiv::ifc::def::schema {

class KIV_EXPORT AttributeBase {
public:
    /// An explicit attribute; `rest` is what follows the colon. Both are parts of the current line.
    AttributeBase(Entity& entity, ReadLineHelper& line, std::string_view name, std::string_view rest);
    /// An inverse attribute, whose name is a part of the current line.
    AttributeBase(Entity& entity, ReadLineHelper& line, std::string_view name);

    /// The entity that declares the attribute.
    const Entity& getEntity() const { return entity_; }
    /// The name as the schema writes it.
    std::string_view getName() const { return {name_, nameSize_}; }
    /// The name with a to z made A to Z.
    std::string_view getNameUpper() const { return {nameUpper_, nameSize_}; }
    /// `nameHash` of the name as written; computed by each call, as look-ups do without it.
    std::uint32_t getNameHash() const;
    bool isOptional() const { return optional_; }
    /// The type as written, without OPTIONAL, up to the ';'.
    std::string_view getTypeText() const { return {typeText_, typeTextSize_}; }

    /// The attribute's type from outside in: a named object alone, or a data type followed, for aggregates,
    /// by what their elements are. Empty when the type text names nothing.
    std::span<const ObjectBase* const> getResolvedTypes() const {
        return {typesCount_ > 1 ? types_ : &type_, typesCount_};
    }

    /// The first of the resolved types; null when there is none.
    const ObjectBase* pFirstType() const { return typesCount_ > 1 ? types_[0] : type_; }

protected:
    ~AttributeBase() = default;
    AttributeBase(AttributeBase&&) = default;

    void vUpdate(Schema& schema);
    void vTypeTextSet(std::string_view text);

private:
    friend class AttributeName;

    Entity& entity_;
    const char* name_;
    const char* nameUpper_ = nullptr;
    const char* typeText_ = nullptr;
    union {
        // Of one type, as most have, or none.
        const ObjectBase* type_ = nullptr;
        // Of several types.
        const ObjectBase* const* types_;
    };
    std::uint32_t nameSize_;
    // Differs for most other names, so that their texts need not be compared.
    std::uint32_t nameEnd_ = 0;
    std::uint32_t typeTextSize_ = 0;
    // Aggregates nest no deeper than 256 levels.
    std::uint16_t typesCount_ = 0;
    bool optional_ = false;
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

/// A look-up key for an attribute: its name as written.
///
/// Ownership: refers to the name it was made from, which must outlive it.
class KIV_EXPORT AttributeName {
public:
    explicit AttributeName(const Attribute& attribute) : AttributeName(attribute.getName()) {}
    explicit AttributeName(std::string_view name);

    /// True when this is exactly the name of the attribute.
    bool boMatches(const AttributeBase& attribute) const {
        return attribute.nameEnd_ == shortEnd_ && isSameName(attribute);
    }

    /// One of 64 bits, the same for equal names: whoever keeps those of many names knows which are not among
    /// them.
    std::uint64_t getBit() const { return std::uint64_t{1} << (nameEnd_ * 0x9E3779B97F4A7C15U >> 58); }

    std::string_view getView() const { return name_; }
    /// `nameHash` of the name.
    std::uint32_t getHash() const;

private:
    friend class AttributeBase;

    bool isSameName(const AttributeBase& attribute) const;

    std::string_view name_;
    std::uint64_t nameEnd_;
    std::uint32_t shortEnd_;
};

} // namespace kiv::ifc::def::schema
