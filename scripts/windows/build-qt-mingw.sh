#!/usr/bin/env bash
# Builds Qt 6 (qtbase) for 64-bit Windows from Debian's own qt6-base source
# package with the MinGW-w64 cross compiler, using the host's Qt as host tools,
# and installs it into PREFIX. About 40 minutes on two cores; build.sh uses a
# packed copy of the result instead when one is at hand.
#
#   build-qt-mingw.sh PREFIX [WORKDIR]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
prefix=$1
work=${2:-/tmp/qt6-mingw-work}

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
# Debian's source packages are needed; enable them next to the binary ones.
if ! grep -rqs '^Types:.*deb-src' /etc/apt/sources.list.d/ && ! grep -qs '^deb-src' /etc/apt/sources.list; then
    sed -e 's/^Types: deb$/Types: deb-src/' /etc/apt/sources.list.d/debian.sources \
        | "${as_root[@]}" tee /etc/apt/sources.list.d/debian-src.sources >/dev/null
    "${as_root[@]}" apt-get update -qq
fi
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
    g++-mingw-w64-x86-64-posix mingw-w64-tools ninja-build cmake qt6-base-dev qt6-base-dev-tools dpkg-dev >/dev/null

mkdir -p "$work/src"
cd "$work/src"
if ! ls -d qt6-base-*/ >/dev/null 2>&1; then
    apt-get source -qq qt6-base
fi
src=$(ls -d "$work"/src/qt6-base-*/ | head -1)
mkdir -p "$work/build"
cd "$work/build"
"$src/configure" -prefix "$prefix" -xplatform win32-g++ -qt-host-path /usr -release -shared \
    -nomake examples -nomake tests -no-opengl -no-dbus -no-icu \
    -qt-zlib -qt-libpng -qt-libjpeg -qt-freetype -qt-harfbuzz -qt-pcre -schannel -no-openssl \
    -no-feature-sql -no-feature-printsupport -no-feature-vulkan -no-feature-tabletevent -- \
    -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/mingw-w64-x86_64.cmake" \
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake
cmake --build . --parallel "$(nproc)"
cmake --install .
