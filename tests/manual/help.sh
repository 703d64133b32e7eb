# shellcheck shell=bash disable=SC2154,SC2034
# What the programs' own help says. To be sourced; `bin` is where they are built.

# help COMMAND...: what it says of itself, asked once for as long as the program is the same.
help() {
    local told asked
    told=$bin/../help/$(IFS=-; echo "$*")
    if [[ ! $told -nt $bin/$1 ]]; then
        mkdir -p "${told%/*}"
        # Several ask at the same time.
        asked=$(mktemp "$told.XXXXXX")
        "$bin/$1" "${@:2}" --help >"$asked"
        mv "$asked" "$told"
    fi
    cat "$told"
}

# help_options COMMAND...: the names of all its options, one a line, sorted.
help_options() {
    help "$@" | sed -nE 's/^  (-[^ ].*)/\1/p' | sed 's/   *.*//' | tr -s ', ' '\n' |
        grep -E '^--?[a-z0-9]' | sort
}

# help_commands COMMAND...: the commands below it.
help_commands() {
    help "$@" | sed -n '/^Subcommands:/,/^$/s/^  \([a-z0-9-]*\) .*/\1/p'
}

# built_programs
built_programs() {
    local program
    for program in kelvora kelvora-cli kelvora-bench; do
        [[ ! -x $bin/$program ]] || echo "$program"
    done
}

# all_commands COMMAND...: it and all below it, one a line.
all_commands() {
    local below
    echo "$*"
    for below in $(help_commands "$@"); do
        all_commands "$@" "$below"
    done
}

failures=0

# words TEXT: one a line, sorted.
words() {
    tr -s '[:space:]' '\n' <<<"$1" | sed '/^$/d' | sort
}

# same WHAT EXPECTED FOUND: both are lists of words; their order does not count.
same() {
    local difference
    difference=$(diff <(words "$2") <(words "$3")) && return
    printf '%s (< expected, > found):\n%s\n' "$1" "$difference"
    failures=1
}
