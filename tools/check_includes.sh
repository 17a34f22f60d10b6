#!/bin/sh
# Fails when an include breaks the order of the house:
#   base       sees nothing but the standard library
#   host, platform   the boundaries: base
#   formula explorer navigation settings help host/addin   the core: base and boundaries,
#              and each other; host/addin is no boundary though it lies beside one
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

# includes FILE MARK: the file's includes that begin with MARK, with line numbers.
includes() {
    grep -nE "^[[:space:]]*#[[:space:]]*include[[:space:]]*$2" "$1"
}

for file in $(find . -name '*.h' -o -name '*.cpp' | sed 's|^\./||' | sort); do
    checked=$((checked + 1))
    room=${file%%/*}
    outside=''
    addin=''
    case $file in
        host/addin/*) room=addin ;;
    esac
    case $room in
        base) allowed='base' ;;
        host | platform) allowed='base|host|platform' ;;
        formula | explorer | navigation | settings | help | addin)
            allowed="base|host|platform|$core"
            addin='any'
            ;;
        bindings)
            binding=$(echo "$file" | cut -d/ -f1-2)
            allowed="base|host|platform|$binding"
            outside='any'
            ;;
        apps)
            allowed="base|host|platform|$core|bindings/[a-z0-9_]+|apps"
            outside='any'
            addin='any'
            ;;
        *) echo "$file: stands in no room of the house" ; bad=1 ; continue ;;
    esac
    # Outside bindings and programs only the standard library comes in angle
    # brackets: its headers have neither a folder nor an ending.
    wrong=$(
        includes "$file" '"' | grep -vE "\"($allowed)/[^\"]*\""
        [ -n "$addin" ] || includes "$file" '"' | grep -E '"host/addin/'
        [ -n "$outside" ] || includes "$file" '<' | grep -vE '<[a-z_0-9]+>'
    )
    if [ -n "$wrong" ]; then
        echo "$wrong" | sort -u | sed "s|^|$file: |"
        bad=1
    fi
done

[ "$checked" -gt 0 ] || { echo "no source files in $src"; exit 2; }
[ $bad -eq 0 ] && echo "$checked files keep to the order of the house"
exit $bad
