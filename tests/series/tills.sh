#!/usr/bin/env bash
# tills.sh PROGRAMS: twelve tills over four lines through the real programs: one of other modules, one on a noisy
# line, one that is taken away in mid-write, and one that holds the setup already. Every verdict is true, every image
# is old or new, and the journal has them all.
set -euo pipefail
programs=$1

work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$work"' EXIT
export XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config LC_ALL=C.UTF-8
cd "$work"

# plug LINE NAME OPTION...: a till of that name hangs on the line from now on.
plug() {
    # What it said when it hung there before says nothing now.
    rm -f "$2.port"
    "$programs/kelvora-bench" --name "$2" --state "$2.state" "${@:3}" >"$2.port" &
    local looks=0
    until [[ -s $2.port ]] || ((++looks > 3000)); do sleep 0.02; done
    ln -sfn "$(cut -d ' ' -f 2 "$2.port")" "line$1"
}
# pull LINE: the till that hangs there is taken away, with its adapter.
pull() {
    rm "line$1"
    kill %%
    wait %% || true
}

# await EVENT [PATTERN]: the next event of that name which the line's series tells, and which is not like PATTERN.
await() {
    local said
    while IFS= read -r -t 60 said <&3; do
        # shellcheck disable=SC2053
        [[ $said != *"\"event\":\"$1\""* || $said == ${2:-} ]] || return 0
    done
    echo "never: $1" >&2
    return 1
}

# The setup that all get; the till that holds it already; and those whose image is to stay.
# shellcheck disable=SC2054
good=(--modules km096,km064)
plug 1 same --unpaced "${good[@]}"
"$programs/kelvora-cli" scan --line "1=$work/line1" -o till.dat
sed -e 's/^Fiscal = YES/Fiscal = NO/' -e '/^\[KM064\]/,$s/SSSSSSSS/========/' till.dat >changed.dat
if cmp -s changed.dat till.dat; then exit 1; fi
mv changed.dat till.dat
"$programs/kelvora-cli" download --yes --line "1=$work/line1" till.dat >/dev/null
pull 1
plug 1 pulled "${good[@]}"
pull 1
plug 1 wrong --modules km096
pull 1
for name in same pulled wrong; do
    cp "$name.state" "$name.before"
done
rm -r data

# drive LINE TILL...: one till after another, each until it has its verdict.
drive() {
    local line=$1 name self=$BASHPID
    shift
    trap 'kill $(jobs -p) 2>/dev/null || true' EXIT
    exec 3< <(exec tail -n +1 -f --pid="$self" "said.$line")
    for name; do
        case $name in
            wrong) plug "$line" wrong --unpaced --modules km096 ;;
            # No answer comes before its command can have left at the line's speed: that would be nobody's.
            noisy) plug "$line" noisy --unpaced "${good[@]}" --delay 25 --drop 0.001 --flip 0.001 ;;
            # The second block that is written keeps it busy until it is taken away.
            pulled) plug "$line" pulled --unpaced "${good[@]}" --late '0FB1#2=60000' ;;
            *) plug "$line" "$name" --unpaced "${good[@]}" ;;
        esac
        # It writes: reading is of 8192 bytes.
        [[ $name != pulled ]] || {
            await progress '*"total":8192*'
            pull "$line"
        }
        await result
        [[ $name == pulled ]] || pull "$line"
    done
}

for line in 1 2 3 4; do
    # It is there before anybody looks into it.
    : >"said.$line"
    "$programs/kelvora-cli" series --yes --json --count 3 --line "$line=$work/line$line" till.dat \
        >"said.$line" 2>"err.$line" &
    series[line]=$!
done
drive 1 one two wrong &
drivers+=($!)
drive 2 same three four &
drivers+=($!)
drive 3 noisy five six &
drivers+=($!)
drive 4 pulled seven eight &
drivers+=($!)
for driver in "${drivers[@]}"; do wait "$driver"; done
codes=()
for line in 1 2 3 4; do
    code=0
    wait "${series[line]}" || code=$?
    codes+=("$code")
done
[[ ${codes[*]} == '1 0 0 1' ]] || {
    echo "exit codes: ${codes[*]}"
    cat said.* err.*
    exit 1
}

cat >judge.py <<'JUDGE'
import binascii, json, re, sys

def crc(state):
    image = b""
    for line in open(state, encoding="latin-1"):
        row = re.match(r"([0-9A-F]{4}):([0-9A-F]{2}) ((?:[0-9A-F]{2} ){16})", line)
        if row and int(row[1] + row[2], 16) == len(image):
            image += bytes.fromhex(row[3])
    assert len(image) == 8192, (state, len(image))
    return "%08X" % binascii.crc32(image)

journal = [json.loads(line) for line in open(sys.argv[1])]
assert len(journal) == 12, len(journal)
tills = {1: ["one", "two", "wrong"], 2: ["same", "three", "four"],
         3: ["noisy", "five", "six"], 4: ["pulled", "seven", "eight"]}
expected = {"wrong": "failed", "same": "same", "pulled": "failed"}
for line, names in tills.items():
    events = [json.loads(text) for text in open("said.%d" % line)]
    results = [event for event in events if event["event"] == "result"]
    entries = [entry for entry in journal if entry["line"] == line]
    told = [{name: event[name] for name in entry} for entry, event in zip(entries, results)]
    assert entries == told, (entries, told)
    assert events[-1]["event"] == "end"
    for name, entry in zip(names, entries):
        assert entry["result"] == expected.get(name, "done"), (name, entry)
        state = crc(name + ".state")
        if name in expected:
            assert state == crc(name + ".before"), name
        if entry["result"] == "done":
            assert state == entry["crcAfter"] != entry["crcBefore"], (name, entry)
            assert crc(entry["backup"]) == entry["crcBefore"], name
        if name == "pulled":
            assert entry["backup"] and entry["crcBefore"] == state, entry
        if name == "wrong":
            assert not entry["backup"] and entry["modules"] == "KM096", entry
        assert entry["terminal"] == name and entry["sha256"] == sys.argv[2], entry
JUDGE
python3 judge.py data/Kelvora/journal.jsonl "$(sha256sum till.dat | cut -d ' ' -f 1)"
[[ $("$programs/kelvora-cli" journal --failed | wc -l) -eq 2 ]]
