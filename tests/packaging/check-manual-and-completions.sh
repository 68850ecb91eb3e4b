#!/usr/bin/env bash
# Compares the manual page and the completions with what the tool says about itself, sub-command by sub-command, and the
# manual's exit statuses with those that there are (Tool.h).
#
#   check-manual-and-completions.sh TOOL MANUAL.gz COMPLETIONS_DIR
set -euo pipefail
here=$(dirname "$0")
tool=$1
manual=$2
completions=$3
PATH=$(dirname "$tool"):$PATH
failures=0

fail() {
  echo "$1" >&2
  failures=$((failures + 1))
}

commands=$("$tool" --help | sed -n '/^Subcommands:/,$s/^  \([a-z][a-z-]*\) .*/\1/p')
options_of() { "$tool" $1 --help | grep -oE '^ +(-[a-zA-Z],)?--[a-z-]+' | tr -d ' ' | tr , '\n'; }

manual_section() { # of a sub-command; the general options without one
  gzip -dc "$manual" | sed 's/\\-/-/g' | sed -n "/^\.S[SH] ${1:-OPTIONS}/,/^\.S[SH] /p"
}

complete_in_bash() { # WORD...: what bash offers for the last word
  bash -c 'source /usr/share/bash-completion/bash_completion; source "$1/fontengine.bash"; shift
    COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMP_LINE="$*"; COMP_POINT=${#COMP_LINE}; COMP_TYPE=9
    _fontengine && printf "%s\n" "${COMPREPLY[@]}"' bash "$completions" "$@"
}

complete_in_fish() {
  HOME=/nonexistent fish --no-config -c 'source $argv[1]/fontengine.fish; complete -C "$argv[2]"' "$completions" "$*" |
    cut -f 1
}

complete_in_zsh() {
  "$here/complete-in-zsh.zsh" "$completions/fontengine.zsh" "$*"
}

check_prose() { # SUB-COMMAND: its line in the synopsis, and what its help says below the options
  local help usage section line
  help=$("$tool" "$1" --help)
  usage=$(sed -n "s/^Usage: fontengine $1 //p" <<<"$help")
  section=$(manual_section SYNOPSIS | sed -n "/^\.B fontengine $1\$/{n;p}")
  [ "$section" = "$usage" ] || fail "manual: the synopsis of '$1' lacks its arguments"
  section=$(manual_section "$1")
  while IFS= read -r line; do
    grep -qxF -- "$line" <<<"$section" || fail "manual: '$1' lacks \"$line\""
  done < <(sed '1,/^Options:/d' <<<"$help" | sed '1,/^$/d')
}

check_command() { # SUB-COMMAND or nothing
  local option section offered
  section=$(manual_section "$1")
  for option in $(options_of "$1"); do
    grep -qE -- "(^|[^a-z-])$option([^a-z-]|\$)" <<<"$section" || fail "manual: '$1' lacks $option"
  done
  for shell in bash fish zsh; do
    offered=$("complete_in_$shell" fontengine $1 --)
    for option in $(options_of "$1" | grep -- --); do
      grep -qx -- "$option" <<<"$offered" || fail "$shell: '$1' does not complete $option"
    done
  done
}

[ -n "$commands" ] || fail "the help names no sub-command"
check_command ""
statuses=$(manual_section "EXIT STATUS")
for status in 0 1 2 3; do
  grep -qx "\.B $status" <<<"$statuses" || fail "manual: exit status $status is not told"
done
for command in $commands; do
  [ -n "$(options_of "$command")" ] || fail "the help of '$command' names no option"
  check_command "$command"
  check_prose "$command"
done
for shell in bash fish zsh; do
  offered=$("complete_in_$shell" fontengine "")
  for command in $commands; do
    grep -qx -- "$command" <<<"$offered" || fail "$shell does not complete $command"
  done
done
[ $failures -eq 0 ] && echo "$(wc -w <<<"$commands") sub-commands are complete"
