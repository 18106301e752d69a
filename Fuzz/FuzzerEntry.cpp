// The entry for libFuzzer, which has a main of its own.
#include "FuzzTarget.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kiv::fuzz::vRun({reinterpret_cast<const char*>(data), size});
    return 0;
}
