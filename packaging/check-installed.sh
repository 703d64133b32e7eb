#!/usr/bin/env bash
# Installs a package on this machine with what it depends on, uses it as a person would, and removes it again.
# For a machine that is thrown away afterwards; see check-package.sh.
#   check-installed.sh PACKAGE
set -euo pipefail
package=$1
home=$(mktemp -d)
mkdir -m 700 "$home/run"
chown -R nobody "$home"

fail() {
    printf '%s\n' "$@" >&2
    exit 1
}

# quietly COMMAND...: shows what it says only when it fails.
quietly() {
    local said
    said=$("$@" 2>&1 </dev/null) || fail "$said" "Failed: $*"
}

# as_person COMMAND...
as_person() {
    (cd "$home" && runuser -u nobody -- env HOME="$home" XDG_RUNTIME_DIR="$home/run" QT_QPA_PLATFORM=offscreen "$@")
}

# stays_open ARGUMENT...: whether the windows start, say nothing and are still there after a while.
stays_open() {
    local said code=0
    said=$(as_person timeout 5 kelvora "$@" 2>&1) || code=$?
    # A window system that shows nothing has no more to do.
    said=$(grep -v '^This plugin does not support ' <<<"$said" || true)
    [[ $code == 124 && -z $said ]] || fail "kelvora $* ended with $code and said:" "$said"
}

# install PACKAGE [OPTION]
install() {
    quietly apt-get --quiet --yes install --no-install-recommends "${@:2}" "$1"
}

# As an older version, with a file that the newer one no longer has.
install_older() {
    local folder=$home/older
    dpkg-deb --raw-extract "$package" "$folder"
    sed -i 's/^Version: .*/Version: 0.0.1-1/' "$folder/DEBIAN/control"
    touch "$folder/opt/kelvora/no-longer"
    quietly dpkg-deb --build -Znone "$folder" "$home/older.deb"
    chmod 755 "$home"
    install "$home/older.deb"
    rm -r "$folder" "$home/older.deb"
    [[ -f /opt/kelvora/no-longer ]] || fail "The older version was not installed"
}

installing() {
    export DEBIAN_FRONTEND=noninteractive
    quietly apt-get --quiet update
    install_older
    install "$package"
    [[ ! -e /opt/kelvora/no-longer ]] || fail "An upgrade leaves files of the older version behind"
    install "$package" --reinstall
}

using() {
    local version program page picture kind examples=/usr/share/doc/kelvora/examples
    version=$(dpkg-query --show --showformat='${Version}' kelvora)
    for program in kelvora kelvora-cli kelvora-bench; do
        [[ $(as_person "$program" --version) == *" ${version%-*}" ]] || fail "$program has another version than its package"
        zcat "/usr/share/man/man1/$program.1.gz" | grep -q '^\.SH OPTIONS' || fail "$program has no manual page"
    done
    quietly as_person kelvora-cli check "$examples" /opt/kelvora/bin/templates
    quietly as_person kelvora-cli scan --bench -o "$home/till.dat"
    quietly as_person kelvora-cli check "$home/till.dat"
    for kind in svg png pdf; do
        quietly as_person kelvora-cli render "$home/till.dat" -o "$home/till.$kind"
    done
    stays_open "$home/till.dat"
    stays_open --bench
    for page in /opt/kelvora/bin/Fenho*/*.html; do
        while read -r picture; do
            [[ -s ${page%/*}/$picture ]] || fail "$page shows $picture, which is not there"
        done < <(sed -n 's/.*src="\([^"]*\)".*/\1/p' "$page")
    done
    # Without a display only this tells that a window could open on one.
    ! ldd "$(dpkg -L libqt6gui6 | grep '/libqxcb\.so$')" | grep 'not found' || fail "Windows cannot open under X"
    grep -q x-kelvora-setup /usr/share/mime/magic || fail "The type of setup files is not known"
}

removing() {
    local files left
    files=$(dpkg -L kelvora)
    quietly apt-get --quiet --yes remove kelvora
    quietly dpkg --purge kelvora
    # An empty /opt goes too.
    left=$(find /etc /opt /usr /var -xdev -iname '*kelvora*' ! -path '/etc/dpkg/*-check' 2>/dev/null || true)
    left+=$(grep -rl kelvora /etc /opt /usr/lib/udev /usr/share /var/lib/dpkg/status /var/lib/dpkg/info 2>/dev/null || true)
    while read -r file; do
        [[ ! -f $file && ! -L $file ]] || left+=$'\n'$file
    done <<<"$files"
    [[ -z $left ]] || fail "Left behind:" "$left"
    [[ -d $home/.config/Kelvora ]] || fail "What a person had set is gone"
}

installing
using
removing
rm -rf "$home"
