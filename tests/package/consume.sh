#!/bin/sh
# consume.sh MODE BUILD SOURCE WORK CC GENERATOR [FLAGS]
#   installed     installs BUILD into a prefix under WORK, checks the tree
#                 (every public header, soname libvitrail.so.0, vitrail.pc),
#                 then builds the host with pkg-config and with
#                 find_package(vitrail) and runs both.
#   subdirectory  configures the host with SOURCE added by add_subdirectory
#                 and compiles the host's code only: it must see include/
#                 and nothing else of the library (no VITRAIL_BUILD, no
#                 source folder), and none of the library's extras.
# FLAGS (the sanitizer flags of a sanitized build) go to every compile and link.
set -eu
mode=$1 build=$2 src=$3 work=$4 cc=$5 gen=$6 flags=${7:-}
host=$(cd "$(dirname "$0")/host" && pwd)
fail() { echo "package.$mode: $*" >&2; exit 1; }
rm -rf "$work"
mkdir -p "$work"

# One C file including every header of the include folder $1.
headers() {
    for h in "$1"/vitrail/*.h; do echo "#include <vitrail/${h##*/}>"; done >"$work/headers.c"
}

case $mode in
installed)
    prefix=$work/prefix
    cmake --install "$build" --prefix "$prefix" >/dev/null
    [ "$(cd "$src/include/vitrail" && ls)" = "$(cd "$prefix/include/vitrail" && ls)" ] ||
        fail "installed headers differ from include/vitrail"
    lib=$(find "$prefix" -name 'libvitrail.so.0.*' -type f)
    objdump -p "$lib" | grep -q 'SONAME *libvitrail\.so\.0$' || fail "soname is not libvitrail.so.0"
    headers "$prefix/include"

    PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name vitrail.pc)")
    export PKG_CONFIG_PATH
    pkg-config --print-requires-private vitrail | grep -q '^freetype2' ||
        fail "vitrail.pc does not list freetype2 in Requires.private"
    # shellcheck disable=SC2046 # pkg-config's flags are words
    $cc $flags -std=c99 -Wall -Wextra -Wpedantic -Werror -o "$work/host_pc" "$host/host.c" \
        "$work/headers.c" $(pkg-config --cflags --libs vitrail) \
        -Wl,-rpath,"$(pkg-config --variable=libdir vitrail)"
    "$work/host_pc"

    cmake -S "$host" -B "$work/cmake" -G "$gen" -DCMAKE_C_COMPILER="$cc" \
        -DCMAKE_C_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$flags" \
        -DCMAKE_PREFIX_PATH="$prefix" -DHOST_HEADERS="$work/headers.c" >/dev/null
    cmake --build "$work/cmake"
    objdump -p "$work/cmake/host" | grep -q 'NEEDED *libvitrail\.so\.0$' ||
        fail "the host does not link libvitrail.so.0"
    "$work/cmake/host"
    ;;
subdirectory)
    headers "$src/include"
    cmake -S "$host" -B "$work/cmake" -G "$gen" -DCMAKE_C_COMPILER="$cc" \
        -DVITRAIL_SOURCE="$src" -DHOST_HEADERS="$work/headers.c" >/dev/null
    cmake --build "$work/cmake" --target host_objects
    ;;
*) fail "unknown mode" ;;
esac
