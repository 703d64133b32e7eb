#!/usr/bin/env bash
# How idle is a series that waits, and do four lines at once take the time of one?
#   benchmarks/series.sh [FOLDER [SECONDS]]   the programs' folder (build-bench/bin), how long to wait (30)
# A series on a silent line may take 1 % of the processor. Four tills at once, each on a line of its own at 9600 baud,
# may take 1.1 times what one takes.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
folder=$(readlink -f "${1:-$root/build-bench/bin}")
seconds=${2:-30}

work=$(mktemp -d)
started=()
trap 'kill "${started[@]}" 2>/dev/null || true; rm -rf "$work"' EXIT
export XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config

# play NAME OPTION...: a bench, whose lines' devices it puts into the array "ports".
play() {
    "$folder/kelvora-bench" "${@:2}" >"$work/$1" &
    started+=($!)
    for _ in {1..100}; do
        [[ $(wc -l <"$work/$1") -ge $(printf '%s\n' "$@" | grep -c -e --modules) ]] && break
        sleep 0.05
    done
    mapfile -t ports < <(cut -d ' ' -f 2 "$work/$1")
}

# series NUMBER PORT: one till.
series() {
    "$folder/kelvora-cli" series --yes --json --count 1 --port "$1" --line "$1=$2" "$work/till.dat" >"$work/said.$1"
}

# other: the setup of a fresh line, with the first key of the extension keyboard unused.
other() {
    "$folder/kelvora-cli" scan --line 1="$1" -o "$work/till.dat"
    sed -i '/^\[KM064\]/,/^\[/s/= S/= =/' "$work/till.dat"
}

processor_ticks() {
    sed 's/.*) //' "/proc/$1/stat" | awk '{ print $12 + $13 }'
}

play silent --modules km096 --silent-after 0
"$folder/kelvora-cli" series --yes --json --line 1="${ports[0]}" "$root/examples/master.dat" >"$work/waiting" &
waiting=$!
started+=("$waiting")
sleep 2
before=$(processor_ticks "$waiting")
sleep "$seconds"
share=$(awk -v ticks=$(($(processor_ticks "$waiting") - before)) -v seconds="$seconds" -v second="$(getconf CLK_TCK)" \
    'BEGIN { printf "%.2f", 100 * ticks / second / seconds }')
kill -INT "$waiting"
echo "waiting: $share % of the processor"

play lines --modules km096,km064 --modules km096,km064 --modules km096,km064 --modules km096,km064 \
    --modules km096,km064
other "${ports[4]}"
start=$(date +%s%N)
series 1 "${ports[4]}"
one=$(($(date +%s%N) - start))
start=$(date +%s%N)
pids=()
for number in 1 2 3 4; do
    series "$number" "${ports[number - 1]}" &
    pids+=($!)
done
for pid in "${pids[@]}"; do
    wait "$pid"
done
four=$(($(date +%s%N) - start))
cat "$work"/said.? | grep -c '"result":"done"' | grep -qx 4
ratio=$(awk -v one="$one" -v four="$four" 'BEGIN { printf "%.3f", four / one }')
awk -v one="$one" 'BEGIN { printf "one till: %.1f s\n", one / 1e9 }'
echo "four at once, in times of one: $ratio"
awk -v share="$share" -v ratio="$ratio" 'BEGIN { exit !(share < 1 && ratio <= 1.1) }'
