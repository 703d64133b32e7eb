#!/usr/bin/env bash
# fleet.sh PROGRAMS PLAYBOOK: tills on this machine: one to download to, two that hold their setup, one with other
# modules, and those without a line, a setup and a program.
set -euo pipefail
programs=$1
playbook=$2
command -v ansible-playbook >/dev/null || exit 77

work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$work"' EXIT
export ANSIBLE_LOCALHOST_WARNING=False ANSIBLE_NOCOWS=1 ANSIBLE_HOME=$work/ansible ASAN_OPTIONS=detect_leaks=0
# Fewer processes, and fewer looks at those that work.
export ANSIBLE_PIPELINING=1 ANSIBLE_INTERNAL_POLL_INTERVAL=0.01
export XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config LC_ALL=C.UTF-8
export TMPDIR=$work/tmp
mkdir "$TMPDIR"
cd "$work"

# bench NAME MODULES: plays a till's devices and prints the name of their line.
bench() {
    "$programs/kelvora-bench" --unpaced --modules "$2" >"$1.line" 2>"$1.err" &
    for _ in {1..100}; do
        if [[ -s $1.line ]]; then
            sed -n '1s/^1[^/]*//p' "$1.line"
            return
        fi
        sleep 0.1
    done
    cat "$1.err" >&2
    return 1
}
for till in good held same; do
    bench "$till" km096,km064 >"$till.device"
done
bench other km096 >other.device

# run NAME ARGUMENT...: also where tills fail. Most of a run's time is Ansible's own: few do much.
run() {
    ansible-playbook -i inventory.yml "$playbook" "${@:2}" >"$1.log" 2>&1 || true
}

# expect TILL QUERY VALUE: of the last run's result.
expect() {
    local found
    found=$(python3 -c 'import json, sys; print(eval("of" + sys.argv[2], {"of": json.load(open(sys.argv[1]))}))' \
        "results/$1.json" "$2") || found="no result"
    if [[ $found != "$3" ]]; then
        printf '%s%s is %s, not %s\n' "$1" "$2" "$found" "$3"
        cat ./*.log
        exit 1
    fi
}

# cli COMMAND TILL ARGUMENT...: what the program itself does on a till's line.
cli() {
    "$programs/kelvora-cli" "$1" --line "1=$(cat "$2.device")" "${@:3}"
}

mkdir setups
cli scan good -o setups/good.dat
sed 's/^Fiscal = YES/Fiscal = NO/' setups/good.dat >changed.dat
if cmp -s changed.dat setups/good.dat; then exit 1; fi
mv changed.dat setups/good.dat
for till in held same; do
    cli download "$till" --yes setups/good.dat >/dev/null
done
for till in held same other absent empty unlined; do
    cp setups/good.dat "setups/$till.dat"
done
cat >inventory.yml <<INVENTORY
tills:
  vars:
    ansible_connection: local
    ansible_python_interpreter: "{{ ansible_playbook_python }}"
    kelvora_action: download
    kelvora_command: [$programs/kelvora-cli]
    kelvora_tries: 2
    kelvora_pause: 0
  hosts:
    good: {kelvora_line: "1=$(cat good.device)"}
    held: {kelvora_line: "1=$(cat held.device)", kelvora_action: verify}
    same: {kelvora_line: "1=$(cat same.device)"}
    other: {kelvora_line: "1=$(cat other.device)"}
    absent: {kelvora_line: "1=$work/none"}
    unlined: {kelvora_line: "1=$work/none", kelvora_action: check}
    bare: {kelvora_setup: setups/none.dat}
    empty: {kelvora_command: [$work/none]}
INVENTORY

run dry --check --limit good -e kelvora_action=download
expect good '["result"]["outcome"]' different
grep -q 'good: exit code 1: The device does not hold' dry.log
echo '{"exit": 0}' >results/bare.json
run all
expect unlined '["exit"]' 0
expect bare '["exit"]' None
expect bare '["result"]' None
expect empty '["exit"]' None
grep -q 'bare: not tried: .*none.dat' all.log
grep -q 'empty: not tried: .*No such file' all.log
expect good '["result"]["device"]' new
expect other '["result"]["reason"]' refused
expect other '["tries"]' 1
expect absent '["exit"]' 3
expect absent '["tries"]' 2
grep -q 'other.*failed=1' all.log
expect held '["exit"]' 0
expect same '["result"]["device"]' same
cli verify good setups/good.dat >/dev/null
# Nothing is left on the tills' machines.
[[ -z $(find "$TMPDIR" -name till.dat) ]]
