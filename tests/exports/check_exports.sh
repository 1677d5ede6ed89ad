#!/bin/sh
# check_exports.sh LIBRARY NAMES_DIR
# The shared object must export every name listed in NAMES_DIR/*.txt (one
# name a line, '#' comments) and nothing else: no C++-mangled name, no
# platform name, no stray helper.
set -eu
lib=$1
dir=$2
expected=$(mktemp)
actual=$(mktemp)
trap 'rm -f "$expected" "$actual"' EXIT
cat "$dir"/*.txt | sed -e 's/#.*//' -e 's/[[:space:]]//g' | grep -v '^$' | sort -u >"$expected"
nm -D --defined-only "$lib" | awk '{print $NF}' |
    grep -v -x -E '_init|_fini|__bss_start|_edata|_end|__odr_asan[.].*' | sort -u >"$actual"
status=0
missing=$(comm -23 "$expected" "$actual")
extra=$(comm -13 "$expected" "$actual")
if [ -n "$missing" ]; then
    echo "not exported:"; echo "$missing" | sed 's/^/  /'; status=1
fi
if [ -n "$extra" ]; then
    echo "exported but not part of the interface:"; echo "$extra" | sed 's/^/  /'; status=1
fi
[ $status -eq 0 ] && echo "exports: $(wc -l <"$actual") names, all documented"
exit $status
