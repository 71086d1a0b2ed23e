#!/usr/bin/env bash
# Cross-builds Kestrel Downloader for 64-bit Windows on Debian into
# build-windows/, installs it into build-windows/stage (the program, its
# plug-ins, the DLLs they load and Qt's plug-ins) and starts the staged
# program once under Wine to check that it comes up.
#
# Qt for Windows comes from ../shared/windows/qt6-mingw-w64-6.4.2.tar.xz when
# that cache is beside the checkout, else it is built from Debian's source
# (scripts/windows/build-qt-mingw.sh, about 40 minutes on two cores); either
# way it is kept in build-windows-qt/ for the next run.
#
# Not there yet: the tool launcher (kestreldl2.exe), ffmpeg.exe and gpgv.exe,
# the tests under Wine, and the installer.
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$(pwd)
qt_version=6.4.2
qt="$root/build-windows-qt/qt6-mingw-w64-$qt_version"
cache="$root/../shared/windows/qt6-mingw-w64-$qt_version.tar.xz"

scripts/install-dependencies.sh g++-mingw-w64-x86-64-posix mingw-w64-tools wine wine64 cmake ninja-build \
    qt6-base-dev qt6-base-dev-tools

if [ ! -f "$qt/lib/cmake/Qt6/qt.toolchain.cmake" ]; then
    mkdir -p "$root/build-windows-qt"
    if [ -f "$cache" ]; then
        echo "Unpacking Qt for Windows from $cache"
        tar -C "$root/build-windows-qt" -xJf "$cache"
    else
        echo "Building Qt for Windows from Debian's source (about 40 minutes)"
        scripts/windows/build-qt-mingw.sh "$qt"
    fi
fi

cmake -S . -B build-windows -G Ninja \
    -DCMAKE_BUILD_TYPE=Release \
    -DKESTREL_BUILD_TESTS=OFF \
    -DCMAKE_TOOLCHAIN_FILE="$qt/lib/cmake/Qt6/qt.toolchain.cmake" \
    -DQT_CHAINLOAD_TOOLCHAIN_FILE="$root/scripts/windows/mingw-w64-x86_64.cmake" >/dev/null
cmake --build build-windows
rm -rf build-windows/stage
cmake --install build-windows --prefix build-windows/stage >/dev/null

# The staged program under Wine, in a throw-away prefix: it must reach its
# window and write its start-up lines into its log in the local application
# data folder. Wine does not pass QT_* variables on, so the platform is given
# on the command line.
prefix=$(mktemp -d)
trap 'WINEPREFIX="$prefix" wineserver -k 2>/dev/null || true; rm -rf "$prefix"' EXIT
export WINEPREFIX="$prefix" WINEDEBUG=-all
wineboot --init >/dev/null 2>&1 || true
timeout 60 wine build-windows/stage/kestrel-downloader.exe -platform offscreen >/dev/null 2>&1 &
log="$prefix/drive_c/users/$(id -un)/AppData/Local/Halvard Software/Kestrel Downloader/kestrel-downloader.log"
for _ in $(seq 120); do
    if grep -qs "OK: output dir" "$log"; then
        break
    fi
    sleep 0.5
done
WINEPREFIX="$prefix" wineserver -k 2>/dev/null || true
if ! grep -qs "OK: output dir" "$log"; then
    echo "build.sh: the staged program did not start under Wine (no start-up lines in $log)" >&2
    exit 1
fi
echo "Windows build staged in build-windows/stage; it starts under Wine."
