# shellcheck shell=bash
# ./dev rules: writes Docs/Rules.md, the page of what `kivifc check` finds, from the table of the rules.

dev_rules() {
    configure dev
    cmake --build --preset dev --target kivifc_documents
    build/dev/Tools/kivifc/kivifc_documents --rules Docs/Rules.md
}
