# shellcheck shell=bash
# ./dev test [PRESET [CTEST OPTIONS...]]: prints the tests that failed and one line that sums up; the rest is in
# the log.

dev_test() {
    local preset=${1:-dev} log status=0
    log=build/$preset/test.log
    case $preset in
    clang) need clang ;;
    asan) need clang libclang-rt-14-dev ;;
    esac
    # The first compares what kivifc writes for programs with schemas, the second calls the hook for commits.
    need python3-jsonschema git
    build "$preset"
    progress "testing $preset; log: $log"
    ctest --preset "$preset" -j "$(nproc)" --no-tests=error "${@:2}" >"$log" 2>&1 || status=$?
    progress ''
    test_failures "$log"
    test_summary "$log" || cat "$log" # nothing ran, but there may be an answer, to -N for one
    return $status
}

# The result and the output of each test that failed: from its line to the next line of CTest.
test_failures() {
    awk '
        /^ *[0-9]+\/[0-9]+ +Test +#/ { failed = /\*\*\*/ && !/\*\*\*Skipped/ }
        /^ +Start +[0-9]+: / || /% tests passed, / { failed = 0 }
        failed { print }' "$1"
}

# test_summary LOG: CTest counts what was skipped as neither passed nor failed, but in the number of all.
test_summary() {
    awk -v log_file="$1" '
        / tests failed out of / { failed = $(NF - 5); all = $NF; ran = 1 }
        /^Total Test time/ { seconds = $(NF - 1) }
        /^\t *[0-9]+ - .*\((Skipped|Disabled)\)$/ { skipped++ }
        END {
            if (!ran)
                exit 1
            if (failed)
                printf "%d tests FAILED, ", failed
            printf "%d tests passed in %.0f s, %d skipped; log: %s\n", all - failed - skipped, seconds, skipped, log_file
        }' "$1"
}
