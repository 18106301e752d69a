/// @file
/// What belongs to a type of values: its unit, values that are listed, and bounds.
///
/// Private to the kit.
///
///     TypedValues values(run);
///     values.vCheck(type, measure); // the unit "TIMEUNIT" does not fit IfcLengthMeasure
///
/// Ownership: refers to the run.
/// Threads:   one thread for each run.
/// Errors:    std::bad_alloc.
#pragma once

#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/Types/SchemaValues.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace kiv::kit {

class TypedValues {
public:
    explicit TypedValues(RuleRun& run) : run_(run), xml_(run.xml) {}

    /// Everything that goes with the type; `measure` is that type.
    void vCheck(const TypeOutline& type, const ifc::def::schema::Type& measure);

private:
    const MemberOutline& memberOf(const TypeOutline& type) const {
        return run_.outline.members[static_cast<std::size_t>(type.member)];
    }
    void vUnitCheck(const TypeOutline& type, const ifc::def::schema::Type& measure);
    void vUnownedUnitCheck(const TypeOutline& type, const ifc::def::schema::Type& measure,
                           std::string_view unit);
    bool boHasUnitOfAnyType(const ifc::def::schema::Type& measure) const;
    void vValuesCheck(const TypeOutline& type, const ifc::def::schema::Type& measure);
    /// The ones that count.
    struct Bounds {
        XmlIndex lower = NoXmlElement;
        XmlIndex upper = NoXmlElement;
    };
    void vRangeCheck(XmlIndex range, const ifc::def::schema::Type& measure, Bounds& bounds);
    void vOrderCheck(const Bounds& bounds, const ifc::def::schema::Type& measure);
    void vOlderValuesCheck(const TypeOutline& type, const ifc::def::schema::Type& measure);
    void vBoundsCheck(const TypeOutline& type, const ifc::def::schema::Type& measure);
    void vBoundCheck(const ifc::def::schema::Type& measure, XmlIndex element, const XmlAttribute& attribute);
    void vBrokenAdd(const BrokenRule& broken, XmlIndex element, const XmlAttribute& attribute);
    void vFitCheck(const ifc::def::schema::Type& measure, XmlIndex element, const XmlAttribute* attribute);

    RuleRun& run_;
    const XmlPositions& xml_;
    std::optional<SchemaUnits> units_;
};

} // namespace kiv::kit
