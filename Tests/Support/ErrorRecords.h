/// Error records as tests write them down.
///
///     EXPECT_EQ(errors.getRecords(), (Records{error("Extra", "Unknown xml node", 3)}));
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefErrors.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace kiv::ifc::def::xml {

/// For GoogleTest, which finds it by its name.
inline void PrintTo(const ErrorRecord& record, std::ostream* stream) {
    *stream << "kind " << static_cast<std::int32_t>(record.kind) << ", line " << record.line << ", item \""
            << record.item << "\": " << record.message;
}

} // namespace kiv::ifc::def::xml

namespace kiv::test {

using Records = std::vector<ifc::def::xml::ErrorRecord>;

/// A record of the kind that nearly all are of.
inline ifc::def::xml::ErrorRecord error(std::string item, std::string message, std::size_t line) {
    return {ifc::def::xml::ErrorKind::Error, std::move(item), std::move(message), line};
}

} // namespace kiv::test
