# shellcheck shell=bash
# ./dev fuzz SECONDS [TARGET]

dev_fuzz() {
    local seconds=${1:?SECONDS} target=${2:-}
    need clang libclang-rt-14-dev
    configure fuzz
    compile fuzz "kiv_fuzz${target:+_$target}"
    export -f dictionary fuzz_one
    # shellcheck disable=SC2016
    xargs -P "$(nproc)" -I {} bash -c 'fuzz_one "$1" "$2"' fuzz {} "$seconds" <<<"${target:-$(ls Fuzz/Corpus)}"
}

# The words that libFuzzer puts into the inputs of a target, as its option.
dictionary() {
    case "$1" in
    rule | schema | where) echo -dict=Fuzz/Express.dict ;;
    config | set) echo -dict=Fuzz/Xml.dict ;;
    esac
}

# fuzz_one TARGET SECONDS: what it finds stays in build/fuzz/findings, what it learns in build/fuzz/corpus.
fuzz_one() {
    local target=$1 seconds=$2 folder=build/fuzz
    mkdir -p "$folder/corpus/$target" "$folder/findings/$target"
    # The log says what is wrong with a target; the others still run.
    # shellcheck disable=SC2046
    "$folder/Fuzz/kiv_fuzz_$target" $(dictionary "$target") -max_total_time="$seconds" -timeout=20 -max_len=8192 \
        -artifact_prefix="$folder/findings/$target/" -print_final_stats=1 \
        "$folder/corpus/$target" "Fuzz/Corpus/$target" >"$folder/$target.log" 2>&1 ||
        { echo "$target: a finding, see $folder/$target.log and $folder/findings/$target"; return 1; }
    echo "$target: nothing found in $(sed -n 's/^stat::number_of_executed_units: *//p' "$folder/$target.log") runs"
}
