#!/usr/bin/env bash
# Makes the pictures of the documentation from a real run, on an X server of its own.
#   docs/make-pictures.sh [PROGRAM]   the program (build/bin/kelvora)
# Needs the packages xvfb, xauth, openbox, xdotool and imagemagick.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
program=$(readlink -f "${1:-$root/build/bin/kelvora}")
if [[ -z ${KELVORA_PICTURES:-} ]]; then
    KELVORA_PICTURES=1 exec xvfb-run -a -s '-screen 0 1280x800x24' "${BASH_SOURCE[0]}" "$program"
fi

work=$(mktemp -d)
# The path is in the picture: the same one each time, and nobody's own.
shop=/tmp/shop
mkdir "$shop"
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$work" "$shop"' EXIT
mkdir -m 700 "$work/runtime"
cp "$root/examples/all-four.dat" "$shop/till.dat"

openbox --sm-disable --config-file "$root/packaging/openbox.xml" --startup "touch '$work/managed'" 2>/dev/null &
while [[ ! -e $work/managed ]]; do
    sleep 0.1
done
XDG_RUNTIME_DIR=$work/runtime XDG_CONFIG_HOME=$work LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb "$program" "$shop/till.dat" &
window=$(xdotool search --sync --onlyvisible --name '^Kelvora|Kelvora$' | head -n 1)
# The keyboards are drawn after the window comes; the pointer away from all that would light up.
xdotool mousemove 0 0
sleep 2
import -frame -window "$window" "$work/window.png"
convert "$work/window.png" -strip +dither -colors 200 "png8:$root/docs/window.png"
