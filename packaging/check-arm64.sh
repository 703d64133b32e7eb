#!/usr/bin/env bash
# Makes the package for arm64 on a machine with another processor, judges it, and runs the command line's tests as that
# processor would. Lets this machine install packages for arm64; needs root for that, once.
#   check-arm64.sh
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=packaging/prepare.sh
. "$here/prepare.sh"
install_packages core forms package checks tests arm64
package=$("$here/make-package.sh" arm64)
lintian --fail-on error,warning --allow-root "$package"

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
dpkg-deb --extract "$package" "$unpacked"
examples=$unpacked/usr/share/doc/kelvora/examples
# on_arm64 PROGRAM ARGUMENT...
on_arm64() {
    qemu-aarch64 "$unpacked/opt/kelvora/bin/$1" "${@:2}"
}
for program in kelvora kelvora-cli kelvora-bench; do
    QT_QPA_PLATFORM=offscreen on_arm64 "$program" --version >&2
done
on_arm64 kelvora-cli check "$examples"

# An emulated program starts no other, and lacks what the bench waits with: that is played by this machine.
configure release
build release kelvora-bench
mkfifo "$unpacked/line" "$unpacked/held"
"$(build_folder release)/bin/kelvora-bench" --unpaced --until-eof <"$unpacked/held" >"$unpacked/line" &
exec 3>"$unpacked/held"
read -r _ line <"$unpacked/line"
on_arm64 kelvora-cli scan --line "1=$line" -o "$unpacked/till.dat"
on_arm64 kelvora-cli download --yes --line "1=$line" "$unpacked/till.dat"
exec 3>&-
wait
on_arm64 kelvora-cli render "$unpacked/till.dat" -o "$unpacked/till.svg"

configure arm64 KELVORA_TESTS:BOOL=ON
build arm64 setup_tests cli_tests
GTEST_FILTER='-Render*' ctest --test-dir "$(build_folder arm64)" --output-on-failure --tests-regex '^(setup|cli)_tests'
say "The package for arm64 is made and works."
