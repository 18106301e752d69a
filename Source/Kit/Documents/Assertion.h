/// @file
/// What the library reports to the assertion service while something is read, as it is kept: the texts that
/// are the same are there once, however many reports have them.
///
///     AssertionTexts texts;
///     std::vector<Assertion> assertions;
///     assertions.push_back(texts.kept(info, meter));
///
/// Ownership: the texts of a report belong to the `AssertionTexts` that made it, and live as long as that
///            does, also after it is moved.
/// Threads:   one thread at a time.
/// Errors:    what the meter throws; std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace kiv {
class WorkMeter;
}

namespace kiv::kit {

/// One report, with the members of `assert::AssertRecord`.
struct Assertion {
    std::int32_t code = 0;
    std::string_view message;
    std::string_view function;
    std::string_view file;
    std::int32_t line = 0;

    friend bool operator==(const Assertion&, const Assertion&) = default;
};

/// The texts of reports.
class KIV_EXPORT AssertionTexts {
public:
    /// Longer texts are not compared byte by byte: they are the same when they lie in the same place, are as
    /// long, and begin and end alike. A rule that is refused is reported with its clause, from the same place
    /// in memory each time, and comparing all of it each time would take the square of its length.
    static constexpr std::size_t maxCompared = 1'024;

    AssertionTexts();
    ~AssertionTexts();
    AssertionTexts(AssertionTexts&&) noexcept;
    AssertionTexts& operator=(AssertionTexts&&) noexcept;
    AssertionTexts(const AssertionTexts&) = delete;
    AssertionTexts& operator=(const AssertionTexts&) = delete;

    /// The report, whose texts are kept. Texts of more than `maxCompared` bytes have to stay unchanged where
    /// they are until `vClear` or the end of this object: a buffer that is filled again may be taken for the
    /// text that was in it before.
    Assertion kept(const assert::AssertInfo& info, WorkMeter& meter);
    /// Forgets all texts; the meter is the one that heard of them, and gets their bytes back from this alone.
    void vClear(WorkMeter& meter) noexcept;

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    std::string_view kept(std::string_view text, WorkMeter& meter);
    std::string_view longKept(std::string_view text, WorkMeter& meter);
    void vTake(std::string_view text, WorkMeter& meter);

    std::unordered_set<std::string, Hash, std::equal_to<>> texts_;
    // By where they were.
    std::unordered_multimap<const char*, std::string> longTexts_;
    std::size_t heldBytes_ = 0;
};

} // namespace kiv::kit
