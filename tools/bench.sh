#!/bin/sh
# Runs the benchmarks of a build folder and sums up what they are for (processor
# time, which other work on the machine does not disturb).
# Usage: bench.sh BUILD
set -eu
build=${1:?usage: bench.sh BUILD}
out=$(mktemp)
trap 'rm -f "$out"' EXIT
"$build/bin/parse_bench" --benchmark_counters_tabular=true >"$out" 2>&1 || { cat "$out"; exit 1; }
cat "$out"
awk '/^NaiveScan/ { naive = $4 }
     /^Parse\/every_function:0/ { plain = $4 }
     /^Parse\/every_function:1/ { every = $4 }
     END { if (naive > 0) printf "\nParsing takes %.1f times a naive one-pass scan of the same text (%.1f with every function shown).\n", plain / naive, every / naive }' "$out"
