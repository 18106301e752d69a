/// @file
/// One class that a set applies to, with its predefined type, as in "IfcWall/SOLIDWALL".
///
///     ApplicableClasses wall("IfcWall/SOLIDWALL");
///     wall.getPredefinedType(); // SOLIDWALL
///
/// Ownership: a value.
/// Threads:   what is const may be called from any number of threads.
/// Errors:    none; `SetDef::checkForErrors` finds out whether the class exists.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kiv::ifc::def::xml {

class KIV_EXPORT ApplicableClasses {
public:
    /// Splits the text at its first "/". `line` is its line in the document, 0 without one.
    explicit ApplicableClasses(std::string&& text, std::size_t line = 0);

    /// Appends a "ClassName" element.
    void vExport(kiv::xml::Element& parent) const;

    /// Class and predefined type as they are written.
    std::string sCombined() const;

    /// The name of an entity, such as IfcWall.
    const std::string& getClassName() const { return className_; }
    /// The hash by which entities are compared with it (`nameHash`); 0 for an empty name.
    std::uint32_t getClassNameHash() const { return classNameHash_; }
    /// All that follows the first "/", such as SOLIDWALL; empty when there is none.
    const std::string& getPredefinedType() const { return predefinedType_; }
    /// The line of its element in the document; 0 when it came from none.
    std::size_t getLine() const { return line_; }

private:
    std::string className_;
    std::uint32_t classNameHash_;
    std::string predefinedType_;
    std::size_t line_;
};

} // namespace kiv::ifc::def::xml
