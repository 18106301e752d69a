# shellcheck shell=bash
# ./dev sarif: fetches the official JSON Schema of SARIF 2.1.0, for the test that compares our logs with it.
# Exit status 77 says that this machine has no npm, or that npm does not get it.

sarif_package=@microsoft/sarif-multitool-linux@5.7.0
sarif_integrity=sha512-NxUbpq6ISCWoTQ/NfOYEwEDKq1Heka/rMoJ5R5LMydcAZQX/X7g5mWHcgxDub+0M07LC96tZ5LZHvF1Qy3gjTA==

dev_sarif() {
    local schema=build/sarif-2.1.0.json
    [ ! -f "$schema" ] || return 0
    npm_file "$schema" "$sarif_package" "$sarif_integrity" sarif-2.1.0.json || {
        local status=$?
        [ $status -ne 77 ] || echo 'sarif: there is no npm here, or it does not get the schema; the test that compares with it is skipped'
        return $status
    }
    echo "sarif: $schema"
}
