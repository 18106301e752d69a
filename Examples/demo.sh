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
run 0 'Property and quantity sets are read and checked against the schema. These are clean:' \
    check Building.exp Sets
run 2 'These are not: every record has its line, and warnings tell what the library could not make sense of.
Two documents are no sets at all; they are named, the others are checked all the same, and the exit status is 2:' \
    check Building.exp BrokenSets

printf '\nDone: everything ended as expected.\n'
