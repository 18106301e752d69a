/// @file
/// What a schema says about the values of a property: whether a text is a value of a type, which unit a
/// measure has, which types a property can have at all.
///
///     const SchemaUnits units(schema);
///     units.unitOf(measure);               // "LENGTHUNIT" for IfcPositiveLengthMeasure
///     fitOf("12,5", *measure.pDataType()); // ValueFit::No
///
/// Private to the kit.
///
/// Ownership: refers to the schema.
/// Threads:   unchanged once made, so that any number of threads may read them; `SelectedValues` is for one.
/// Errors:    where the schema cannot say, the answer is "unknown", or empty. std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSelect.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kiv::kit {

enum class ValueFit : std::uint8_t { Yes, No, Unknown };

/// Whether a text is a value of that type, as STEP files or XML documents write it. An empty text and "?",
/// which is for a value that is not known, fit every type.
ValueFit fitOf(std::string_view value, const ifc::def::schema::DataTypeBase& type);

/// What such values are, for a message: "a number", "an integer". Empty where `fitOf` does not know.
std::string sValuesOf(const ifc::def::schema::DataTypeBase& type);

/// The text as a number; absent when it is none. One that is too large for a double is infinite.
std::optional<double> numberOf(std::string_view text);

/// Whether the values of the type are numbers.
bool isOfNumbers(const ifc::def::schema::Type& type);

/// A WHERE rule, and the type whose clause it is in.
struct BrokenRule {
    const ifc::def::schema::Type* type = nullptr;
    const ifc::def::schema::ParsedRule* rule = nullptr;
};

/// The first rule of a type of numbers, or of one that it is defined by, that values which begin or end with
/// this one break; without a rule when there is none. Only rules that compare SELF with numbers, and do
/// nothing else, are looked at. "SELF > 0" has nothing against the bound 0, beyond which values are, but for
/// integers, of which none is nearer.
BrokenRule brokenRuleOf(std::string_view bound, const ifc::def::schema::Type& type);

/// The same for a value itself.
BrokenRule brokenRuleOfValue(std::string_view value, const ifc::def::schema::Type& type);

/// The units that a schema names, and the measures that they belong to by their names: LENGTHUNIT is that of
/// IfcLengthMeasure and of every type that is defined by it.
class SchemaUnits {
public:
    explicit SchemaUnits(const ifc::def::schema::Schema& schema);

    /// The unit of a measure; empty where the schema names none for it.
    std::string_view unitOf(const ifc::def::schema::Type& measure) const;

    /// The measure that has the unit, by its name; null where the schema has none of that name.
    const ifc::def::schema::Type* pMeasureOf(std::string_view unit) const;

    /// Whether the schema has such a unit; USERDEFINED is none.
    bool boContains(std::string_view unit) const { return units_.contains(unit); }

private:
    const ifc::def::schema::Schema& schema_;
    // The items of the enumerations that consist of units.
    std::unordered_set<std::string_view> units_;
};

/// The select of which an attribute's values are: IfcValue for IfcPropertySingleValue.NominalValue. Null when
/// the schema has no such attribute, or one of another type.
const ifc::def::schema::Type* pSelectOf(const ifc::def::schema::Schema& schema, std::string_view entity,
                                        std::string_view attribute);

/// Whether values of that type can be there: yes for every type when the select is null.
bool boIsSelected(const ifc::def::schema::Type* select, const ifc::def::schema::ObjectBase& type);

/// Which selects select a defined type, also through other selects. What is found out of one is kept for
/// those that are asked for later.
class SelectedValues {
public:
    explicit SelectedValues(const ifc::def::schema::Schema& schema) : schema_(schema) {}

    /// What the schema does not have may be a defined type, and so may be what an empty select selects.
    bool boHas(const ifc::def::schema::DataTypeSelect& select);

private:
    using Select = ifc::def::schema::DataTypeSelect;
    /// A select, and the step that led to it; the first one leads to itself.
    struct Step {
        const Select* select;
        std::size_t from;
    };

    /// Adds the selects that it selects; true when it selects a defined type itself.
    bool boStep(std::size_t number);

    const ifc::def::schema::Schema& schema_;
    std::unordered_map<const Select*, bool> known_;
    // A list, as a chain of selects may be longer than the stack is deep.
    std::vector<Step> steps_;
    std::unordered_set<const Select*> seen_;
};

} // namespace kiv::kit
