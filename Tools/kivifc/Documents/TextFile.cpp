#include "kivifc/Documents/TextFile.h"

#include "kivifc/Documents/ReadingLimits.h"

#include <filesystem>
#include <system_error>

namespace kiv::kivifc {

TextFile textFileRead(const std::string& path) {
    try {
        return kit::textFileRead(path, readingBudget().maxInput);
    } catch (const ifc::def::BudgetExceeded& exceeded) {
        return {{}, sLimitFailure(exceeded)};
    }
}

bool isReadableAgain(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

std::string sReadAgain(const std::string& path) {
    return isReadableAgain(path) ? textFileRead(path).text : std::string();
}

} // namespace kiv::kivifc
