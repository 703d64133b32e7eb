#!/usr/bin/env bash
# Builds the fuzz targets and runs each of them in turn; fails when one of them finds something.
#   fuzz/run.sh [SECONDS]   how long each runs; 600 unless told
# What they learn and what they find stays under build-dev/fuzz/, in corpus/ and findings/.
set -euo pipefail
# shellcheck source=packaging/prepare.sh
. "$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")/packaging/prepare.sh"

seconds=${1:-600}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || { say "usage: fuzz/run.sh [SECONDS]"; exit 2; }

install_packages core forms tests
configure dev
build dev kelvora_fuzz
folder=$(build_folder dev)/fuzz

# seeds TARGET: the files that its inputs are grown from, one a line; some start from their dictionary alone.
seeds() {
    case $1 in
        SetupReaderFuzz) find "$root/examples" -name '*.dat' ;;
        TextConfigurationFuzz) find "$root/data" -name '*.ini' ;;
        MessageCatalogueFuzz) find "$root/data" -name '*.mes' ;;
    esac
}

failed=()
for target in SetupReaderFuzz TextConfigurationFuzz MessageCatalogueFuzz DumpReaderFuzz FlashImageFuzz \
    ModuleReplyFuzz LinkReceiverFuzz ReplyFuzz PortsFileFuzz NetworkFuzz; do
    corpus=$folder/corpus/$target findings=$folder/findings/$target
    mkdir -p "$corpus" "$findings"
    seeds "$target" | xargs -r -d '\n' cp -t "$corpus" --
    say "== $target"
    # Inputs that were found before come first: they stay red until they are mended.
    find "$findings" -type f -print0 | xargs -r -0 "$folder/$target" || { failed+=("$target"); continue; }
    "$folder/$target" -dict="$root/fuzz/$target.dict" -artifact_prefix="$findings/" \
        -max_total_time="$seconds" -max_len=8192 -timeout=10 -print_final_stats=1 "$corpus" || failed+=("$target")
done

if ((${#failed[@]})); then
    say "" "Findings: ${failed[*]}"
    exit 1
fi
