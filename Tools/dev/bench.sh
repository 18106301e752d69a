# shellcheck shell=bash
# ./dev bench [--check [--accept] | --peer PROGRAM [SCHEMA] | OPTIONS OF kiv_bench...]

dev_bench() {
    if [ "${1:-}" = --peer ] && [ "${2:-}" = --self-test ]; then
        need python3
        cd Tools/dev && exec python3 -B -m unittest -q peer_test
    fi
    need libbenchmark-dev
    # In the folder of the release build: the libraries are the same, only the benchmarks are added.
    build release -DKIV_BUILD_BENCHMARKS=ON
    [ "${1:-}" != --peer ] || bench_peer "${@:2}"
    [ "${1:-}" = --check ] || exec build/release/Benchmarks/kiv_bench "$@"
    need valgrind
    bench_check "${2:-}"
}

# bench_peer PROGRAM [SCHEMA] [--rounds N]: a host that loads a schema, and the peer.
bench_peer() {
    local schema=Examples/Data/Building.exp real=${KIV_TEST_DATA:-}/schema/IFC4_ADD2.exp
    [ ! -f "$real" ] || schema=$real
    exec python3 -B Tools/dev/peer.py --default-schema "$schema" --ours build/release/Benchmarks/kiv_bench_load "$@"
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
