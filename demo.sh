#!/usr/bin/env bash
# Draws a page of examples of what the library can do: build/demo/demo.png, demo.svg and demo.pdf.
#
#   ./demo.sh [TEXT]
set -euo pipefail
cd "$(dirname "$0")"

[ $# -le 1 ] || { echo "usage: ./demo.sh [TEXT]" >&2; exit 2; }

scripts/install-packages
cmake --preset release
cmake --build --preset release --target fontengine
build/release/apps/fontengine/fontengine demo -o build/demo -- "$@"

echo "The page is here:"
printf '  %s\n' "$PWD"/build/demo/demo.{png,svg,pdf}
