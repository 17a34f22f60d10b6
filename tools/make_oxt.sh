#!/bin/sh
# Makes the extension file of what was built in BUILD: BUILD/korvane.oxt, or another FILE.
# Usage: make_oxt.sh BUILD [FILE]
set -eu
build=$(cd "$1" && pwd)
file=$(realpath "${2:-$build/korvane.oxt}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work" --component extension --strip >/dev/null
cd "$work"
rm -f "$file"
cmake -E tar cf "$file" --format=zip -- *
echo "$file: $(stat -c %s "$file") bytes"
