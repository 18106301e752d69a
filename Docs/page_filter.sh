#!/usr/bin/env bash
# page_filter.sh FILE: prints a page for doxygen, with links to files that are no part of the reference as plain names,
# and with the names by which other places link to the headings of rules, which doxygen does not make itself. The page of
# the rules loses its examples here: doxygen 1.9 reads at most 262,144 bytes of a page after its own conversion, and
# takes the rest for faults.
case "$1" in
*/Rules.md) exec sed -E '/^Wrong:$/,/^##/ { /^##/!d }
                         s/^### (([A-Z][0-9]{3}) ([a-z0-9-]+))$/### \1 {#\L\2-\3}/
                         s/^What `kivifc check` finds\./& `kivifc explain CODE` shows a wrong and a right example of each./' "$1" ;;
*.md) exec sed -E 's/\[[^]]*\]\(([^)]*(Examples|Tests|Benchmarks)\/[^)]*)\)/`\1`/g' "$1" ;;
*) exec cat "$1" ;;
esac
