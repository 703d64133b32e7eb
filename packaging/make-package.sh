#!/usr/bin/env bash
# Installs what is missing, builds the program and makes the Debian package, build/kelvora_*.deb; its name is
# all that is said on standard output.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=packaging/prepare.sh
. "$here/prepare.sh"

# The package's date is that of what it was made from.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -c safe.directory="$root" -C "$root" log -1 --format=%ct 2>/dev/null || date +%s)}
export SOURCE_DATE_EPOCH

install_packages core forms package
cmake -S "$root" --preset release -DKELVORA_FORMS:BOOL=ON >&2
build release
cd "$(build_folder release)"
rm -f kelvora_*.deb
cpack -G DEB >&2
printf '%s\n' "$PWD"/kelvora_*.deb
