#!/usr/bin/env bash
# What does a fleet cost the machine that runs it, and how does that grow?
#   benchmarks/fleet.sh [FOLDER [FORKS [TILLS...]]]   the programs (build-bench/bin), 20 forks, runs of 10, 50 and 200 tills
# Each run downloads a setup into so many simulated tills, which one kelvora-bench plays without pacing, through a real
# SSH server on this machine. Needs ansible-core, openssh-server and root: the bytes counted are those of a network that
# nobody else has. Told are the processor's seconds and the most memory of all that Ansible started here, the
# processor's seconds of the tills, and the bytes both ways, each with the frames around them. A machine that has more to
# do takes more of the processor's time for the same; so the seconds are also told in starts of ansible-playbook, ten of
# which are measured around each run. What it prints is the table of benchmarks/README.md.
set -euo pipefail
[[ ${FLEET_NETWORK-} ]] || FLEET_NETWORK=own exec unshare --net "$0" "$@"
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
bin=$(readlink -f "${1:-$root/build-bench/bin}")
forks=${2:-20}
tills=("${@:3}")
((${#tills[@]})) || tills=(10 50 200)

work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$work"' EXIT
cd "$work"
ip link set lo up
export HOME=$work XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config LC_ALL=C.UTF-8
export ANSIBLE_HOME=$work/ansible ANSIBLE_COLLECTIONS_PATH=$work/collections ANSIBLE_NOCOWS=1
export ANSIBLE_LOCALHOST_WARNING=False ANSIBLE_DEVEL_WARNING=False
mkdir -p collections/ansible_collections/kelvora setups
ln -s "$root/docs/fleet" collections/ansible_collections/kelvora/fleet

for key in host user; do ssh-keygen -q -t ed25519 -N '' -f "$work/$key"; done
cp user.pub authorized
cat >sshd <<SERVER
Port 2222
ListenAddress 0.0.0.0
HostKey $work/host
AuthorizedKeysFile $work/authorized
PidFile none
StrictModes no
UsePAM no
MaxStartups 1000
PermitUserEnvironment no
# A shell that is not the first one reads no start files, which may cost more than all else.
SetEnv SHLVL=2 XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config
SERVER
mkdir -p /run/sshd

# await PROCESS LOG COMMAND...: until the command is true. Tells the log and ends where the process is gone before, or a
# minute is.
await() {
    for ((turn = 0; turn < 600; ++turn)); do
        if "${@:3}"; then return; fi
        kill -0 "$1" 2>/dev/null || break
        sleep 0.1
    done
    cat "$2" >&2
    exit 1
}

plays() { (($(wc -l <lines) >= $1)); }
answers() { (: </dev/tcp/127.0.0.1/2222) 2>/dev/null; }

# play N: the lines of N tills, in the array "devices".
play() {
    : >lines
    "$bin/kelvora-bench" --unpaced --modules km096,km064 --lines "$1" >lines 2>bench.log &
    bench=$!
    await "$bench" bench.log plays "$1"
    mapfile -t devices < <(cut -d ' ' -f 2 lines)
}

# inventory N: each till has an address of its own, as each has a connection of its own.
inventory() {
    cat <<GROUP
tills:
  vars:
    ansible_port: 2222
    ansible_user: root
    ansible_ssh_private_key_file: $work/user
    ansible_ssh_common_args: -o StrictHostKeyChecking=no -o UserKnownHostsFile=/dev/null -o LogLevel=ERROR
    kelvora_setup: setups/till.dat
    kelvora_command: [$bin/kelvora-cli]
  hosts:
GROUP
    for ((index = 0; index < $1; ++index)); do
        printf '    till-%03d: {ansible_host: 127.0.%d.%d, kelvora_line: "1=%s"}\n' \
            "$index" $((1 + index / 200)) $((1 + index % 200)) "${devices[index]}"
    done
}

bytes() { sed -n 's/^ *lo: *\([0-9]*\).*/\1/p' /proc/net/dev; }

# start FILE
start() {
    python3 "$root/benchmarks/fleet/spent.py" "$1" \
        bash -c 'for i in {1..5}; do ansible-playbook --version; done' >versions
}

# run N: leaves here.N, there.N, and in before.N and after.N what five starts take.
run() {
    local before
    play "$1"
    [[ -f setups/till.dat ]] || {
        "$bin/kelvora-cli" scan --line "1=${devices[0]}" -o scanned
        sed 's/^Fiscal = YES/Fiscal = NO/' scanned >setups/till.dat
    }
    inventory "$1" >inventory.yml
    python3 "$root/benchmarks/fleet/spent.py" "there.$1" /usr/sbin/sshd -D -e -f "$work/sshd" 2>sshd.log &
    server=$!
    await "$server" sshd.log answers
    start "before.$1"
    before=$(bytes)
    python3 "$root/benchmarks/fleet/spent.py" "here.$1" ansible-playbook -i inventory.yml kelvora.fleet.setups \
        --forks "$forks" -e "kelvora_action=download kelvora_results=results.$1" >"log.$1" 2>&1 ||
        { tail -n 40 "log.$1"; exit 1; }
    echo $(($(bytes) - before)) >"bytes.$1"
    start "after.$1"
    kill "$server" "$bench"
    wait "$server" "$bench" || true
    if (($(cat results."$1"/*.json | grep -c '"device": "new"') != $1)); then
        tail -n 40 "log.$1"
        exit 1
    fi
}

cat <<'HEAD'
| tills | processor, s a till | the same in starts | memory in all, MB | the tills' own processor, s a till | network, kB a till |
|---|---|---|---|---|---|
HEAD
for number in "${tills[@]}"; do
    run "$number"
    python3 - "$number" <<'FIGURES'
import json, sys
n = int(sys.argv[1])
here, there, before, after = (json.load(open(f"{name}.{n}")) for name in ("here", "there", "before", "after"))
start = (before["seconds"] + after["seconds"]) / 10
print("| %d | %.2f | %.2f | %.0f | %.2f | %.1f |" % (n, here["seconds"] / n, here["seconds"] / n / start, here["mb"],
                                                     there["seconds"] / n, int(open(f"bytes.{n}").read()) / n / 1000))
FIGURES
done
