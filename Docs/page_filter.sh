#!/usr/bin/env bash
# page_filter.sh FILE: prints a page for doxygen, with links to files that are no part of the reference as plain names,
# and with the names by which other places link to the headings of rules, which doxygen does not make itself.
case "$1" in
*.md) exec sed -E 's/\[[^]]*\]\(([^)]*(Examples|Tests|Benchmarks)\/[^)]*)\)/`\1`/g
                      s/^### (([A-Z][0-9]{3}) ([a-z0-9-]+))$/### \1 {#\L\2-\3}/' "$1" ;;
*) exec cat "$1" ;;
esac
