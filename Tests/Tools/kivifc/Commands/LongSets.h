/// @file
/// Sets that take long enough to be written for a signal to come in between.
///
/// Threads: one thread at a time for each folder.
#pragma once

#include "Support/TemporaryFolder.h"

#include <string>

namespace kiv::kivifc::test {

constexpr int LongSets = 300;

/// Writes them into the folder "sets": Pset_0, Pset_1, ...
inline void vLongSetsWrite(const kiv::test::TemporaryFolder& folder) {
    for (int number = 0; number < LongSets; ++number) {
        const auto name = "Pset_" + std::to_string(number);
        folder.sWrite("sets/" + name + ".xml", "<PropertySetDef><Name>" + name + "</Name><Definition>" +
                                                   std::string(20000, 'x') +
                                                   "</Definition></PropertySetDef>");
    }
}

} // namespace kiv::kivifc::test
