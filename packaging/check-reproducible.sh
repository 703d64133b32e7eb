#!/usr/bin/env bash
# Makes the package of what is committed twice, in other folders, at another hour and with other habits of the person,
# and compares: the same commit is to give the same bytes. Takes two builds' time.
#   check-reproducible.sh [arm64]
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=packaging/prepare.sh
. "$here/prepare.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# made FOLDER VARIABLE=VALUE...: the name of the package.
made() {
    git clone --quiet "$work/committed" "$work/$1"
    env "${@:2}" "$work/$1/packaging/make-package.sh" ${arguments[0]+"${arguments[@]}"}
}

arguments=("$@")
git -c safe.directory="$root" clone --quiet --bare "$root" "$work/committed"
umask 022
first=$(made one TZ=UTC LC_ALL=C.UTF-8 HOME="$work")
umask 077
second=$(made another/of-them TZ=Asia/Tokyo LC_ALL=C HOME="$work/another")
if ! cmp "$first" "$second" >&2; then
    for each in first second; do
        dpkg-deb -R "${!each}" "$work/$each"
        dpkg-deb -c "${!each}" >"$work/$each.names"
    done
    diff -rq "$work/first" "$work/second" >&2 || true
    diff "$work/first.names" "$work/second.names" >&2 || true
    exit 1
fi
sha256sum "$first" "$second" >&2
say "The same commit gives the same package."
