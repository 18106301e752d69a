#include "kivifc/Documents/ParseFailure.h"

#include <fmt/format.h>

namespace kiv::kivifc {

Failure parseFailure(const std::string& path, const xml::ParseError& error) {
    if (error.line == 0)
        return {path, error.reason};
    return {fmt::format("{}:{}:{}", path, error.line, error.column), error.reason};
}

} // namespace kiv::kivifc
