#!/usr/bin/env bash
# How long does "kelvora-cli check FOLDER" take, compared with reading the same files one after the other?
#   benchmarks/check-folder.sh [PROGRAM [FILES]]   the program (build/bin/kelvora-cli), the number of files (100000)
# Both run in turn on a warm cache; the middle of the ratios is to stay at 1.5 or below, and the memory that the
# check takes is to stay what it is for a tenth of the files.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
program=$(readlink -f "${1:-$root/build/bin/kelvora-cli}")
files=${2:-100000}
per_folder=1000
pairs=7
most=1.5
# Unequal by what a folder's names and the allocator's mood make of it.
memory_most=1.5

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
examples=("$root"/examples/*.dat)

make_files() {
    local number folders=$(((files + per_folder - 1) / per_folder))
    mkdir -p "$work/tills/shop0"
    for ((number = 0; number < per_folder; ++number)); do
        cat "${examples[number % ${#examples[@]}]}" >"$work/tills/shop0/till$number.dat"
    done
    for ((number = 1; number < folders; ++number)); do
        cp -r "$work/tills/shop0" "$work/tills/shop$number"
    done
}

check() { "$program" check --quiet "$@"; }
read_all() { find "$work/tills" -type f -print0 | xargs -0 cat >/dev/null; }

# milliseconds COMMAND...: how long the command takes.
milliseconds() {
    local start=${EPOCHREALTIME/[.,]/}
    "$@"
    echo $(((${EPOCHREALTIME/[.,]/} - start) / 1000))
}

# peak FOLDER...: the most memory that a check takes, in KiB.
peak() {
    "$program" check --quiet "$@" &
    local id=$! most_seen=0 seen
    while seen=$(sed -n 's/^VmHWM:[^0-9]*\([0-9]*\).*/\1/p' "/proc/$id/status" 2>/dev/null) && [[ -n $seen ]]; do
        most_seen=$seen
    done
    wait "$id"
    echo "$most_seen"
}

# ratio A B
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f\n", a / b }'; }
is_within() { awk -v value="$1" -v limit="$2" 'BEGIN { exit !(value <= limit) }'; }

echo "Making $files files ..."
make_files
check "$work/tills"
read_all

ratios=()
for ((pair = 1; pair <= pairs; ++pair)); do
    checked=$(milliseconds check "$work/tills")
    read=$(milliseconds read_all)
    ratios+=("$(ratio "$checked" "$read")")
    echo "check $checked ms, xargs cat $read ms, ratio ${ratios[-1]}"
done
middle=$(printf '%s\n' "${ratios[@]}" | sort -n | sed -n "$(((pairs + 1) / 2))p")

tenth=$(peak "$work"/tills/shop*0)
all=$(peak "$work/tills")
echo "middle ratio $middle (at most $most); memory $tenth KiB for a tenth, $all KiB for all"
is_within "$middle" "$most" && is_within "$(ratio "$all" "$tenth")" "$memory_most"
