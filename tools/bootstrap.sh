#!/bin/sh
# Installs the Debian packages vitrail needs to build, test and run.
# Idempotent: installs only what is missing, updating the package lists once.
set -eu
packages="g++ cmake ninja-build pkg-config binutils
libgtest-dev libgmock-dev libbenchmark-dev
libfreetype-dev libfontconfig-dev libpng-dev libsdl2-dev
fonts-dejavu-core fonts-liberation2 xvfb xauth xdotool procps
libx11-dev libxcomposite-dev
clang libclang-rt-14-dev libinih-dev"

missing=""
for p in $packages; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'ok installed'; then
        missing="$missing $p"
    fi
done
[ -z "$missing" ] && exit 0

echo "bootstrap: installing$missing"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo=sudo
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends $missing
