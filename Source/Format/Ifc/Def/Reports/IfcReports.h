/// Reports to the host's assertion service; the one place that fills its record.
#pragma once

#include "kiv/Base/Export.h"

#include <string_view>

namespace kiv::ifc::def {

/// Reports a broken promise, when the host listens at all; then the caller goes on with its fallback.
///
/// `function` is the qualified name of the operation that met it, `file` its module's path without suffix,
/// `line` the line that hosts know the check by, 0 when it has none.
KIV_EXPORT void vAssertReport(std::string_view message, std::string_view function, std::string_view file,
                              int line) noexcept;

} // namespace kiv::ifc::def
