#include "Format/Ifc/Def/Reports/IfcReports.h"

#include "kiv/Host/Assert/KivAssert.h"

namespace kiv::ifc::def {

void vAssertReport(std::string_view message, std::string_view function, std::string_view file,
                   int line) noexcept {
    if (!assert::Assert::isEnabled())
        return;
    assert::Assert::addAssert(assert::AssertInfo{0, message, function, file, line});
}

} // namespace kiv::ifc::def
