#!/usr/bin/env bash
# fresh_enter.sh ROOT ARCHIVES DATA COMMAND...: runs ./dev COMMAND... of the clone in ROOT. For `./dev fresh`
# alone: it mounts, and has to be the first process of mount and process namespaces of its own.
set -euo pipefail
root=$1 archives=$2 data=$3
shift 3

mount -t proc proc "$root/proc"
mount --rbind /sys "$root/sys"
mount --rbind /dev "$root/dev" # /dev/pts and /dev/shm included
mount --bind "$archives" "$root/var/cache/apt/archives"
settings=(HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin)
if [ -n "$data" ]; then
    mkdir -p "$root/data"
    mount --bind "$data" "$root/data"
    mount -o remount,bind,ro "$root/data"
    settings+=(KIV_TEST_DATA=/data)
fi
# In CI, warnings are errors there too.
[ -z "${CI:-}" ] || settings+=("CI=$CI")
for proxy in http_proxy https_proxy no_proxy; do
    [ -z "${!proxy:-}" ] || settings+=("$proxy=${!proxy}")
done
exec env -i "${settings[@]}" chroot "$root" bash -c 'cd /checkout && exec ./dev "$@"' dev "$@"
