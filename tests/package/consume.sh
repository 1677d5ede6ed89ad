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
#   guide         installs BUILD, extracts the program of docs/host-guide.md
#                 (its C blocks that start with "/* ordo.c"), builds it with
#                 pkg-config and runs it headless: it checks its own results.
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

# Installs BUILD into $prefix and points pkg-config at it.
install() {
    prefix=$work/prefix
    cmake --install "$build" --prefix "$prefix" >/dev/null
    PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name vitrail.pc)")
    export PKG_CONFIG_PATH
}

# Compiles C files $2... into $1 against the installed library.
build_pc() {
    out=$1
    shift
    # shellcheck disable=SC2046,SC2086 # the flags are words
    $cc $flags -std=c99 -Wall -Wextra -Wpedantic -Werror -o "$out" "$@" \
        $(pkg-config --cflags --libs vitrail) -Wl,-rpath,"$(pkg-config --variable=libdir vitrail)"
}

case $mode in
installed)
    install
    [ "$(cd "$src/include/vitrail" && ls)" = "$(cd "$prefix/include/vitrail" && ls)" ] ||
        fail "installed headers differ from include/vitrail"
    lib=$(find "$prefix" -name 'libvitrail.so.0.*' -type f)
    objdump -p "$lib" | grep -q 'SONAME *libvitrail\.so\.0$' || fail "soname is not libvitrail.so.0"
    headers "$prefix/include"
    pkg-config --print-requires-private vitrail | grep -q '^freetype2' ||
        fail "vitrail.pc does not list freetype2 in Requires.private"
    build_pc "$work/host_pc" "$host/host.c" "$work/headers.c"
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
guide)
    install
    awk '/^```c$/ { getline; keep = /^\/\* ordo\.c/ } /^```$/ { keep = 0 } keep' \
        "$src/docs/host-guide.md" >"$work/ordo.c"
    build_pc "$work/ordo" "$work/ordo.c"
    VITRAIL_BACKEND=headless "$work/ordo" "$work/ordonnance.png"
    ;;
*) fail "unknown mode" ;;
esac
