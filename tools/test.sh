#!/bin/sh
# Installs what is missing, builds, and runs every test: first the normal
# build, then the same suite under AddressSanitizer and UndefinedBehaviorSanitizer.
set -eu
cd "$(dirname "$0")/.."
tools/bootstrap.sh
jobs=$(nproc)

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j "$jobs"
ctest --test-dir build --output-on-failure -j "$jobs"

cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVITRAIL_SANITIZE=ON \
    -DVITRAIL_BENCH=OFF
cmake --build build-asan -j "$jobs"
ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --test-dir build-asan --output-on-failure -j "$jobs"

# Every libFuzzer target briefly, from its seed corpus (tools/fuzz.sh runs them longer).
if ls fuzz/*.cpp >/dev/null 2>&1; then
    tools/fuzz.sh "${VITRAIL_FUZZ_SECONDS:-15}"
fi
