#!/usr/bin/env bash
# Judges a Debian package, then installs, uses and removes it in a bare Debian 12 that is made for it, in a
# folder under TMPDIR. Needs root, the network and half a gigabyte.
#   check-package.sh PACKAGE
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=packaging/prepare.sh
. "$here/prepare.sh"
package=$(readlink -f "$1")
install_packages checks
if ((EUID != 0)); then
    exec sudo --preserve-env=TMPDIR,http_proxy,https_proxy -n "$0" "$package"
fi

# What it has to say against being run as root is not about the package.
lintian --fail-on error,warning --allow-root "$package"

if ! unshare --mount --propagation private mount --bind /dev /mnt 2>/dev/null; then
    say "This machine allows no mounts: the package was judged, but not installed."
    exit 0
fi

bare=$(mktemp -d)
chmod 755 "$bare"
trap 'rm -rf --one-file-system "$bare"' EXIT
log=$bare.log

# shellcheck disable=SC2016
mirror=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE)' 'Created-By: Packages' | sed -n 's/ bookworm$//p' | head -n 1)
say "Making a bare Debian 12"
# What is written there need not survive a loss of power.
mkdir -p "$bare/etc/dpkg/dpkg.cfg.d"
echo force-unsafe-io >"$bare/etc/dpkg/dpkg.cfg.d/kelvora-check"
if ! debootstrap --variant=minbase bookworm "$bare" "$mirror" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
rm -f "$log"
# It gets its packages the way this machine does.
rm -f "$bare/etc/apt/sources.list"
cp -a /etc/apt/. "$bare/etc/apt/"
cp /etc/resolv.conf /etc/hosts "$bare/etc/"
cp "$package" "$bare/tmp/kelvora.deb"
cp "$here/check-installed.sh" "$bare/tmp/"

# The mounts go with the namespace that they are made in.
export bare
# shellcheck disable=SC2016
unshare --mount --propagation private bash -euc '
    for folder in proc sys dev dev/pts; do
        mount --bind "/$folder" "$bare/$folder"
    done
    exec chroot "$bare" env -i HOME=/ PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
        ${http_proxy:+http_proxy="$http_proxy"} ${https_proxy:+https_proxy="$https_proxy"} \
        bash /tmp/check-installed.sh /tmp/kelvora.deb'
say "The package installs, works, and leaves nothing behind."
