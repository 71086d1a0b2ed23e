#!/usr/bin/env bash
# Checks the Windows installer under Wine, in a throw-away prefix, the way a
# user's silent installation and removal go: it installs into a folder of its
# own, looks for the program's files, the Start-menu shortcut and the entry
# in the list of installed programs, starts the installed program until it
# writes its start-up lines, then uninstalls and checks that nothing is left.
#
#   check-installer.sh <installer.exe> [<staged installation>]
#
# The staged installation (build-windows/stage by default) is what the
# installer was made from: every file in it must be installed too.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

fail() {
    echo "check-installer.sh: $*" >&2
    exit 1
}

if [ $# -lt 1 ] || [ $# -gt 2 ]; then
    fail "usage: $0 <installer.exe> [<staged installation>]"
fi
installer=$(readlink -f "$1")
stage=$(readlink -f "${2:-$here/../../build-windows/stage}")
[ -f "$installer" ] || fail "no installer at $1"
[ -f "$stage/kestrel-downloader.exe" ] || fail "no staged installation at $stage"

prefix=$(mktemp -d)
trap 'WINEPREFIX="$prefix" wineserver -k 2>/dev/null || true; rm -rf "$prefix"' EXIT
# Wine's menu builder would turn the installer's shortcuts into entries of
# this machine's own desktop menu.
export WINEPREFIX="$prefix" WINEDEBUG=-all WINEDLLOVERRIDES="winemenubuilder.exe=d"
"$here/new-wine-prefix.sh"
# Keeps Wine from linking the prefix's user folders to the real home.
export HOME="$prefix/no-home"

# NSIS takes /D= and _?= only as the last argument and unquoted, and Wine
# quotes an argument with a space in it: the folder has none.
install_win='C:\KestrelSandbox\KestrelDownloader'
install="$prefix/drive_c/KestrelSandbox/KestrelDownloader"
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Kestrel Downloader'

echo "Installing $(basename "$installer") silently into $install_win"
wine "$installer" /S "/D=$install_win" >/dev/null 2>&1 || fail "the installer exited with code $?"
[ -d "$install" ] || fail "the installer made no $install_win"

# Windows does not tell file names apart by case, and the Qt DLLs are
# installed under lower-case names (see packaging/windows.cmake).
installed() {
    [ -n "$(find "$install" -ipath "$install/$1" -type f)" ]
}
expected=(kestrel-downloader.exe About.dll LoggingMessages.dll SysInfo.dll Updater.dll
          Qt6Core.dll platforms/qwindows.dll ffmpeg.exe gpgv.exe libstdc++-6.dll Uninstall.exe)
if [ -f "$stage/kestreldl2.exe" ]; then
    expected+=(kestreldl2.exe)
fi
for file in "${expected[@]}"; do
    installed "$file" || fail "$file is not in the installation folder"
done
lower_list() {
    (cd "$1" && find . -type f -printf '%P\n' | tr '[:upper:]' '[:lower:]' | sort)
}
missing=$(comm -23 <(lower_list "$stage") <(lower_list "$install"))
[ -z "$missing" ] || fail "staged but not installed: $(echo "$missing" | tr '\n' ' ')"

start_menus=("$prefix/drive_c/ProgramData/Microsoft/Windows/Start Menu"
             "$prefix/drive_c/users/$(id -un)/AppData/Roaming/Microsoft/Windows/Start Menu")
shortcut=$(find "${start_menus[@]}" -name "Kestrel Downloader.lnk" 2>/dev/null | head -n 1 || true)
[ -n "$shortcut" ] || fail "no Start-menu shortcut Kestrel Downloader.lnk"
# A shortcut keeps its target's full path as plain text too.
grep -aqF "$install_win\\kestrel-downloader.exe" "$shortcut" \
    || fail "the Start-menu shortcut does not lead to $install_win\\kestrel-downloader.exe"
echo "Start-menu shortcut: ${shortcut#"$prefix/drive_c/"}"

uninstall_string=$(wine reg query "$uninstall_key" /v UninstallString 2>/dev/null || true)
case "$uninstall_string" in
    *"$install_win\\Uninstall.exe"*) ;;
    *) fail "no UninstallString for $install_win in $uninstall_key" ;;
esac

"$here/start-headless.sh" "$install_win\\kestrel-downloader.exe" || fail "the installed program did not start"
echo "The installed program starts."

# Run in place (_?=) the uninstaller waits until it is done, but cannot
# remove itself and so not its folder either; both are left to this script.
wine "$install_win\\Uninstall.exe" /S "_?=$install_win" >/dev/null 2>&1 || fail "the uninstaller exited with code $?"
rm -f "$install/Uninstall.exe"
rmdir "$install" 2>/dev/null || true
if [ -d "$install" ]; then
    fail "left after uninstalling: $(cd "$install" && find . -mindepth 1 | sed 's|^\./||' | tr '\n' ' ')"
fi
[ ! -e "$shortcut" ] || fail "the Start-menu shortcut is still there after uninstalling"
if wine reg query "$uninstall_key" >/dev/null 2>&1; then
    fail "$uninstall_key is still there after uninstalling"
fi
echo "Installer checked: it installs, the program starts, and it uninstalls without leftovers."
