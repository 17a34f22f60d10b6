#!/bin/bash
# Checks the files that a desktop reads, with the tools of those who say what they must look like.
# Usage: check_files.sh ROOT BUILD   (77: a tool is missing)
set -euo pipefail
root=$1
build=$2
for tool in desktop-file-validate appstreamcli man; do
    command -v "$tool" >/dev/null || { echo "$tool is not installed"; exit 77; }
done

desktop-file-validate "$root"/packaging/desktop/*.desktop
appstreamcli validate --no-net "$build"/packaging/*.metainfo.xml

warnings=$(MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$root/docs/korvane.1" 2>&1 >/dev/null)
[ -z "$warnings" ] || { echo "$warnings"; exit 1; }

bash -n "$root/tools/completions/korvane.bash"
# Whoever has these shells.
! command -v zsh >/dev/null || zsh -n "$root/tools/completions/_korvane"
! command -v fish >/dev/null || fish -n "$root/tools/completions/korvane.fish"

# Every file that the extension names is there, and every one that is there is named.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work" --component extension >/dev/null
cd "$work"
named=$(sed -n 's/.*manifest:full-path="\([^"]*\)".*/\1/p' META-INF/manifest.xml | sort)
[ "$named" = "$(find . -name '*.xcu' -o -name '*.components' | sed 's,^\./,,' | sort)" ] ||
    { echo "the manifest names: $named"; exit 1; }
for file in $(sed -n 's/.*\(uri\|xlink:href\)="\([^"]*\)".*/\2/p' korvane.components description.xml); do
    [ -f "$file" ] || { echo "the extension has no $file"; exit 1; }
done
[ -x korvane-view ] && [ -f manual/index.html ]
