#!/usr/bin/env bash
# Does the program sleep while nothing is to be done?
#   benchmarks/idle.sh [PROGRAM [SECONDS]]   the program (build/bin/kelvora), how long to watch (10)
# Watches it with an empty main window, then with a setup window, each after it has settled: none of its threads may
# be woken. It runs on the display that is there, or else on an X server without a screen.
set -euo pipefail
if [[ -z ${QT_QPA_PLATFORM:-}${DISPLAY:-} ]]; then
    exec xvfb-run -a "${BASH_SOURCE[0]}" "$@"
fi
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
program=$(readlink -f "${1:-$root/build/bin/kelvora}")
seconds=${2:-10}
settling=5

work=$(mktemp -d)
id=
trap '[[ -z $id ]] || kill "$id"; rm -rf "$work"' EXIT

# switches: how often the program's threads have given the processor away or lost it, one line a thread.
switches() {
    local task
    for task in "/proc/$id/task/"*; do
        sed -n "s/^\(.*ctxt_switches\):\s*/${task##*/} \1 /p" "$task/status"
    done
}

# watch NAME [FILE...]
watch() {
    local before after failed=0
    mkdir -m 700 "$work/$1" "$work/$1/runtime" "$work/$1/config"
    XDG_RUNTIME_DIR=$work/$1/runtime XDG_CONFIG_HOME=$work/$1/config "$program" "${@:2}" &
    id=$!
    sleep "$settling"
    before=$(switches)
    sleep "$seconds"
    after=$(switches)
    if [[ -z $before || $before != "$after" ]]; then
        echo "$1: not idle for $seconds s: thread, kind, number of switches before and after"
        diff <(echo "$before") <(echo "$after") || true
        [[ -z $before ]] || ! command -v strace >/dev/null || timeout "$seconds" strace -f -p "$id" || true
        failed=1
    else
        echo "$1: no thread was woken for $seconds s"
    fi
    kill "$id"
    wait "$id" 2>/dev/null || true
    id=
    return $failed
}

failed=0
watch 'main window' || failed=1
watch 'setup window' "$root/examples/all-four.dat" || failed=1
exit $failed
