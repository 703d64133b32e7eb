#!/usr/bin/env bash
# Installs and builds what is missing, and starts the program:
#   ./run.sh [ARGUMENT...]       the windows, with simulated devices on COM1 and COM2; --no-bench leaves
#                                them out
#   ./run.sh cli [ARGUMENT...]   the command line
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=packaging/prepare.sh
. "$here/packaging/prepare.sh"
# shellcheck source=packaging/vnc.sh
. "$here/packaging/vnc.sh"

run_command_line() {
    local program=$root/build/bin/kelvora-cli forms=OFF
    install_packages core
    # The windows are built on only where their packages are already there.
    [[ -n $(missing_packages forms) ]] || forms=ON
    configure release "KELVORA_FORMS:BOOL=$forms"
    build release kelvora-cli
    exec "$program" "$@"
}

# with_bench ARGUMENT...: the same, with the simulated devices unless told otherwise.
with_bench() {
    local argument bench=1
    arguments=()
    for argument in "$@"; do
        if [[ $argument == --no-bench ]]; then bench=0; else arguments+=("$argument"); fi
    done
    ((!bench)) || arguments=(--bench "${arguments[@]}")
}

run_windows() {
    local program=$root/build/bin/kelvora
    local -a arguments
    with_bench "$@"
    local -a steps=(core forms)
    if [[ -z ${QT_QPA_PLATFORM:-} && -z ${DISPLAY:-} ]]; then
        if [[ -n ${WAYLAND_DISPLAY:-} ]]; then
            steps+=(wayland)
            export QT_QPA_PLATFORM=wayland
        else
            steps+=(vnc)
        fi
    fi
    install_packages "${steps[@]}"
    configure release KELVORA_FORMS:BOOL=ON
    build release
    [[ " ${steps[*]} " != *" vnc "* ]] || run_on_vnc "$program" "${arguments[@]}"
    exec "$program" "${arguments[@]}"
}

if [[ ${1:-} == cli ]]; then
    run_command_line "${@:2}"
else
    run_windows "$@"
fi
