#!/usr/bin/env bash
# The main job on the sample data: demo.sh KIVIFC. Succeeds when every command ends as it is expected to.
set -euo pipefail
kivifc=$(realpath "${1:?usage: demo.sh KIVIFC}")
cd "$(dirname "${BASH_SOURCE[0]}")/Data"

# run STATUS WORDS KIVIFC-ARGUMENTS...: says what comes, shows the command, runs it and checks its exit status.
run() {
    local expected=$1 words=$2 status=0
    shift 2
    printf '\n%s\n\n$ kivifc %s\n' "$words" "$*"
    "$kivifc" "$@" 2>&1 || status=$?
    [ "$status" -eq "$expected" ] && return
    printf 'demo: exit status %s, expected %s\n' "$status" "$expected" >&2
    exit 1
}

run 0 'A schema is read whole, its rules as expression trees. What is in it:' \
    schema Building.exp
run 0 'The entities below one of them. Subtypes that no list names are found by their supertype:' \
    schema Building.exp --tree BldElement
run 0 'A property set is read and checked against the schema. Nothing has to be mended; notes say what may be:' \
    check Building.exp Sets/Pset_BldWall.xml
run 2 'These are worse: every finding has its place, its code and, where one is near, the name that is meant. Two
documents are no sets at all; they are named, the others are checked all the same, and the exit status is 2:' \
    check Building.exp BrokenSets
run 0 'Each code says more:' \
    explain C001

printf '\nDone: everything ended as expected.\n'
