# shellcheck shell=bash
# complete.bash MANUAL LIBRARY: for each line that it reads, what bash offers where the line ends, one a line, and NUL.
# shellcheck source=/dev/null
. "$2"
for file in "$1"/bash/*; do
    # shellcheck source=/dev/null
    . "$file"
done
# Here is no command line whose words an option of compopt could change.
compopt() { :; }
while IFS= read -r COMP_LINE; do
    read -ra COMP_WORDS <<<"${COMP_LINE//=/ = }"
    [[ $COMP_LINE != *" " ]] || COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) COMP_POINT=${#COMP_LINE} COMPREPLY=()
    function=$(complete -p "${COMP_WORDS[0]}" | sed -E 's/.*-F ([^ ]*) .*/\1/')
    "$function" </dev/null
    printf '%s\n' "${COMPREPLY[@]}"
    printf '\0'
done
