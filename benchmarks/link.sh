#!/usr/bin/env bash
# How long does an upload of 8192 random bytes at 9600 baud take, in times of the bare bytes' own time?
#   benchmarks/link.sh [FOLDER [SEEDS]]   the folder of the benchmarks' build (build-bench), the noisy runs of each in
#                                         real time (3)
# The program's upload runs on virtual time, whose figures count, and in real time through kelvora-bench; beside it
# XMODEM-1K and ZMODEM of lrzsz send the same bytes over a line of the same speed and noise. The upload is to stay at
# 1.12 on a whole line, on virtual and in real time, and at 1.9 on average over 100 seeds with one byte in a thousand
# lost, changed or doubled; the script fails otherwise.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
bin=$(readlink -f "${1:-$root/build-bench}")/bin
seeds=${2:-3}
most_whole=1.12
most_noisy=1.9
damage=0.001
# 8192 bytes of ten bits.
bare=8.533
# Programs that get stuck in the noise are ended.
limit=120

work=$(mktemp -d)
bench=
trap '[[ -z $bench ]] || kill "$bench" 2>/dev/null; rm -rf "$work"' EXIT

ratio() { awk -v time="$1" -v bare="$bare" 'BEGIN { printf "%.3f\n", time / bare }'; }

# upload DAMAGE SEED: the program's own, through kelvora-bench.
upload() {
    local third port seconds
    third=$(awk -v damage="$1" 'BEGIN { print damage / 3 }')
    : >"$work/ports"
    "$bin/kelvora-bench" --modules km096,km064,mcr123,iccr --state "$work/state" --seed "$2" --drop "$third" \
        --flip "$third" --duplicate "$third" >"$work/ports" &
    bench=$!
    until read -r _ port <"$work/ports"; do sleep 0.1; done
    told="failed"
    seconds=$(timeout "$limit" "$bin/timed_upload" "$port" "$work/image") && told=$(ratio "$seconds")
    kill "$bench"
    wait "$bench" || true
    bench=
}

# transfer DAMAGE SEED SENDER RECEIVER: another protocol; the receiver writes a file "image" into its folder.
transfer() {
    local seconds sent received
    rm -rf "$work/received"
    mkdir "$work/received"
    read -r seconds sent received < <("$bin/paced_relay" "$1" "$2" "$limit" "cd '$work' && exec $3 2>/dev/null" \
        "cd '$work/received' && exec $4 2>/dev/null")
    if cmp -s "$work/image" "$work/received/image"; then
        told=$(ratio "$seconds")
    elif [[ $sent$received == *143* ]]; then
        told="not within $limit s"
    else
        told="gave up after $(ratio "$seconds")"
    fi
}

# measure NAME DAMAGE SEED: leaves the outcome in "told".
measure() {
    case $1 in
        upload*) upload "$2" "$3" ;;
        XMODEM*) transfer "$2" "$3" 'sx -qk image' 'rx -qc image' ;;
        ZMODEM) transfer "$2" "$3" 'sz -q image' 'rz -q' ;;
    esac
}

# row NAME: in real time, first on a whole line, which it leaves in "whole_told", then with noise.
row() {
    local seed noisy=
    measure "$1" 0 1
    whole_told=$told
    for ((seed = 1; seed <= seeds; ++seed)); do
        measure "$1" "$damage" "$seed"
        noisy+="${noisy:+; }$told"
    done
    printf '%-24s %-12s %s\n' "$1" "$whole_told" "$noisy"
}

"$bin/random_state" "$work/state" "$work/image" 1
"$bin/link_benchmarks" --benchmark_format=csv 2>/dev/null | tr -d '"' |
    awk -F , '$1 == "name" { for (i = 1; i <= NF; ++i) column[$i] = i }
        /^UploadOver/ { print $column["times_bare"], $column["longest"], $column["failed"] }' >"$work/virtual"
{ read -r whole _ whole_failed; read -r noisy longest noisy_failed; } <"$work/virtual"

echo "8192 random bytes at 9600 baud, in times of the bare bytes' $bare s"
printf '%-24s %-12s %s\n' '' 'whole line' "one byte in 1000 lost, changed or doubled"
printf '%-24s %-12.3f %.3f on average, %.3f at most, %d of 100 failed\n' 'upload, virtual time' "$whole" "$noisy" \
    "$longest" "$noisy_failed"
row 'upload, real time'
whole_real=$whole_told
row XMODEM-1K
row ZMODEM

is_within() { awk -v value="$1" -v limit="$2" 'BEGIN { exit !(value + 0 == value && value > 0 && value <= limit) }'; }
failed=0
require() { is_within "$2" "$3" || { echo "too slow, $1: more than $3 times"; failed=1; }; }
require 'whole line, virtual time' "$whole" "$most_whole"
require 'whole line, real time' "$whole_real" "$most_whole"
require 'noisy line, virtual time' "$noisy" "$most_noisy"
((whole_failed + noisy_failed == 0)) || { echo "an upload failed"; failed=1; }
exit $failed
