#include "kivifc/Program/Version.h"

// Written at build time, see WriteCommit.cmake. Only this file includes it, so a new commit compiles nothing
// else.
#include "kivifc/Program/Commit.h"

#include <fmt/format.h>

namespace kiv::kivifc {

namespace {

std::string sCompiler() {
#if defined(__clang__)
    return fmt::format("Clang {}.{}.{}", __clang_major__, __clang_minor__, __clang_patchlevel__);
#elif defined(__GNUC__)
    return fmt::format("GCC {}.{}.{}", __GNUC__, __GNUC_MINOR__, __GNUC_PATCHLEVEL__);
#else
    return "unknown compiler";
#endif
}

} // namespace

std::string sVersion() {
    return fmt::format("kivifc {} (commit {}, {})", KIVIFC_VERSION, KIVIFC_COMMIT, sCompiler());
}

} // namespace kiv::kivifc
