/// A select that is looked through in every way there is, and what it must answer.
///
///     const NestedSelects selects;
///     EXPECT_EQ(selects.sAnswers(), NestedSelects::Expected);
///
/// Threads: any number may ask at once.
#pragma once

#include "Support/SchemaFromText.h"

#include <cstddef>
#include <memory>
#include <string>

namespace kiv::test {

class NestedSelects {
public:
    /// Whether the select is compatible with a member, with an entity below one of a select two levels
    /// deeper, with that entity's supertype, with the type that is the deepest select, with an unrelated
    /// entity, and with an unrelated type.
    static constexpr const char* Expected = "yes yes yes yes no no ";

    NestedSelects() : schema_(schemaFromText(sText())) {}

    std::string sAnswers() const {
        const auto& select =
            dynamic_cast<const ifc::def::schema::DataTypeSelect&>(*typeOf(*schema_, "Wide").pDataType());
        std::string answers;
        for (const auto* const name : {"Member69", "Leaf", "Root", "Deepest", "Stranger", "Length"})
            answers += select.isCompatible(objectOf(*schema_, name)) ? "yes " : "no ";
        return answers;
    }

private:
    /// More members than supertypes are followed for one by one, and selects that name each other in a
    /// circle.
    static std::string sText() {
        constexpr std::size_t Members = 70;
        std::string members;
        std::string entities = "ENTITY Root;\nEND_ENTITY;\n"
                               "ENTITY Leaf\n SUBTYPE OF (Root);\nEND_ENTITY;\n"
                               "ENTITY Other;\nEND_ENTITY;\n"
                               "ENTITY Stranger\n SUBTYPE OF (Other);\nEND_ENTITY;\n";
        for (std::size_t i = 0; i != Members; ++i) {
            const auto name = "Member" + std::to_string(i);
            members += name + ", ";
            entities += "ENTITY " + name + ";\nEND_ENTITY;\n";
        }
        return "TYPE Wide = SELECT (" + members + "Deeper);\nEND_TYPE;\n" +
               "TYPE Deeper = SELECT (Wide, Deepest, Deeper);\nEND_TYPE;\n"
               "TYPE Deepest = SELECT (Deeper, Root);\nEND_TYPE;\n"
               "TYPE Length = REAL;\nEND_TYPE;\n" +
               entities;
    }

    std::unique_ptr<ifc::def::schema::Schema> schema_;
};

} // namespace kiv::test
