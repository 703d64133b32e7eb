# complete.zsh MANUAL: for each line that it reads, what zsh offers where the line ends, one a line, and NUL. zsh
# completes only where somebody types, so the lines are typed into a second zsh on a pseudo-terminal, which writes down
# what it would offer.
zmodload zsh/zpty zsh/zselect
export FOUND=$(mktemp) MANUAL=$1

cat >$FOUND.setup <<'SETUP'
# A list longer than the screen would wait for an answer.
PROMPT= LISTMAX=1000
fpath=($MANUAL/zsh $fpath)
autoload -Uz compinit
compinit -u -d $HOME/.zcompdump
compadd() {
    # With one of these it only filters.
    if (( $argv[(I)-[OAD]*] )); then
        builtin compadd "$@"
        return
    fi
    local -a offered
    builtin compadd -O offered "$@"
    print -rl -- $offered >>$FOUND
    builtin compadd "$@"
}
write_end() { print END >>$FOUND }
look() { comppostfuncs=(write_end); zle list-choices }
zle -N look
bindkey "^T" look
bindkey "^U" kill-buffer
print "NOW" "READY"
SETUP

zpty shell zsh -f -i
zpty -w shell "source $FOUND.setup"
zpty -r -m shell shown '*NOW READY*'
while IFS= read -r line; do
    : >$FOUND
    zpty -w -n shell $'\x15'$line$'\x14'
    # The shell stops when nobody reads what it shows.
    for (( i = 0; i < 500; ++i )); do
        zpty -r -t shell shown
        [[ $(<$FOUND) == *END ]] && break
        zselect -t 1
    done
    print -rl -- ${(u)${(f)"$(<$FOUND)"}:#END}
    print -n '\0'
done
zpty -d shell
rm -f $FOUND $FOUND.setup
