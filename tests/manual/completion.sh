#!/usr/bin/env bash
# A shell offers all commands and options that a program has, and no others, and of values what fits.
#   completion.sh SHELL PROGRAMS MANUAL   exits with 77 where the shell is not installed
set -euo pipefail
shell=$1 bin=$2 manual=$3
tests=$(readlink -f "$(dirname "${BASH_SOURCE[0]}")")
# shellcheck source=tests/manual/help.sh
. "$tests/help.sh"
export ASAN_OPTIONS=detect_leaks=0
library=/usr/share/bash-completion/bash_completion
command -v "$shell" >/dev/null || exit 77
[[ $shell != bash || -f $library ]] || exit 77

place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
export HOME=$place XDG_CONFIG_HOME=$place XDG_DATA_HOME=$place
mkdir -p "$place/files/folder"
cd "$place/files"
touch till.dat old.TXT till.mem picture.svg

# offered LINE: what the shell offers where the line ends, one a line.
offered() {
    case $shell in
        # Within a test there is no command line whose words an option of compopt could change.
        bash)
            bash -c '
                . "$1"
                . "$2/bash/${3%% *}"
                compopt() { :; }
                read -ra COMP_WORDS <<<"${3//=/ = }"
                [[ $3 != *" " ]] || COMP_WORDS+=("")
                COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) COMP_LINE=$3 COMP_POINT=${#3}
                function=$(complete -p "${3%% *}" | sed -E "s/.*-F ([^ ]*) .*/\1/")
                "$function"
                printf "%s\n" "${COMPREPLY[@]}"' offered "$library" "$manual" "$1"
            ;;
        zsh) zsh -f "$tests/complete.zsh" "$manual" "$1" ;;
        fish)
            # shellcheck disable=SC2016
            fish --no-config -c 'for file in $argv[1]/fish/*; source $file; end; complete -C $argv[2]' \
                "$manual" "$1" | cut -f1
            ;;
    esac
}

# offers LINE WORD...: the words and no others; a folder's "/" does not count.
offers() {
    same "$shell: $1" "${*:2}" "$(offered "$1" | sed 's,/$,,')"
}

for program in $(built_programs); do
    while read -ra command; do
        offers "${command[*]} -" "$(help_options "${command[@]}")"
        commands=$(help_commands "${command[@]}")
        [[ -z $commands ]] || offers "${command[*]} " "$commands"
    done < <(all_commands "$program")
done

offers 'kelvora-cli ch' check
offers 'kelvora-cli check --nu' --null
offers 'kelvora-cli scan --port ' 1 2 3 4
offers 'kelvora-cli scan --timeout '
offers 'kelvora-bench --speed 1' 1200
offers 'kelvora-cli check ' till.dat old.TXT folder
offers 'kelvora-cli check --json -v ' till.dat old.TXT folder
offers 'kelvora-cli identity restore --bench ' till.dat old.TXT till.mem picture.svg folder
offers 'kelvora-cli restore --port 2 ' till.mem folder
offers 'kelvora-cli scan -o ' till.dat old.TXT folder
offers 'kelvora-cli render --output-folder ' folder
offers 'kelvora-cli render -o ' picture.svg folder
offers 'kelvora-cli diff ' till.dat old.TXT folder
offers 'kelvora ' till.dat old.TXT folder
if [[ $shell != fish ]]; then
    offers 'kelvora-cli scan --line ' 1= 2= 3= 4=
else
    mkdir "$place/files of a till"
    touch "$place/files of a till/till.dat" "$place/files of a till/till.mem"
    # shellcheck disable=SC2088
    offers 'kelvora-cli check ~/files\ of\ a\ till/' '~/files of a till/till.dat'
    offers 'kelvora-cli scan --output=o' --output=old.TXT
    offers 'kelvora-cli scan -oti' -otill.dat
fi
exit "$failures"
