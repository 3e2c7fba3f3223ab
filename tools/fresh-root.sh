#!/usr/bin/env bash
# Runs ./run and ./test as on a machine that has nothing installed: in a bare Debian 12 of its own, on a clean clone of what is
# committed. By hand, as root. Takes the packages from where this machine takes its own.
#   tools/fresh-root.sh               both commands, the root is removed afterwards
#   tools/fresh-root.sh run           ./run alone; in the same way test
#   tools/fresh-root.sh --keep test   leaves the root to look at, and tells where it is
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/setup.sh

keep=
commands=()
for word in "$@"; do
    case $word in
        --keep) keep=yes ;;
        run | test) commands+=("$word") ;;
        *) echo "usage: tools/fresh-root.sh [--keep] [run] [test]"; exit 2 ;;
    esac
done
[ ${#commands[@]} -gt 0 ] || commands=(run test)
[ "$(id -u)" -eq 0 ] || { echo "Making a root needs to be root."; exit 1; }
install_missing debootstrap git

root=$(mktemp -d --tmpdir bellmark-root.XXXXXX)
chmod 755 "$root"
leave() {
    umount "$root/tmp" "$root/proc" 2> /dev/null || true
    if [ -n "$keep" ]; then
        echo "Left in $root"
    else
        rm -rf --one-file-system "$root"
    fi
}
trap leave EXIT

mirror=$(apt-get indextargets --format '$(CODENAME) $(REPO_URI)' | awk '$1 == "bookworm" && !seen++ { print $2 }')
[ -n "$mirror" ] || { echo "This machine's package sources do not name Debian 12 (bookworm)."; exit 1; }
echo "Making a bare Debian 12 from $mirror"
debootstrap --variant=minbase bookworm "$root" "$mirror" > "$root/debootstrap.log" || { tail -n 20 "$root/debootstrap.log"; exit 1; }
mount -t proc proc "$root/proc"
mount -t tmpfs tmpfs "$root/tmp"
git clone --quiet --no-hardlinks . "$root/bellmark"

failed=
for command in "${commands[@]}"; do
    begin=$(date +%s)
    env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin ${BELLMARK_FUZZ_SECONDS:+BELLMARK_FUZZ_SECONDS="$BELLMARK_FUZZ_SECONDS"} \
        chroot "$root" "/bellmark/$command" && verdict=passed || { verdict=FAILED; failed=yes; }
    echo "./$command $verdict after $(($(date +%s) - begin)) s"
done
[ -z "$failed" ]
