/// A stream of the C library that counts what is written to it, for an `Output` of kivifc.
///
///     const auto file = countedFile();
///     kivifc::Output output(file.get());
///
/// Ownership: closes itself.
/// Threads:   one.
/// Errors:    null where there is no memory for it.
#pragma once

#include "Support/Growth.h"

#include <cstdio>
#include <memory>
#include <sys/types.h>

namespace kiv::test {

using CountedFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

inline CountedFile countedFile() {
    cookie_io_functions_t functions{};
    functions.write = [](void*, const char*, std::size_t size) {
        vOutputCount(size);
        return static_cast<ssize_t>(size);
    };
    return {fopencookie(nullptr, "w", functions), &std::fclose};
}

} // namespace kiv::test
