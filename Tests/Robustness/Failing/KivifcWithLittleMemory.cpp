// kivifc, which is given a limited number of allocations.
//
//     kivifc_with_little_memory 100 once schema Building.exp
//
// The first argument is how many of them succeed, the second whether "all" after them fail or the next one
// "once". The others are those of kivifc.

#include "Support/Allocations.h"
#include "kivifc/Commands/CommandLine.h"

#include <cstdlib>
#include <string_view>

/// Asked by LeakSanitizer. A JSON value that cannot be made for lack of memory loses what was made of it; the
/// program ends then, and nothing of it stays.
extern "C" [[gnu::visibility("default")]] int
__lsan_is_turned_off() { // NOLINT(bugprone-reserved-identifier): the name that is looked for
    return 1;
}

int main(int argc, char** argv) {
    using kiv::test::Refusal;
    constexpr int OwnArguments = 2;
    if (argc <= OwnArguments)
        return EXIT_FAILURE;
    const kiv::test::AllocationLimit limit(std::strtoull(argv[1], nullptr, 10),
                                           std::string_view(argv[2]) == "once" ? Refusal::Once
                                                                               : Refusal::FromThenOn);
    return static_cast<int>(kiv::kivifc::commandLineRun(argc - OwnArguments, argv + OwnArguments));
}
