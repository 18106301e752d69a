/// @file
/// The notations in which GUIDs are written, so that one is found in whichever of them it is at hand.
///
///     const GuidNotations written(guid);
///     written.digits;     // "14fafcf30e160e477383a24adb6f66e9"
///     written.hyphenated; // "14fafcf3-0e16-0e47-7383-a24adb6f66e9"
///     written.globalId;   // "0Kwllp3XOEHtETeYhRRmxf"
///
/// Ownership: a value.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Host/Id/KivId.h"
#include "kivifc/Site/Html.h"

#include <string>
#include <string_view>

namespace kiv::kivifc::site {

struct GuidNotations {
    explicit GuidNotations(const Guid& guid);

    /// 32 hexadecimal digits in lower case.
    std::string digits;
    /// The same in groups of 8-4-4-4-12.
    std::string hyphenated;
    /// The 22 characters of an IFC GlobalId (ISO 16739, IfcGloballyUniqueId).
    std::string globalId;
};

/// All three, as a list.
void vGuidNotationsWrite(const Guid& guid, Html& html);

/// What a document has where a GUID should be.
void vNoGuidWrite(std::string_view text, Html& html);

/// All three, one after the other; `id` is what links to them point at.
void vGuidRowWrite(const Guid& guid, const std::string& id, Html& html);

} // namespace kiv::kivifc::site
