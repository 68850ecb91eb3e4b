#!/usr/bin/env bash
# Takes an option out of the manual page and out of the completions, and out of the manual page an exit status, the
# arguments of a sub-command and what its help says below the options: the check must name each.
#
#   check-gaps-are-found.sh TOOL MANUAL.gz COMPLETIONS_DIR
set -euo pipefail
here=$(dirname "$0")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

gzip -dc "$2" | sed '/rotate/d; /^\.B 3$/d; s/ FIRST SECOND$//; /^The exit status is/d' | gzip >"$scratch/manual.gz"
for shell in bash fish zsh; do
  sed "s#sed -n#sed /rotate/d | sed -n#" "$3/fontengine.$shell" >"$scratch/fontengine.$shell"
done

if "$here/check-manual-and-completions.sh" "$1" "$scratch/manual.gz" "$scratch" 2>"$scratch/errors"; then
  echo "the gaps were not found" >&2
  exit 1
fi
diff "$scratch/errors" - <<'EOF'
manual: exit status 3 is not told
manual: 'render' lacks --rotate
bash: 'render' does not complete --rotate
fish: 'render' does not complete --rotate
zsh: 'render' does not complete --rotate
manual: the synopsis of 'compare' lacks its arguments
manual: 'compare' lacks "The exit status is 0 if the pictures are equal, 3 if they differ, and 1 or 2 if they"
EOF
