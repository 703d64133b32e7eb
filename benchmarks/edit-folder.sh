#!/usr/bin/env bash
# How long does "kelvora-cli edit FOLDER --yes" take, compared with copying the folder?
#   benchmarks/edit-folder.sh [PROGRAM [FILES]]   the program (build/bin/kelvora-cli), the number of files (100000)
# Every file changes, is safe on the disk when the program ends, and its old content is kept beside it; a copy
# does none of that. Both begin with a disk that has nothing left to write. The middle of the ratios is to stay at
# 3 or below; a second edit, which also replaces the copies that are kept, is told beside it.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
program=$(readlink -f "${1:-$root/build/bin/kelvora-cli}")
files=${2:-100000}
per_folder=1000
pairs=3
most=3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

make_files() {
    local number examples folders=$(((files + per_folder - 1) / per_folder))
    mkdir -p "$work/examples" "$work/shop0"
    cp "$root"/examples/*.dat "$work/examples"
    "$program" edit "$work/examples" --set backlight=yes --yes >/dev/null 2>&1
    examples=("$work"/examples/*.dat)
    for ((number = 0; number < per_folder; ++number)); do
        cat "${examples[number % ${#examples[@]}]}" >"$work/shop0/till$number.dat"
    done
    for ((number = 0; number < folders; ++number)); do
        cp -r "$work/shop0" "$work/tills/shop$number"
    done
}

# edit VALUE: changes every file, and says so itself.
edit() { "$program" edit "$work/tills" --set "backlight=$1" --yes >/dev/null 2>"$work/told"; }

# milliseconds COMMAND...: how long the command takes on a disk that has nothing left to write.
milliseconds() {
    sync
    local start=${EPOCHREALTIME/[.,]/}
    "$@"
    echo $(((${EPOCHREALTIME/[.,]/} - start) / 1000))
}

# ratio A B
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f\n", a / b }'; }

ratios=()
for ((pair = 1; pair <= pairs; ++pair)); do
    rm -rf "$work/tills" "$work/copy"
    mkdir "$work/tills"
    make_files
    copied=$(milliseconds cp -r "$work/tills" "$work/copy")
    edited=$(milliseconds edit no)
    grep -qE "^kelvora-cli: ([0-9]+) files: \1 changed$" "$work/told"
    again=$(milliseconds edit yes)
    ratios+=("$(ratio "$edited" "$copied")")
    echo "edit $edited ms, cp -r $copied ms, ratio ${ratios[-1]}; edit again $again ms, $(ratio "$again" "$copied")"
done
middle=$(printf '%s\n' "${ratios[@]}" | sort -n | sed -n "$(((pairs + 1) / 2))p")
echo "middle ratio $middle (at most $most)"
awk -v value="$middle" -v limit="$most" 'BEGIN { exit !(value <= limit) }'
