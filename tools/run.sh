#!/bin/sh
# The main job: installs what is missing, builds, and runs the demo host
# (headless unless VITRAIL_BACKEND says otherwise).
set -eu
cd "$(dirname "$0")/.."
tools/bootstrap.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$(nproc)" --target vitrail_demo
exec build/demo/vitrail_demo "$@"
