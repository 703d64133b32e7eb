# shellcheck shell=bash
# What the scripts share: installing the packages of packages.txt that are missing, and building a preset.
# To be sourced under "set -euo pipefail". All that is said here goes to standard error: standard output
# belongs to what the scripts run.

root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")

say() {
    printf '%s\n' "$@" >&2
}

# missing_packages STEP...: the packages of these steps that are not installed, one a line.
missing_packages() {
    local step package
    local -a wanted=()
    while read -r step package; do
        [[ " $* " != *" $step "* ]] || wanted+=("$package")
    done <"$root/packaging/packages.txt"
    # dpkg-query fails when it knows one of the names not at all, and still shows the others.
    { dpkg-query --show --showformat='${db:Status-Status} ${Package}\n${db:Status-Status} ${Package}:${Architecture}\n' \
        "${wanted[@]}" 2>/dev/null || true; } |
        sed -n 's/^installed //p' |
        { grep -vxFf - <(printf '%s\n' "${wanted[@]}") || true; }
}

# apt_get ARGUMENT...: waits for an upgrade that runs in the background, asks nothing.
apt_get() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get --yes --quiet --option DPkg::Lock::Timeout=120 "$@" </dev/null >&2
}

# install_packages STEP...: ends the script when something is missing and cannot be installed.
install_packages() {
    local -a missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0

    local by_hand="apt-get install --no-install-recommends ${missing[*]}"
    if ((EUID != 0)); then
        if sudo -n true 2>/dev/null; then
            as_root=(sudo -n)
        elif [[ -t 0 && -t 2 ]] && command -v sudo >/dev/null; then
            as_root=(sudo)
        else
            say "Packages are missing. Install them as root, then try again:" "" "$by_hand"
            exit 1
        fi
    fi

    say "Installing: ${missing[*]}"
    compgen -G '/var/lib/apt/lists/*_Packages*' >/dev/null || apt_get update || true
    # Packages for another processor are known only when that has been told.
    if [[ " ${missing[*]} " == *:arm64\ * && $(dpkg --print-foreign-architectures) != *arm64* ]]; then
        "${as_root[@]}" dpkg --add-architecture arm64
        apt_get update || true
    fi
    apt_get install --no-install-recommends "${missing[@]}" && return 0
    # The lists may be older than what the mirror still has.
    apt_get update || true
    apt_get install --no-install-recommends "${missing[@]}" && return 0
    say "The packages could not be installed. Install them as root, then try again:" "" "$by_hand"
    exit 1
}

# build_folder PRESET
build_folder() {
    case $1 in
        release) echo "$root/build" ;;
        *) echo "$root/build-$1" ;;
    esac
}

# has_lines FILE LINE...
has_lines() {
    local line
    for line in "${@:2}"; do
        grep -qxF -- "$line" "$1" || return 1
    done
}

# configure PRESET [NAME:TYPE=VALUE...]: does nothing when that is how the preset's folder stands.
configure() {
    local folder cache
    local -a values=("${@:2}") fresh=()
    folder=$(build_folder "$1")
    cache=$folder/CMakeCache.txt
    # A checkout that was moved or copied takes nothing over from where it stood.
    if [[ -f $cache ]] && ! has_lines "$cache" "CMAKE_HOME_DIRECTORY:INTERNAL=$root"; then
        fresh=(--fresh)
    elif [[ -f $folder/build.ninja ]] && has_lines "$cache" "${values[@]}"; then
        return 0
    fi
    cmake "${fresh[@]}" -S "$root" --preset "$1" "${values[@]/#/-D}" >&2
}

# build PRESET [TARGET...]: says nothing when nothing is to be done.
build() {
    local -a command=(ninja -C "$(build_folder "$1")" "${@:2}")
    "${command[@]}" -n | grep -qx 'ninja: no work to do.' || "${command[@]}" >&2
}
