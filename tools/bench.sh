#!/bin/sh
# Builds Release and runs every benchmark of bench/, then prints one table of
# the ratios they report (vitrail's time over its peer's or floor's, measured
# side by side in the same run).
set -eu
cd "$(dirname "$0")/.."
tools/bootstrap.sh
cmake -S . -B build-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DVITRAIL_TESTS=OFF >/dev/null
cmake --build build-release -j "$(nproc)"
ratios=$(mktemp)
trap 'rm -f "$ratios"' EXIT
for b in build-release/bench/*_bench; do
    [ -x "$b" ] || continue
    echo "== $(basename "$b")"
    # Colours (some reporters print them whatever the flags say) are taken out.
    VITRAIL_BACKEND=headless "$b" --benchmark_color=false | sed 's/\x1b\[[0-9;]*m//g' |
        tee -a "$ratios" | grep -v '^ratio	'
done
echo
printf '%-58s %10s %10s\n' "job" "ratio" "target"
grep '^ratio	' "$ratios" | awk -F'\t' '{ printf "%-58s %10s %10s\n", $2, $3, $4 }'
