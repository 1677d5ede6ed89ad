#!/bin/sh
# The main job: installs what is missing, builds, and runs the demo host.
# With a display (DISPLAY set and reachable) its dialogs open in real
# windows for you to work; without one, a scripted session plays them and
# writes a PNG of every step. Either way it prints what happens, step by
# step, and writes into the folder given as argument (default demo-output/).
# VITRAIL_BACKEND=headless or sdl forces the choice.
set -eu
cd "$(dirname "$0")/.."
tools/bootstrap.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$(nproc)" --target vitrail_demo
exec build/demo/vitrail_demo "${1:-demo-output}"
