/// How the work that something takes grows with its size, to find what grows with the square.
///
///     const auto growth = growthFrom(10'000, [](std::size_t size) {
///         return [text = std::string(size, 'x')] { vRead(text); };
///     });
///     EXPECT_LE(growth, ProportionalGrowth);
///
/// Work is counted and not timed, so a test finds the same on every machine, however busy it is. Five counts
/// are kept, and each is judged by itself, so that a large one cannot hide the growth of a small one:
///
///   - basic blocks that the library and the test enter. Both are compiled once more for that (target
///     kiv_counted), by a compiler that calls a function of ours at the start of each block;
///   - bytes that memchr, memcpy, memcmp and the like go through, for whomever: std::string and streams end
///     there. The text that libexpat gets to see counts too, again each time it is shown, and a question to
///     the file system counts as a thousand;
///   - bytes of memory that are asked for;
///   - the most bytes of memory that are held at once, beyond those that were held before;
///   - bytes that are written, as far as they go to a `CountedOutput`.
///
/// The law is that twice the size takes two and a half times the work at most. Where it does not hold, it is
/// judged at a size half as large again too, and the smaller growth counts: a table that doubles when it is
/// full may do so between one pair of sizes, while what grows with the square does so at every size.
///
/// What cannot be seen: loops of libstdc++ and libexpat that neither copy, compare nor allocate. Those of
/// libstdc++ are walks along trees, which take the logarithm of the size; libexpat might compare each of many
/// attributes or entities of a document with each other, against which it has tables of its own. Memory that
/// is slow counts like memory that is fast.
///
/// Compilers and libraries differ in their counts; the limit leaves room for that. The keys of hashes, which
/// a process draws, are constants here (CountedHashKeys.cpp), so that one build counts the same in every run.
///
/// Link kiv_counted in place of the libraries. With a sanitizer nothing is counted, as sanitizers replace the
/// same functions: `growthFrom` then does the work once, for the errors that the sanitizer finds.
///
/// Threads: each counts its own work.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <streambuf>

namespace kiv::test {

#if defined(KIV_WORK_COUNTED)
inline constexpr bool isWorkCounted = true;
#else
inline constexpr bool isWorkCounted = false;
#endif

struct Work {
    std::uint64_t blocks = 0;
    std::uint64_t bytes = 0;
    std::uint64_t allocatedBytes = 0;
    /// The most that was held at once since `peakBegin`, all that was held before included.
    std::uint64_t peakBytes = 0;
    std::uint64_t writtenBytes = 0;
};

/// What this thread has done since it began.
Work workDone();

/// Begins to look for the most bytes held anew; gives those that are held now.
std::uint64_t peakBegin();

/// Counts bytes as written.
void vOutputCount(std::size_t bytes);

/// A stream whose text is counted and dropped.
class CountedOutput : private std::streambuf, public std::ostream {
public:
    CountedOutput() : std::ostream(this) {}

private:
    std::streambuf::int_type overflow(std::streambuf::int_type byte) override {
        vOutputCount(1);
        return std::streambuf::traits_type::not_eof(byte);
    }
    std::streamsize xsputn(const char*, std::streamsize size) override {
        vOutputCount(static_cast<std::size_t>(size));
        return size;
    }
};

/// What is in proportion to its size doubles with it, what grows with the square becomes four times as much.
/// Choose sizes of a thousand pieces or more: what each piece takes by itself hides the square in smaller
/// ones.
inline constexpr double ProportionalGrowth = 2.5;

/// How many times as much the larger work is, by the count that grows most. A count that stays below a
/// hundred thousand is as good as none.
double growthBetween(const Work& work, const Work& larger);

/// Makes what is measured for a size; its own work does not count.
using Preparation = std::function<std::function<void()>(std::size_t size)>;

/// How many times as much work twice the size takes, judged as the file says; 1 where nothing is counted.
double growthFrom(std::size_t size, const Preparation& prepare);

/// The same for what must write more than in proportion to its size: work counts for each byte written, and
/// what is written does not count. The memory held still does.
double growthForOutputFrom(std::size_t size, const Preparation& prepare);

} // namespace kiv::test
