#!/usr/bin/env bash
# Cross-builds Kestrel Downloader for 64-bit Windows on Debian into
# build-windows/, installs it into build-windows/stage (the program, its
# plug-ins, ffmpeg.exe and gpgv.exe, the DLLs they load and Qt's plug-ins)
# and starts the staged program once under Wine to check that it comes up;
# then makes the installer, build-windows/KestrelDownloader-<version>-win64.exe
# (CPack's NSIS generator; for the current user without administrator rights
# or for everyone), and the portable
# build-windows/KestrelDownloader-<version>-win64-portable.zip (CPack's ZIP
# generator), and checks both under Wine with check-installer.sh. The
# Windows tests are built too; ./test.sh --windows runs them.
#
# Qt for Windows and the Windows pieces Debian does not ship (ffmpeg.exe,
# gpgv.exe, libarchive) come from the archives in ../shared/windows/ when
# that cache is beside the checkout, else they are built from Debian's
# source (build-qt-mingw.sh, about 40 minutes on two cores;
# build-deps-mingw.sh, about 6); either way they are kept in
# build-windows-deps/ for the next run.
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$(pwd)
qt_version=6.4.2
deps="$root/build-windows-deps"
qt="$deps/qt6-mingw-w64-$qt_version"
qt_cache="$root/../shared/windows/qt6-mingw-w64-$qt_version.tar.xz"
pieces="$deps/windows-deps-mingw-w64"
pieces_cache="$root/../shared/windows/windows-deps-mingw-w64.tar.xz"

scripts/install-dependencies.sh g++-mingw-w64-x86-64-posix mingw-w64-tools libz-mingw-w64-dev wine wine64 cmake \
    ninja-build qt6-base-dev qt6-base-dev-tools qt6-l10n-tools qt6-translations-l10n nsis gnupg python3

mkdir -p "$deps"
if [ ! -f "$qt/lib/cmake/Qt6/qt.toolchain.cmake" ]; then
    if [ -f "$qt_cache" ]; then
        echo "Unpacking Qt for Windows from $qt_cache"
        tar -C "$deps" -xJf "$qt_cache"
    else
        echo "Building Qt for Windows from Debian's source (about 40 minutes)"
        scripts/windows/build-qt-mingw.sh "$qt"
    fi
fi
if [ ! -f "$pieces/bin/ffmpeg.exe" ]; then
    if [ -f "$pieces_cache" ]; then
        echo "Unpacking ffmpeg.exe, gpgv.exe and libarchive from $pieces_cache"
        tar -C "$deps" -xJf "$pieces_cache"
    else
        echo "Building ffmpeg.exe, gpgv.exe and libarchive from Debian's source (about 6 minutes)"
        scripts/windows/build-deps-mingw.sh "$pieces"
    fi
fi

cmake -S . -B build-windows -G Ninja \
    -DCMAKE_BUILD_TYPE=Release \
    -DKESTREL_BUILD_TESTS=ON \
    -DKESTREL_WINDOWS_PIECES="$pieces" \
    -DCMAKE_TOOLCHAIN_FILE="$qt/lib/cmake/Qt6/qt.toolchain.cmake" \
    -DQT_CHAINLOAD_TOOLCHAIN_FILE="$root/scripts/windows/mingw-w64-x86_64.cmake" >/dev/null
cmake --build build-windows
rm -rf build-windows/stage
cmake --install build-windows --prefix build-windows/stage >/dev/null

# The staged program under Wine, in a throw-away prefix: it must reach its
# window and write its start-up lines into its log.
prefix=$(mktemp -d)
trap 'WINEPREFIX="$prefix" wineserver -k 2>/dev/null || true; rm -rf "$prefix"' EXIT
export WINEPREFIX="$prefix" WINEDEBUG=-all
scripts/windows/new-wine-prefix.sh
# Keeps Wine from linking the prefix's user folders to the real home.
export HOME="$prefix/no-home"
scripts/windows/start-headless.sh build-windows/stage/kestrel-downloader.exe
users="$prefix/drive_c/users/$(id -un)"
# The first start copies the launcher and ffmpeg.exe from beside the program
# into the roaming data folder.
for program in kestreldl2.exe ffmpeg.exe; do
    if [ ! -f "$users/AppData/Roaming/Halvard Software/Kestrel Downloader/$program" ]; then
        echo "build.sh: the staged program did not copy $program into its data folder" >&2
        exit 1
    fi
done
echo "Windows build staged in build-windows/stage; it starts under Wine."

# The installer and the ZIP hold what "cmake --install" installs, which
# CPack installs again into a folder of its own.
package="build-windows/$(sed -n 's/^set(CPACK_PACKAGE_FILE_NAME "\(.*\)")$/\1/p' build-windows/CPackConfig.cmake)"
installer="$package.exe"
portable="$package-portable.zip"
rm -f "$installer" "$portable"
(cd build-windows && cpack -G "NSIS;ZIP" >/dev/null)
for file in "$installer" "$portable"; do
    [ -f "$file" ] || { echo "build.sh: cpack made no $file" >&2; exit 1; }
done
echo "Installer: $installer ($(du -h "$installer" | cut -f1))"
echo "Portable ZIP: $portable ($(du -h "$portable" | cut -f1))"
scripts/windows/check-installer.sh "$installer" build-windows/stage "$portable"
