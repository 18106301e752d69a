# shellcheck shell=bash
# ./dev sarif: fetches the official JSON Schema of SARIF 2.1.0, for the test that compares our logs with it.
# Exit status 77 says that this machine has no npm, or that npm does not get it.

sarif_package=@microsoft/sarif-multitool-linux@5.7.0
sarif_integrity=sha512-NxUbpq6ISCWoTQ/NfOYEwEDKq1Heka/rMoJ5R5LMydcAZQX/X7g5mWHcgxDub+0M07LC96tZ5LZHvF1Qy3gjTA==

dev_sarif() {
    local schema=build/sarif-2.1.0.json folder archive
    [ ! -f "$schema" ] || return 0
    command -v npm >/dev/null || return 77
    mkdir -p build
    folder=$(mktemp -d build/sarif.XXXXXX)
    if ! quietly npm pack --silent --pack-destination "$folder" "$sarif_package" >/dev/null; then
        rm -rf "$folder"
        return 77
    fi
    archive=$folder/$(ls "$folder")
    if [ "sha512-$(openssl dgst -sha512 -binary "$archive" | base64 -w 0)" != "$sarif_integrity" ]; then
        rm -rf "$folder"
        fail "$sarif_package is not what it was"
    fi
    tar -xzOf "$archive" package/sarif-2.1.0.json >"$schema"
    rm -rf "$folder"
    echo "sarif: $schema"
}
