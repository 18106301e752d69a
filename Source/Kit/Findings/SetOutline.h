/// @file
/// The parts of a set document, found in its XML as the library finds them: which elements are properties,
/// which of several types counts, where classes and type names are. What rules look at.
///
///     const SetOutline outline(*document.positions);
///     for (const auto& member : outline.members)
///         std::cout << outline.memberName(member) << '\n';
///
/// Private to the kit.
///
/// Ownership: refers to the positions, which outlive it.
/// Threads:   unchanged once made; any number of threads may read it.
/// Errors:    a document without a set has an outline without parts. std::bad_alloc.
#pragma once

#include "kiv/Kit/Positions/XmlPositions.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

/// What the root element makes a document.
enum class SetKind : std::uint8_t { None, PropertySet, QuantitySet };

/// The kinds of a property, as their elements are named.
enum class PropertyKind : std::uint8_t {
    /// No type, or none that is known.
    None,
    SingleValue,
    EnumeratedValue,
    BoundedValue,
    TableValue,
    ReferenceValue,
    ListValue,
    Complex,
    /// "TypeSimpleProperty" of older documents, which is accepted and makes no type, whatever is inside.
    Simple,
};

/// A property, a quantity, or a property inside a complex one.
struct MemberOutline {
    XmlIndex element = NoXmlElement;
    /// The member that contains it, as an index of `SetOutline::members`; -1 for a member of the set.
    std::int32_t owner = -1;
    /// The "Name" that counts, the last one with a text; `NoXmlElement` when there is none.
    XmlIndex name = NoXmlElement;
    XmlIndex definition = NoXmlElement;
    /// "PropertyType" or "QtoType", of which the last one counts even when it is empty.
    XmlIndex type = NoXmlElement;
    /// The element of the kind, first in "PropertyType".
    XmlIndex kindElement = NoXmlElement;
    PropertyKind kind = PropertyKind::None;
    /// Of a bounded value; the last one, which the others are joined with.
    XmlIndex range = NoXmlElement;
    /// Of an enumeration; the last ones, which the others are joined with.
    XmlIndex enumeration = NoXmlElement;
    XmlIndex constants = NoXmlElement;
};

/// A "ClassName" that names a class.
struct ClassOutline {
    XmlIndex element = NoXmlElement;
    /// Without the blanks around it: "IfcWall/SOLIDWALL".
    std::string_view text;
    /// The part before "/".
    std::string_view name;
    /// The part after it; empty when there is none.
    std::string_view predefinedType;
};

/// How a name of a type is used.
enum class TypeUse : std::uint8_t {
    /// The type of values: of a single or bounded value, of a table's column, of a list's items.
    Value,
    /// "DataType" in a reference value.
    ReferenceDataType,
    /// "reftype" of a reference value.
    Reference,
    /// In a "TypeSimpleProperty" of older documents, where it may name an entity.
    Simple,
};

/// An attribute that names a type of the schema: "type" of a "DataType", "reftype".
struct TypeOutline {
    XmlIndex element = NoXmlElement;
    /// An index of `SetOutline::members`.
    std::int32_t member = -1;
    TypeUse use = TypeUse::Value;
    /// Null when "DataType" has no "type".
    const XmlAttribute* attribute = nullptr;
    /// The "UnitType" beside it that counts; `NoXmlElement` when there is none.
    XmlIndex unit = NoXmlElement;
    /// "Values" beside it; `NoXmlElement` when there is none.
    XmlIndex values = NoXmlElement;
};

/// A translation of a name or definition.
struct AliasOutline {
    XmlIndex element = NoXmlElement;
    /// "NameAliases" or one of the others.
    XmlIndex list = NoXmlElement;
    /// Null when there is none.
    const XmlAttribute* language = nullptr;
};

/// Whether there is something inside that readers take for a text. One that is empty leaves what they have.
inline bool boHasText(const XmlElement& element) {
    return !element.text.empty() || element.firstChild != NoXmlElement || element.isTextHidden;
}

/// What is looked for.
enum class OutlineParts : std::uint8_t { All, WithoutAliases };

struct SetOutline {
    explicit SetOutline(const XmlPositions& positions, OutlineParts parts = OutlineParts::All);

    SetKind kind = SetKind::None;
    /// Whether the root element has a prefix, which is not supported.
    bool isPrefixed = false;
    XmlIndex name = NoXmlElement;
    XmlIndex definition = NoXmlElement;
    XmlIndex ifcVersion = NoXmlElement;
    XmlIndex applicableClasses = NoXmlElement;
    XmlIndex applicableTypeValue = NoXmlElement;
    /// In the order of the document, a complex property before its own.
    std::vector<MemberOutline> members;
    std::vector<ClassOutline> classes;
    std::vector<TypeOutline> types;
    /// Empty when they were not looked for.
    std::vector<AliasOutline> aliases;

    const XmlElement& elementOf(XmlIndex index) const { return xml->getElement(index); }
    /// What the library reads as the text of that element; empty for `NoXmlElement`.
    std::string_view textOf(XmlIndex index) const;
    /// The name of the set, without white space around it.
    std::string_view setName() const;
    std::string_view memberName(const MemberOutline& member) const;
    /// "Pset_WallCommon", for comparing findings; very long names are cut there, as each finding repeats
    /// them.
    std::string setSubject() const;
    /// "Pset_WallCommon.IsExternal"; "Pset_WallCommon.Layer.Thickness" for one inside a complex property.
    std::string subjectOf(const MemberOutline& member) const;

    const XmlPositions* xml;
};

} // namespace kiv::kit
