# shellcheck shell=bash
# ./dev fresh [COMMANDS...]: what somebody finds who clones the repository on a machine that has nothing.
#
# A bare Debian 12 root is made once and kept (build/fresh/debian12.tar), as are the packages that were fetched.
# A copy of it gets a clone of the commit that is checked out here, and runs the two commands of README.md, or
# those that are given, each in a copy of its own. KIV_TEST_DATA is there too, read-only.
#
# All mounts are made in a mount namespace of their own, so they are gone when its processes are, however these
# end.

fresh=$PWD/build/fresh
fresh_root=$fresh/root
# The exit status where this machine does not permit it, which differs from that of a command that failed.
fresh_not_permitted=77

dev_fresh() {
    local command
    fresh_is_permitted
    need mmdebstrap git mount
    mkdir -p "$fresh/archives/partial"
    exec {fresh_lock}>"$fresh/lock"
    flock --nonblock "$fresh_lock" || fail "fresh: another run has $fresh"
    trap fresh_clean EXIT
    trap 'exit 130' INT TERM
    fresh_stage "bare root" fresh_base
    if [ $# -eq 0 ]; then
        fresh_stage "clone" fresh_copy
        fresh_stage "./dev demo" fresh_run demo
        fresh_stage "./dev test" fresh_run test
        return
    fi
    for command in "$@"; do
        fresh_copy
        # Its words are the arguments.
        # shellcheck disable=SC2086
        fresh_stage "./dev $command" fresh_run $command
    done
}

fresh_is_permitted() {
    [ "$(id -u)" -eq 0 ] && unshare --mount --pid --fork --mount-proc true 2>/dev/null && return
    echo "dev: fresh needs to be root and to be permitted to mount (/proc and others); here it is not" >&2
    exit $fresh_not_permitted
}

# fresh_stage NAME COMMAND...: says how long it took.
fresh_stage() {
    local name=$1 start=$SECONDS
    progress "fresh: $name"
    "${@:2}"
    progress ''
    printf 'fresh: %-20s %4d s%s\n' "$name" $((SECONDS - start)) "${fresh_words:+  $fresh_words}"
    fresh_words=
}

# The bare root from the Debian mirrors, proxies and certificates that this machine uses.
fresh_base() {
    local settings=$fresh/apt.conf
    [ ! -f "$fresh/debian12.tar" ] || return 0
    fresh_apt_settings >"$settings"
    fresh_mirrors | quietly mmdebstrap --variant=minbase --aptopt="$settings" \
        --customize-hook="$PWD/Tools/dev/fresh_certificates.sh" bookworm "$fresh/new.tar" -
    mv "$fresh/new.tar" "$fresh/debian12.tar"
}

fresh_mirrors() {
    # shellcheck disable=SC2016
    local form='deb $(REPO_URI) $(RELEASE) $(COMPONENT)' wanted=' bookworm(-updates|-security)? main$'
    apt-get indextargets --no-release-info --format "$form" 'Created-By: Packages' | grep -E "$wanted" | sort -u |
        grep . || fail "apt on this machine knows no Debian 12 mirror"
}

fresh_apt_settings() {
    apt-config dump | grep -E '^Acquire::(http|https|Check-|Retries|ForceIPv)' | grep -v ' "";$' || true
}

# A copy of the bare root with a clone of what is committed here.
fresh_copy() {
    rm -rf --one-file-system "$fresh_root"
    mkdir -p "$fresh_root"
    tar -C "$fresh_root" --numeric-owner --exclude='./dev/*' -xf "$fresh/debian12.tar"
    cp -L /etc/resolv.conf /etc/hosts "$fresh_root/etc/"
    fresh_clone "$fresh_root/checkout"
}

# What is committed here; where there is no repository, the files.
fresh_clone() {
    if [ ! -e .git ]; then
        mkdir "$1"
        tar --exclude=./build -cf - . | tar -C "$1" -xf -
        return
    fi
    # The checkout may be somebody else's, and clone hands no setting of its command line on.
    printf '[safe]\n\tdirectory = *\n' >"$fresh/gitconfig"
    GIT_CONFIG_GLOBAL=$fresh/gitconfig quietly git clone -q --no-hardlinks "$PWD" "$1"
}

# fresh_run COMMAND ARGUMENTS...: leaves the last line that it printed in fresh_words.
fresh_run() {
    local log=$fresh/$1.log
    unshare --mount --pid --fork --kill-child \
        Tools/dev/fresh_enter.sh "$fresh_root" "$fresh/archives" "${KIV_TEST_DATA:-}" "$@" \
        >"$log" 2>&1 </dev/null &
    fresh_process=$!
    wait $fresh_process || {
        cat "$log" >&2
        fail "fresh: ./dev $* failed; log: $log"
    }
    fresh_process=
    fresh_words=$(tail -n 1 "$log")
}

fresh_clean() {
    [ -z "${fresh_process:-}" ] || kill -KILL "$fresh_process" 2>/dev/null || true
    wait
    rm -rf --one-file-system "$fresh_root" "$fresh/new.tar"
}
