/// @file
/// An INVERSE attribute: which attribute of which entity refers to its owner.
///
///     if (const auto* attribute = inverse.pReferredAttribute())
///         std::cout << attribute->getEntity().getName();
///
/// Ownership: belongs to its entity, by value; what it points at belongs to the schema.
/// Threads:   as `Attribute`.
/// Errors:    an entity or attribute that is not found is an assertion report; the pointer stays null.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"

namespace kiv::ifc::def::xmlschema {
class AttributeInverse;
}

namespace kiv::ifc::def::schema {

class KIV_EXPORT AttributeInverse final : public AttributeBase {
public:
    /// The texts are parts of the current line.
    AttributeInverse(Entity& entity, ReadLineHelper& line, std::string_view name, std::string_view typeText,
                     std::string_view forAttribute);

    /// Resolves the type, the entity and the attribute; runs after all entities were resolved.
    void vUpdate(Schema& schema);

    /// The name after FOR, as written.
    std::string_view getForAttributeName() const { return {forAttributeName_, forAttributeSize_}; }

    /// The entity that the inverse refers to; null when its type is none. It is kept when only the attribute
    /// was not found.
    const Entity* pReferredEntity() const { return referredEntity_; }

    /// The explicit attribute of that entity, or of one of its supertypes, that refers back; null when there
    /// is none.
    const Attribute* pReferredAttribute() const { return referredAttribute_; }

    /// How the attribute is written in IFC-XML; null until a configuration is read.
    const xmlschema::AttributeInverse* pXmlAttribute() const { return xmlAttribute_; }

    /// Links the configuration's record, which must outlive the schema; a later one replaces it.
    void vXmlAttributeSet(const xmlschema::AttributeInverse* attribute) const { xmlAttribute_ = attribute; }

private:
    std::uint32_t forAttributeSize_;
    const char* forAttributeName_;
    mutable const xmlschema::AttributeInverse* xmlAttribute_ = nullptr;
    const Entity* referredEntity_ = nullptr;
    const Attribute* referredAttribute_ = nullptr;
};

} // namespace kiv::ifc::def::schema
