#!/usr/bin/env bash
# Installs what is missing, builds the program and makes the Debian package, build/kelvora_*.deb; its name is
# all that is said on standard output.
#   make-package.sh [arm64]   for this machine, or for another's processor: build-arm64/kelvora_*.deb
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=packaging/prepare.sh
. "$here/prepare.sh"
preset=${1:-release}

# The package's date is that of what it was made from.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -c safe.directory="$root" -C "$root" log -1 --format=%ct 2>/dev/null || date +%s)}
export SOURCE_DATE_EPOCH
# The rights of its folders and files are not those that the person is used to.
umask 022

install_packages core forms package "$@"
cmake -S "$root" --preset "$preset" -DKELVORA_FORMS:BOOL=ON >&2
build "$preset"
cd "$(build_folder "$preset")"
rm -f kelvora_*.deb
cpack -G DEB >&2
printf '%s\n' "$PWD"/kelvora_*.deb
