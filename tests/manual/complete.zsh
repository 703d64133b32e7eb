# complete.zsh MANUAL LINE: what zsh offers where the line ends, one a line. zsh completes only where somebody
# types, so the line is typed into a second zsh on a pseudo-terminal, which writes down what it would offer.
zmodload zsh/zpty
export FOUND=$(mktemp) MANUAL=$1

cat >$FOUND.setup <<'SETUP'
PROMPT=
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
print "NOW" "READY"
SETUP

zpty shell zsh -f -i
zpty -w shell "source $FOUND.setup"
zpty -r -m shell shown '*NOW READY*'
zpty -w -n shell $2$'\x14'
# The shell stops when nobody reads what it shows.
for (( i = 0; i < 100; ++i )); do
    zpty -r -t shell shown
    grep -qx END $FOUND && break
    sleep 0.05
done
zpty -d shell
grep -vx END $FOUND | sort -u
rm -f $FOUND $FOUND.setup
