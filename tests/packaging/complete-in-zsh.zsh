#!/usr/bin/env zsh
# Prints what zsh offers when TAB is pressed at the end of a command line, one word a line.
#
#   complete-in-zsh.zsh COMPLETION_FILE LINE
#
# Completion functions run only in an interactive shell: here in one behind a terminal of its own.
set -e
zmodload zsh/zpty
scratch=$(mktemp -d)
trap 'rm -rf $scratch' EXIT
cp $1 $scratch/_fontengine

cat >$scratch/setup <<'SETUP'
PROMPT=
fpath=($scratch $fpath)
autoload -Uz compinit
compinit -D -u
bindkey '^I' complete-word
comppostfuncs=(exit)
compadd() { # writes down what matches, except where the completion system asks for its own use
  local -a matches
  if (( ! $@[(I)-[OAD]] )); then
    builtin compadd -A matches "$@"
    (( ! $#matches )) || print -l -- $matches >>$scratch/offered
  fi
  builtin compadd "$@"
}
SETUP

export scratch
zpty shell exec zsh -f -i
zpty -w shell "source $scratch/setup"
zpty -w -n shell "$2"$'\t'
while zpty -r shell >/dev/null 2>&1; do :; done
[[ ! -e $scratch/offered ]] || sort -u $scratch/offered
