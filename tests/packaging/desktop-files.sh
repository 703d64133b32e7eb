#!/usr/bin/env bash
# What a desktop reads of the program is well formed.
#   desktop-files.sh DESKTOP BUILT   exits with 77 where no tool that tells is installed
set -euo pipefail
tried=77

# judge TOOL ARGUMENT...
judge() {
    command -v "$1" >/dev/null || return 0
    "$@"
    tried=0
}

judge desktop-file-validate "$1/kelvora.desktop"
judge appstreamcli validate --no-net --pedantic "$2/invalid.example.kelvora.metainfo.xml"
exit "$tried"
