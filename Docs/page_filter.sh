#!/usr/bin/env bash
# page_filter.sh FILE: prints a page for doxygen, with links to files that are no part of the reference as plain names.
case "$1" in
*.md) exec sed -E 's/\[[^]]*\]\(([^)]*(Examples|Tests|Benchmarks)\/[^)]*)\)/`\1`/g' "$1" ;;
*) exec cat "$1" ;;
esac
