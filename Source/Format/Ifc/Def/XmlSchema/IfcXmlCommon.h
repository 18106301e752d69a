/// @file
/// How an attribute is written in IFC-XML (ISO 10303-28).
///
///     const auto written = expAttributeFromString("double-tag");
///
/// Ownership: none.
/// Threads:   free functions without state; safe from any number of threads.
/// Errors:    a text that names no representation is an assertion report.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"

#include <cstdint>
#include <string_view>

namespace kiv::ifc::def::xmlschema {

/// How an attribute is written in IFC-XML. The numbers are part of the interface.
enum class ExpAttribute : std::uint32_t {
    NotGiven = 0,
    AttributeTag = 1,
    AttributeContent = 2,
    DoubleTag = 3
};

/// "attribute-tag", "attribute-content" or "double-tag"; any other text is an assertion report and
/// `AttributeContent`.
KIV_EXPORT ExpAttribute expAttributeFromString(std::string_view text, WorkMeter* meter = nullptr);

} // namespace kiv::ifc::def::xmlschema
