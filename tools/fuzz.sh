#!/bin/sh
# Builds the libFuzzer targets (clang, ASan+UBSan) and runs each one for
# SECONDS seconds (default 300) from its seed corpus. New inputs go to
# build-fuzz/corpus/<name>; a crash leaves its input in build-fuzz/.
# Usage: tools/fuzz.sh [SECONDS] [TARGET...]
set -eu
cd "$(dirname "$0")/.."
seconds=${1:-300}
[ $# -gt 0 ] && shift
tools/bootstrap.sh
cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DVITRAIL_FUZZ=ON -DVITRAIL_TESTS=OFF -DVITRAIL_BENCH=OFF -DVITRAIL_DEMO=OFF \
    -DVITRAIL_EXAMPLES=OFF -DVITRAIL_INSTALL=OFF >/dev/null
cmake --build build-fuzz -j "$(nproc)"
targets=$*
[ -n "$targets" ] || targets=$(cd fuzz && ls *.cpp 2>/dev/null | sed 's/\.cpp$//')
status=0
for t in $targets; do
    mkdir -p "build-fuzz/corpus/$t" "fuzz/corpus/$t"
    log="build-fuzz/$t.log"
    if (cd build-fuzz && ASAN_OPTIONS=detect_leaks=0 "./fuzz/fuzz_$t" -max_total_time="$seconds" \
            -print_final_stats=1 "corpus/$t" "../fuzz/corpus/$t" >"$t.log" 2>&1); then
        echo "fuzz: $t: $(grep -o 'number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$') runs, no finding"
    else
        echo "fuzz: $t: FINDING (see $log)"; tail -40 "$log"; status=1
    fi
done
exit $status
