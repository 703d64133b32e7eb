#!/bin/bash
# run.sh [CLONE [PATCH...]]: plants the faults beside it, or these, one by one in a clone of the last commit, and says
# whether the simulation finds each within 60 seconds, and after how many. A clone that is there is used again. It fails
# when a fault cannot be planted any more, or when fewer than nine in ten are found.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(git -C "$here" rev-parse --show-toplevel)
clone=${1:-$(mktemp -d)/clone}
[ $# -gt 0 ] && shift
[ $# -gt 0 ] || set -- "$here"/*.patch
seconds=60
build=$clone/build-faults
said=$build/said.txt

[ -d "$clone/.git" ] || git clone --quiet --shared "$root" "$clone"
git -C "$clone" fetch --quiet "$root" HEAD
git -C "$clone" checkout --quiet --force FETCH_HEAD
cmake -S "$clone" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE=-O1 \
  -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld -DKELVORA_FORMS=OFF -DKELVORA_PRECOMPILE=ON \
  > "$build.txt"

make() {
  cmake --build "$build" --target kelvora_simulation > "$build/built.txt" 2>&1 || { tail -n 20 "$build/built.txt"; return 1; }
}
play() {
  "$build/tests/kelvora_simulation" --seconds "$1" --first --jobs "$(nproc)" > "$said"
}

make
play 10 || { cat "$said"; echo "a rule breaks without any fault"; exit 1; }
missed=0
unplanted=0
for patch; do
  name=$(basename "$patch" .patch)
  if ! git -C "$clone" apply "$(realpath "$patch")" || ! make; then
    echo "$name: CANNOT BE PLANTED"
    unplanted=$((unplanted + 1))
  else
    began=$SECONDS
    if play "$seconds"; then
      echo "$name: NOT FOUND"
      missed=$((missed + 1))
    else
      echo "$name: after $((SECONDS - began)) s, $(grep -m 1 '^seed' "$said")"
    fi
  fi
  git -C "$clone" checkout --quiet -- src
done
echo "$(($# - missed - unplanted)) of $# found"
[ "$unplanted" -eq 0 ] && [ $((missed * 10)) -le $# ]
