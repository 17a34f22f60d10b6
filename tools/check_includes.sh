#!/bin/sh
# Fails when an include breaks the order of the house:
#   base       sees nothing but the standard library
#   host, platform   the boundaries: base
#   formula explorer navigation settings help   the core: base and boundaries, and each other
#   bindings/X base, boundaries and itself; never another binding, never the core
#   apps       everything; they wire
# and when the core includes anything but the standard library and itself.
# Usage: check_includes.sh SRC
set -u
src=${1:?usage: check_includes.sh SRC}
cd "$src" || exit 2
core='formula|explorer|navigation|settings|help'
bad=0
checked=0

for file in $(find . -name '*.h' -o -name '*.cpp' | sed 's|^\./||' | sort); do
    checked=$((checked + 1))
    room=${file%%/*}
    outside=''
    case $room in
        base) allowed='base' ;;
        host | platform) allowed='base|host|platform' ;;
        formula | explorer | navigation | settings | help) allowed="base|host|platform|$core" ;;
        bindings)
            binding=$(echo "$file" | cut -d/ -f1-2)
            allowed="base|host|platform|$binding"
            outside='any'
            ;;
        apps) allowed="base|host|platform|$core|bindings/[a-z0-9]+|apps"; outside='any' ;;
        *) echo "$file: stands in no room of the house" ; bad=1 ; continue ;;
    esac
    wrong=$(grep -nE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"' "$file" |
        grep -vE "\"($allowed)/[^\"]*\"")
    # Outside bindings and programs only the standard library comes in angle
    # brackets: its headers have neither a folder nor an ending.
    if [ -z "$outside" ]; then
        foreign=$(grep -nE '^[[:space:]]*#[[:space:]]*include[[:space:]]*<' "$file" |
            grep -vE '<[a-z_0-9]+>')
        wrong="$wrong$foreign"
    fi
    if [ -n "$wrong" ]; then
        echo "$wrong" | sed "s|^|$file: |"
        bad=1
    fi
done

[ "$checked" -gt 0 ] || { echo "no source files in $src"; exit 2; }
[ $bad -eq 0 ] && echo "$checked files keep to the order of the house"
exit $bad
