/// @file
/// What the tests of the data types share: a schema with one data type.
#pragma once

#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kiv::test {

inline constexpr std::string_view OtherDeclarations =
    "\nENTITY Ent;\nEND_ENTITY;\nTYPE Label = STRING;\nEND_TYPE;\n";

/// A schema with one data type, read from after the colon of an attribute or from after the '=' of a TYPE
/// line.
struct Declared {
    enum class Form { Attribute, Type };

    Declared(Form form, const std::string& text) :
        schema(schemaFromText((form == Form::Attribute ? "ENTITY X;\n  Attr : " + text + "\nEND_ENTITY;"
                                                       : "TYPE X = " + text + "\nEND_TYPE;") +
                              std::string(OtherDeclarations))),
        type(form == Form::Attribute ? ifc::def::schema::DataTypeBase::pFrom(
                                           entityOf(*schema, "X").getAttributes()[0].pFirstType())
                                     : typeOf(*schema, "X").pDataType()) {}

    /// The data type as this class; an error, which fails the test, when it is of another.
    template <typename Class>
    const Class& as() const {
        const auto* result = dynamic_cast<const Class*>(type);
        if (!result)
            throw std::logic_error("another data type, or none");
        return *result;
    }

    std::unique_ptr<ifc::def::schema::Schema> schema;
    const ifc::def::schema::DataTypeBase* type;
};

inline constexpr auto InAttribute = Declared::Form::Attribute;
inline constexpr auto InType = Declared::Form::Type;
inline constexpr Declared::Form BothForms[] = {InAttribute, InType};

} // namespace kiv::test
