# shellcheck shell=bash
# ./dev site [FILE.exp SETS...]: the sites of the sample, of hostile documents and, where KIV_TEST_DATA names them, of the real
# schemas, in build/site, and all tests of what is on their pages; with arguments the site of these, without tests in a browser.
# Exit status 77 says that there is no Chromium here; what needs none has been tested then. In CI that is a failure where
# Chromium could be installed.

axe_package=axe-core@4.14.1
axe_integrity=sha512-FHfa+lmNjQZfJz1q8wKqIDwC6DExcHt/pkjNQb09a3NPjCKg2rhu5qb2S4r76ASyFNNtuFooJpZe37OgudVGtQ==
vnu_package=vnu-jar@26.9.27
vnu_integrity=sha512-TkQd5DFfOaWC9ebtvozTsrH2Vaod3jYg+vrOeREzIXxBexLz9+rS2DNtjn7+RPUiZhgli0SghgBX6RJRNea0KA==

site_folder=build/site
site_preset=${KIV_SITE_PRESET:-release}
site_kivifc=build/$site_preset/Tools/kivifc/kivifc

dev_site() {
    local status=0
    configure "$site_preset"
    compile "$site_preset" kivifc
    mkdir -p "$site_folder"
    if [ $# -gt 0 ]; then
        site_make given "$@"
        site_check given "$@"
        return
    fi
    rm -rf "$site_folder/screenshots"
    site_make sample Examples/Data/Building.exp Examples/Data/Sets
    python3 Tests/Site/hostile.py "$site_folder/documents"
    site_make hostile "$site_folder/documents/Hostile.exp" "$site_folder/documents/Sets"
    python3 Tests/Site/checkers_test.py
    site_check sample Examples/Data/Building.exp Examples/Data/Sets || status=1
    python3 Tests/Site/links.py "$site_folder/hostile" || status=1
    site_real || status=1
    site_valid || status=1
    site_browse || { [ $? -eq 77 ] && [ $status -eq 0 ] && status=77 || status=1; }
    return $status
}

# site_make NAME FILE.exp SETS...: build/site/NAME. That sets have findings is no failure.
site_make() {
    local name=$1
    progress "writing the site of $name"
    "$site_kivifc" site "${@:2}" --out "$site_folder/$name" >"$site_folder/$name.log" 2>&1 || [ $? -eq 1 ] || {
        cat "$site_folder/$name.log" >&2
        fail "kivifc site failed for $name"
    }
    progress ''
}

# site_check NAME FILE.exp SETS...: links and what is on the pages, beside what was read.
site_check() {
    local status=0
    progress "checking the pages of $1"
    python3 Tests/Site/complete.py --kivifc "$site_kivifc" "$site_folder/$1" "${@:2}" || status=1
    progress ''
    return $status
}

site_real() {
    local data=${KIV_TEST_DATA:-} status=0
    [ -d "$data/schema" ] || {
        echo 'site: the real schemas are left out: KIV_TEST_DATA does not name their folder'
        return 0
    }
    site_make IFC4 "$data/schema/IFC4_ADD2.exp" "$data/sets/IFC4" "$data/sets/IFC4_QTO"
    site_make IFC2X3 "$data/schema/IFC2X3_TC1.exp" "$data/sets/IFC2X3"
    site_check IFC4 "$data/schema/IFC4_ADD2.exp" "$data/sets/IFC4" "$data/sets/IFC4_QTO" || status=1
    site_check IFC2X3 "$data/schema/IFC2X3_TC1.exp" "$data/sets/IFC2X3" || status=1
    site_small IFC4 || status=1
    return $status
}

# site_small NAME: how large a site and its search index may be, in bytes of the files: what a copy or a server has. Most
# file systems keep whole blocks, 4 KiB each, which is a little more.
site_small() {
    local all index kept
    all=$(find "$site_folder/$1" -type f -printf '%s\n' | awk '{ sum += $1 } END { printf "%d", sum }')
    kept=$(du -s --block-size=1 "$site_folder/$1" | cut -f 1)
    index=$(stat -c %s "$site_folder/$1/assets/search-index.js")
    echo "size: $1: $((all / 1024)) KiB in files ($((kept / 1024)) KiB of this disk), of which the search index $((index / 1024)) KiB"
    [ "$all" -le 25000000 ] && [ "$index" -le 2000000 ]
}

# site_missing TEXT: says what is left out. In CI that is a failure, unless this machine does not reach npm at all.
site_missing() {
    echo "site: $1"
    if [ -n "${CI:-}" ] && command -v npm >/dev/null && timeout 30 npm ping >/dev/null 2>&1; then
        echo 'site: npm answers, so that is a failure'
        return 1
    fi
}

# The HTML of all pages of the sites that are there, as the checker of the W3C sees it.
site_valid() {
    local jar=build/tools/vnu.jar log=$site_folder/valid.log sites=() name status=0
    need default-jre-headless
    npm_file "$jar" "$vnu_package" "$vnu_integrity" build/dist/vnu.jar || {
        site_missing 'the HTML is not validated: npm does not get the checker'
        return
    }
    for name in sample hostile IFC4 IFC2X3; do
        [ ! -d "$site_folder/$name" ] || sites+=("$site_folder/$name")
    done
    progress 'validating the HTML'
    java -Xss8m -jar "$jar" --errors-only --skip-non-html "${sites[@]}" 2>"$log" || status=1
    progress ''
    cut -c 1-400 "$log" | head -n 20
    echo "valid: $(wc -l <"$log") errors in the HTML of ${#sites[@]} sites"
    return $status
}

# Says that nothing was looked at in a browser. A machine that gets packages must not pass so in CI: the stage would be left out
# for ever without anybody noticing.
site_browserless() {
    echo 'site: the tests in a browser were skipped: there is no Chromium here; what needs none was tested'
    if [ -n "${CI:-}" ] && site_installs chromium; then
        echo 'site: apt can install it, so that is a failure'
        return 1
    fi
    return 77
}

# site_installs PACKAGE: whether this machine may install packages, reaches where they are, and that one is there.
site_installs() {
    local sudo=()
    command -v apt-get >/dev/null || return 1
    if [ "$(id -u)" -ne 0 ]; then
        sudo -n true 2>/dev/null || return 1
        sudo=(sudo)
    fi
    "${sudo[@]}" timeout 120 apt-get -o APT::Update::Error-Mode=any update -qq >/dev/null 2>&1 &&
        apt-cache policy "$1" | grep -q 'Candidate: [0-9]'
}

# What people see and do.
site_browse() {
    local axe=build/tools/axe.min.js large= status=0
    (need chromium chromium-driver python3-selenium) >&2 && command -v chromium >/dev/null || {
        site_browserless
        return
    }
    npm_file "$axe" "$axe_package" "$axe_integrity" axe.min.js || {
        site_missing 'access is not tested: npm does not get axe-core' || status=1
        axe=
    }
    [ ! -d "$site_folder/IFC4" ] || large=$site_folder/IFC4
    progress 'looking at the pages in Chromium'
    KIV_SITE=$site_folder/sample KIV_SITE_HOSTILE=$site_folder/hostile KIV_SITE_LARGE=$large KIV_SITE_AXE=$axe \
        KIV_SITE_SCREENSHOTS=$site_folder/screenshots /usr/bin/python3 Tests/Site/browser_test.py || status=1
    return $status
}
