#include "kivifc/Documents/ShownFailure.h"

#include "kivifc/Documents/ReadingLimits.h"

#include <fmt/format.h>

namespace kiv::kivifc {

Failure shownFailure(const std::string& path, const kit::ReadFailure& failure) {
    auto reason = failure.limit ? sLimitFailure(*failure.limit, failure.reason) : failure.reason;
    const auto& position = failure.position;
    if (position.line == 0)
        return {path, std::move(reason)};
    return {fmt::format("{}:{}:{}", path, position.line, position.column), std::move(reason)};
}

} // namespace kiv::kivifc
