// What kivifc says when the system gives it less memory than it needs to start, or to do its job.
#include "Support/Sanitized.h"
#include "Tools/kivifc/KivifcRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace kiv::kivifc::test {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

// What a shell says of a program that a signal ended.
constexpr int Aborted = 128 + 6;
constexpr int NotStarted = 128 + 11;

/// A run in an address space of that many kilobytes.
Run runWithin(int kilobytes, const std::string& words) {
    const auto script = "ulimit -v " + std::to_string(kilobytes) +
                        "; exec 3>&2 2>/dev/null; " KIVIFC_PROGRAM " " + words + " 2>&3; exit $?";
    return kivifcRun({"-c", script}, {.program = "/bin/sh"});
}

/// Before `main` there is nobody who catches what constructors of libraries throw.
TEST(KivifcAddressSpace, TooLittleIsOneLineAndNoAbort) {
    if (kiv::test::isSanitized)
        GTEST_SKIP() << "left out: a sanitizer takes terabytes of address space";
    for (const std::string words : {"--version", "schema Building.exp --json"}) {
        int failures = 0;
        int kilobytes = 1000;
        for (test::Run run; run.status != 0; kilobytes += 100) {
            ASSERT_LT(kilobytes, 100000);
            SCOPED_TRACE(words + " within " + std::to_string(kilobytes) + " kB");
            run = runWithin(kilobytes, words);
            EXPECT_NE(run.status, Aborted);
            EXPECT_THAT(run.err, Not(HasSubstr("terminate")));
            // The system ends a program that does not fit at all, without a word.
            if (run.status == 0 || run.status == NotStarted)
                continue;
            EXPECT_THAT(linesOf(run.err), SizeIs(1));
            if (run.status == 2) {
                EXPECT_THAT(run.err, EndsWith(": not enough memory\n"));
            }
            ++failures;
        }
        EXPECT_GT(failures, 3) << "else nothing was tried";
    }
}

} // namespace

} // namespace kiv::kivifc::test
