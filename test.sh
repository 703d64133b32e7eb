#!/usr/bin/env bash
# Installs what is missing, builds the program with its tests and the sanitizers, and runs every test.
#   ./test.sh [ARGUMENT...]   the arguments go to ctest, as in ./test.sh -R setup
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=packaging/prepare.sh
. "$here/packaging/prepare.sh"

install_packages core forms tests
configure dev
build dev
cd "$root"
exec ctest --preset dev "$@"
