#!/usr/bin/env bash
# Every command has a manual page, with all that its help tells and no more, and something written by hand.
#   pages.sh PROGRAMS MANUAL TEXTS
set -euo pipefail
bin=$1 manual=$2 texts=$3
# shellcheck source=tests/manual/help.sh
. "$(dirname "${BASH_SOURCE[0]}")/help.sh"
export ASAN_OPTIONS=detect_leaks=0

# page_list PAGE SECTION: the bold names in the heads of a section's items.
page_list() {
    sed -n "/^\\.SH $2\$/,/^\\.SH/p" "$1" | sed -n '/^\.TP/{n;s/\\-/-/g;p}' | { grep -oE '\\fB[^\]*\\fP' || true; } |
        sed 's/\\f[BP]//g'
}

pages=
mapfile -t programs < <(built_programs)
for program in "${programs[@]}"; do
    while read -ra command; do
        name=$(IFS=-; echo "${command[*]}")
        pages+=" $name"
        page=$manual/man/$name.1
        same "options in $name.1" "$(help_options "${command[@]}")" "$(page_list "$page" OPTIONS)"
        same "commands in $name.1" "$(help_commands "${command[@]}")" "$(page_list "$page" COMMANDS)"
        ! command -v mandoc >/dev/null || mandoc -T lint -W warning "$page" || failures=1
    done < <(all_commands "$program")
done
# Without the windows there is no program whose help tells of them.
if [[ ${programs[0]} == kelvora ]]; then
    same "pages" "$pages" "$(cd "$manual/man" && basename -s .1 -- *)"
    same "hand-written texts" "$pages" "$(cd "$texts" && basename -s .roff -- *.roff)"
fi
exit "$failures"
