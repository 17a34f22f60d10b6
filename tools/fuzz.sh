#!/bin/sh
# Runs every fuzzer for some seconds from the kept seeds.
# Usage: fuzz.sh BUILD SECONDS [NAME]
set -eu
build=${1:?usage: fuzz.sh BUILD SECONDS [NAME]}
seconds=${2:?usage: fuzz.sh BUILD SECONDS [NAME]}
here=$(cd "$(dirname "$0")/.." && pwd)
for name in ${3:-parse document windows}; do
    program=$build/bin/fuzz_$name
    if [ ! -x "$program" ]; then
        echo "$program is missing: 'make test' or 'make fuzz' builds it" >&2
        exit 1
    fi
    work=$(mktemp -d)
    status=0
    # Findings stay in the build folder, to be replayed.
    "$program" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=4096 -max_len=4096 \
        -dict="$here/fuzz/formula.dict" -artifact_prefix="$build/finding-$name-" \
        -print_final_stats=1 -verbosity=0 "$work" "$here/fuzz/seeds/$name" >"$work/log" 2>&1 || status=$?
    grep -E 'number_of_executed_units|ERROR|SUMMARY|finding' "$work/log" | sed "s/^/fuzz_$name: /"
    [ $status -eq 0 ] || { tail -n 40 "$work/log"; rm -rf "$work"; exit $status; }
    rm -rf "$work"
done
