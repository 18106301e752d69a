/// @file
/// Values of fixed vocabularies: template types, types of units and of quantities.
///
/// Private to the kit.
///
///     FixedValues values(run);
///     values.vUnitTypeCheck(element); // "FORCEUNITS" is no type of unit
///
/// Ownership: refers to the run.
/// Threads:   one thread for each run.
/// Errors:    std::bad_alloc.
#pragma once

#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/Types/SchemaValues.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace kiv::kit {

class FixedValues {
public:
    explicit FixedValues(RuleRun& run) : run_(run), xml_(run.xml) {}

    /// Of the set.
    void vTemplateTypeCheck();
    void vUnitTypeCheck(XmlIndex element);
    void vQuantityTypeCheck(XmlIndex element);

private:
    const std::vector<std::string_view>& getUnitTypes();
    std::string_view unitOfMeasure(XmlIndex element);
    /// Adds what is wrong with a value that is not legal. Null when letter case or blanks are.
    FindingDraft* pValueAdd(std::string_view code, XmlIndex element, const XmlAttribute* attribute,
                            const XmlText& text, std::string_view what,
                            std::span<const std::string_view> legal);

    RuleRun& run_;
    const XmlPositions& xml_;
    // Those of the schema; found when a document has a unit.
    std::optional<std::vector<std::string_view>> unitTypes_;
    // Made when it is first needed: few documents have an unknown unit.
    std::optional<SchemaUnits> units_;
};

} // namespace kiv::kit
