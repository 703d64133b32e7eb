#!/usr/bin/env bash
# How much longer does a scan with its upload take over a network line than over the wire itself?
#   benchmarks/network.sh [FOLDER [ROUNDS]]   the folder of the programs' build (build-bench), the scans of each (3)
# The line is one of kelvora-bench at 9600 baud; before it stand, in turn, nothing, ser2net with RFC 2217, socat as a raw
# server, and the example bridge, all on this machine. Needs ser2net, socat and python3-serial. Fails when a server's scan takes
# more than 1.1 times that of the wire.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
bin=$(readlink -f "${1:-$root/build-bench}")/bin
rounds=${2:-3}
most=1.1
number=47811

work=$(mktemp -d)
server=
trap '[[ -z $server ]] || kill "$server" 2>/dev/null; kill "$bench" 2>/dev/null; rm -rf "$work"' EXIT

: >"$work/ports"
"$bin/kelvora-bench" --modules km096,km064,mcr123,iccr >"$work/ports" &
bench=$!
until read -r _ device <"$work/ports"; do sleep 0.1; done

# start KIND: leaves the address of the line in "address", and its server's process in "server".
start() {
    address=$1:localhost:$number
    case $1 in
        wire) address=$device ;;
        rfc2217)
            printf 'connection: &line\n  accepter: telnet(rfc2217),tcp,localhost,%s\n  connector: serialdev,%s,9600n81,local\n' \
                "$number" "$device" >"$work/ser2net.yaml"
            /usr/sbin/ser2net -n -u -c "$work/ser2net.yaml" &
            server=$!
            ;;
        raw)
            socat "TCP-LISTEN:$number,bind=127.0.0.1,reuseaddr" "FILE:$device,raw,echo=0,b9600" &
            server=$!
            ;;
        bridge)
            /usr/bin/python3 "$root/docs/bridge.py" "$device" "$number" &
            server=$!
            ;;
    esac
    [[ $1 == wire ]] || until [[ -n $(ss -Hltn "sport = :$number") ]]; do sleep 0.1; done
}

stop() {
    [[ -z $server ]] || kill "$server" 2>/dev/null || true
    wait "$server" 2>/dev/null || true
    server=
}

seconds_of_a_scan() {
    local began
    began=$EPOCHREALTIME
    timeout 120 "$bin/kelvora-cli" scan --line "1=$address" >/dev/null
    awk -v began="$began" -v ended="$EPOCHREALTIME" 'BEGIN { printf "%.2f\n", ended - began }'
}

for ((round = 0; round < rounds; ++round)); do
    for kind in wire rfc2217 raw bridge; do
        start "$kind"
        seconds_of_a_scan >>"$work/$kind"
        stop
    done
done

middle() { sort -n "$1" | awk '{ all[NR] = $1 } END { print all[int((NR + 1) / 2)] }'; }
wire=$(middle "$work/wire")
failed=0
for kind in wire rfc2217 raw bridge; do
    middle "$work/$kind" | awk -v kind="$kind" -v wire="$wire" -v most="$most" '{
        printf "%-8s %6.2f s %6.3f times the wire\n", kind, $1, $1 / wire
        exit $1 / wire > most }' || { echo "too slow: more than $most times"; failed=1; }
done
exit $failed
