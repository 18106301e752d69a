# shellcheck shell=bash
# ./dev bench [--check [--accept] | OPTIONS OF kiv_bench...]

dev_bench() {
    need libbenchmark-dev
    # In the folder of the release build: the libraries are the same, only the benchmarks are added.
    build release -DKIV_BUILD_BENCHMARKS=ON
    [ "${1:-}" = --check ] || exec build/release/Benchmarks/kiv_bench "$@"
    need valgrind
    bench_check "${2:-}"
}

# Counts the instructions of the jobs that Benchmarks/README.md names and compares them with those that are kept.
# bench_check [--accept]: with it, keeps them instead.
bench_check() {
    local program=build/release/Benchmarks/kiv_bench_count counts=build/release/Benchmarks/counts command=compare job
    [ "${1:-}" != --accept ] || command=accept
    mkdir -p "$counts"
    for job in $("$program" jobs); do
        # All symbols are bound at the start, so that what is counted does not depend on who calls first.
        LD_BIND_NOW=1 valgrind --quiet --tool=callgrind --toggle-collect=kivMeasured \
            --callgrind-out-file="$counts/$job" "$program" "$job"
    done
    "$program" "$command" Benchmarks/InstructionCounts.json "$counts"
}
