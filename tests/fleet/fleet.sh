#!/usr/bin/env bash
# fleet.sh PROGRAMS COLLECTION: tills on this machine, in batches: some in order, others with every kind of trouble.
# The first run is killed, the second takes it up and ends at a batch with too many failures.
set -euo pipefail
programs=$1
collection=$2
command -v ansible-playbook >/dev/null || exit 77

work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$work"' EXIT
export ANSIBLE_LOCALHOST_WARNING=False ANSIBLE_NOCOWS=1 ANSIBLE_HOME=$work/ansible
# Fewer looks at those that work.
export ANSIBLE_INTERNAL_POLL_INTERVAL=0.01
export XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config LC_ALL=C.UTF-8
export TMPDIR=$work/tmp
export ANSIBLE_COLLECTIONS_PATH=$work/collections
# The page is made here, by the program that is found.
export PATH=$programs:$PATH
cd "$work"
mkdir -p tmp collections/ansible_collections/kelvora setups
ln -s "$collection" collections/ansible_collections/kelvora/fleet

"$programs/kelvora-bench" --unpaced --modules km096,km064 --modules km096 --lines 5 >lines 2>bench.err &
for _ in {1..200}; do
    [[ $(wc -l <lines) -lt 5 ]] || break
    sleep 0.1
done
mapfile -t devices < <(cut -d ' ' -f 2 lines)
((${#devices[@]} == 5)) || { cat bench.err; exit 1; }

# run LOG ARGUMENT...: also where tills fail, and where the run is killed. Most of its time is Ansible's own, for each task
# of each till: a run has the tills that show something in it, and what they are told is judged in the first.
run() {
    ansible-playbook -i inventory.yml kelvora.fleet.setups "${@:2}" >"$1.log" 2>&1 &
    echo $! >playbook.pid
    wait $! 2>wait.err || true
}

# expect TILL QUERY VALUE: of the till's result.
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

"$programs/kelvora-cli" scan --line "1=${devices[0]}" -o scanned
sed 's/^Fiscal = YES/Fiscal = NO/' scanned >setups/good.dat
if cmp -s scanned setups/good.dat; then exit 1; fi
"$programs/kelvora-cli" download --yes --line "1=${devices[4]}" setups/good.dat >downloaded
for till in other empty killer absent late; do cp setups/good.dat "setups/$till.dat"; done
printf '[KM096]\r\nX = \xe9\r\n' >setups/wrong.dat
# The first run ends here, as by a power cut, and the till's work with it.
cat >once <<ONCE
if [[ ! -e $work/killed ]]; then
    touch $work/killed
    kill -KILL "\$(cat $work/playbook.pid)"
    exit 1
fi
exec "\$@"
ONCE
cat >keep <<KEEP
cp "\${*: -1}" $work/brought
exec "\$@"
KEEP
cat >inventory.yml <<INVENTORY
tills:
  vars:
    ansible_connection: local
    kelvora_command: [$programs/kelvora-cli]
    kelvora_action: download
    kelvora_tries: 2
    kelvora_pause: 0
    # Names no setup, which is seen when the page is made.
    kelvora_standard: setups/wrong.dat
  hosts:
    good: {kelvora_line: "1=${devices[0]}", kelvora_report: page.html}
    other: {kelvora_line: "1=${devices[1]}"}
    empty: {kelvora_command: [$work/none]}
    again: {kelvora_line: "1=${devices[4]}", kelvora_setup: setups/good.dat, kelvora_done_hours: 0}

    killer: {kelvora_line: "1=${devices[2]}", kelvora_command: [bash, $work/once, $programs/kelvora-cli]}
    far: {ansible_connection: ssh, ansible_host: 127.0.0.1, ansible_port: 1, kelvora_setup: setups/good.dat}

    fine: {kelvora_setup: setups/good.dat, kelvora_action: check}
    bare: {kelvora_setup: setups/none.dat}
    absent: {kelvora_line: "1=$work/none"}
    wrong: {kelvora_command: [bash, $work/keep, $programs/kelvora-cli], kelvora_action: check}
    torn: {kelvora_command: [echo, "{"], kelvora_setup: setups/good.dat, kelvora_action: check}

    late: {kelvora_line: "1=${devices[2]}", kelvora_report: tills.txt}
INVENTORY

# A page that is not made fails no till; one that can never be made ends a batch before anything is done.
run checked --check --limit good,fine,late -e '{"kelvora_batch": [2, 1]}'
grep -q '"outcome": "different"' results.dry/good.json
grep -q '^good .* changed=1 .* failed=0 ' checked.log
grep -q '"stderr": "[^"]*wrong.dat' checked.log
grep -q '^fine .* failed=0 ' checked.log
expect fine '["exit"]' 0
grep -q 'tills.txt cannot be made' checked.log
[[ ! -e results/good.json && ! -e results.dry/late.json ]]

echo '{"exit": 0,}' >results/other.json
run killed --skip-tags always,report --limit good,other,empty,again,killer -e '{"kelvora_batch": [4, 1]}'
expect good '["result"]["device"]' new
expect other '["result"]["reason"]' refused
expect other '["tries"]' 1
grep -q 'empty: not tried: .*not found' killed.log
[[ -e killed && ! -e results/killer.json ]]
mkdir kept
cp results/{good,again}.json kept

run taken-up --skip-tags always --limit 'tills:!other:!empty:!fine' -e '{"kelvora_batch": [2, 2, 4]}' \
    -e kelvora_most_failures=50 -e kelvora_report=tills.html -e kelvora_standard=
cmp results/good.json kept/good.json
if cmp -s results/again.json kept/again.json; then exit 1; fi
expect again '["result"]["device"]' same
expect killer '["result"]["device"]' new
expect far '["exit"]' None
expect far '["tries"]' None
grep -q 'far: not known: not reached, or the connection was lost: .*ssh' taken-up.log
expect bare '["result"]' None
grep -q 'bare: not tried: .*none.dat is not a file' taken-up.log
expect absent '["exit"]' 3
expect absent '["tries"]' 2
expect wrong '["exit"]' 1
cmp brought setups/wrong.dat
expect torn '["result"]' None
expect torn '["diagnostics"][0][:7]' '{ check'
[[ ! -e results/late.json ]]
# Of the last batch too, which ended the run.
grep -q 'absent.*There is no such device' tills.html

# Nothing is left on the tills' machines.
[[ -z $(find "$TMPDIR" -name '*.dat') ]]
