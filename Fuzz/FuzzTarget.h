/// What every fuzz target is made of: one function that takes any bytes and says what must hold for them.
///
///     void kiv::fuzz::vRun(std::string_view input) {
///         vLaw(sWritten(read(input)) == input, "what is written reads back");
///     }
///
/// Two entries call it: `FuzzerEntry.cpp` with what libFuzzer thinks up, `ReplayEntry.cpp` with files, in
/// every build.
///
/// Errors: whatever leaves `vRun` is a finding, `LawBroken` or not.
#pragma once

#include <stdexcept>
#include <string_view>

namespace kiv::fuzz {

/// Runs one input; each target defines it.
void vRun(std::string_view input);

/// Something does not hold that must.
class LawBroken : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

inline void vLaw(bool holds, const char* law) {
    if (!holds)
        throw LawBroken(law);
}

} // namespace kiv::fuzz
