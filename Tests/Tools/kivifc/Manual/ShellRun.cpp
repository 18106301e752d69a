#include "Tools/kivifc/Manual/ShellRun.h"

#include <array>
#include <cstdio>
#include <stdexcept>
#include <sys/wait.h>

namespace kiv::kivifc::test {

ShellResult shellRun(const std::string& command) {
    auto* const pipe = popen(command.c_str(), "r");
    if (!pipe)
        throw std::runtime_error("no shell");
    ShellResult result;
    std::array<char, 4096> block{};
    while (const auto size = std::fread(block.data(), 1, block.size(), pipe))
        result.out.append(block.data(), size);
    const auto status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

} // namespace kiv::kivifc::test
