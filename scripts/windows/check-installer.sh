#!/usr/bin/env bash
# Checks the Windows installer and the portable ZIP under Wine, in a
# throw-away prefix, the way a user's silent installation and removal go:
#
# - the installer's manifest asks for no elevation (Wine cannot show the
#   prompt, so this is read from the file: NSIS's "RequestExecutionLevel
#   user" is the manifest's level "asInvoker");
# - "/S /CurrentUser" (for me only) and "/S" alone (the default) install into
#   the user's own program folder with a shortcut in the user's Start menu and
#   the entry under HKCU, and touch neither Program Files nor HKLM;
# - "/S /AllUsers" (for everyone) installs into Program Files with a shortcut
#   in all users' Start menu and the entry under HKLM;
# - in each mode the installed program starts until it writes its start-up
#   lines, and the uninstaller, started as the entry's UninstallString says,
#   leaves no file, shortcut or registry key behind;
# - the portable ZIP, unpacked into a folder, starts, keeps its data in the
#   user's AppData folders as the installed program does, and writes nothing
#   into its own folder.
#
#   check-installer.sh <installer.exe> [<staged installation> [<portable.zip>]]
#
# The staged installation (build-windows/stage by default) is what the
# installer and the ZIP were made from: every file in it must be installed
# too. The ZIP is by default the installer's name with "-portable.zip".
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

fail() {
    echo "check-installer.sh: $*" >&2
    exit 1
}

if [ $# -lt 1 ] || [ $# -gt 3 ]; then
    fail "usage: $0 <installer.exe> [<staged installation> [<portable.zip>]]"
fi
installer=$(readlink -f "$1")
stage=$(readlink -f "${2:-$here/../../build-windows/stage}")
portable_zip=$(readlink -f "${3:-${installer%.exe}-portable.zip}")
[ -f "$installer" ] || fail "no installer at $1"
[ -f "$stage/kestrel-downloader.exe" ] || fail "no staged installation at $stage"
[ -f "$portable_zip" ] || fail "no portable ZIP at $portable_zip"

# The manifest is stored uncompressed in the executable's resources.
execution_level() {
    grep -aoE 'requestedExecutionLevel level="[A-Za-z]+"' "$1" | head -n 1 | sed 's/.*level="\(.*\)"/\1/'
}
level=$(execution_level "$installer")
[ "$level" = asInvoker ] || fail "the installer's manifest asks for \"${level:-nothing}\", not asInvoker: it would prompt for elevation"
echo "Manifest: requestedExecutionLevel asInvoker (no elevation prompt)"

prefix=$(mktemp -d)
trap 'WINEPREFIX="$prefix" wineserver -k 2>/dev/null || true; rm -rf "$prefix"' EXIT
# Wine's menu builder would turn the installer's shortcuts into entries of
# this machine's own desktop menu.
export WINEPREFIX="$prefix" WINEDEBUG=-all WINEDLLOVERRIDES="winemenubuilder.exe=d"
"$here/new-wine-prefix.sh"
# Keeps Wine from linking the prefix's user folders to the real home.
export HOME="$prefix/no-home"

user_dir="$prefix/drive_c/users/$(id -un)"
user_win="C:\\users\\$(id -un)"
app_data_roaming="$user_dir/AppData/Roaming/Halvard Software/Kestrel Downloader"
app_data_local="$user_dir/AppData/Local/Halvard Software/Kestrel Downloader"
uninstall_subkey='Software\Microsoft\Windows\CurrentVersion\Uninstall\Kestrel Downloader'
product_subkey='Software\Halvard Software\Kestrel Downloader'
user_start_menu="$user_dir/AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
all_start_menu="$prefix/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs"

# Windows does not tell file names apart by case, and the Qt DLLs are
# installed under lower-case names (see packaging/windows.cmake).
lower_list() {
    (cd "$1" && find . -type f -printf '%P\n' | tr '[:upper:]' '[:lower:]' | sort)
}
# The program's files, all of the stage's, in FOLDER.
check_files() {
    local folder=$1 file
    local expected=(kestrel-downloader.exe About.dll LoggingMessages.dll SysInfo.dll Updater.dll
                    Qt6Core.dll platforms/qwindows.dll ffmpeg.exe gpgv.exe libstdc++-6.dll)
    if [ -f "$stage/kestreldl2.exe" ]; then
        expected+=(kestreldl2.exe)
    fi
    for file in "${expected[@]}"; do
        [ -n "$(find "$folder" -ipath "$folder/$file" -type f)" ] || fail "$file is not in $folder"
    done
    local missing
    missing=$(comm -23 <(lower_list "$stage") <(lower_list "$folder"))
    [ -z "$missing" ] || fail "staged but not in $folder: $(echo "$missing" | tr '\n' ' ')"
}

# Starts PROGRAM (a Windows path) until its start-up lines are in a fresh
# log, and checks that its data went into the user's AppData folders.
check_starts() {
    rm -rf "$app_data_roaming" "$app_data_local"
    "$here/start-headless.sh" "$1" || fail "$1 did not start"
    [ -f "$app_data_roaming/kestreldl2.exe" ] || [ ! -f "$stage/kestreldl2.exe" ] \
        || fail "$1 did not copy kestreldl2.exe into its roaming data folder"
    [ -f "$app_data_roaming/ffmpeg.exe" ] || fail "$1 did not copy ffmpeg.exe into its roaming data folder"
}

reg_value() {
    wine reg query "$1" /v "$2" 2>/dev/null | tr -d '\r' | sed -n "s/^ *$2 *REG_SZ *//p"
}
reg_exists() {
    wine reg query "$1" >/dev/null 2>&1
}

# check_mode RUNS NAME FOLDER FOLDER_WIN HIVE OTHER_HIVE START_MENU OTHER_START_MENU INSTALLER_ARGUMENTS...
# With RUNS 2 the installer runs twice, the second time as an update of the
# first installation, which it uninstalls first.
check_mode() {
    local runs=$1 name=$2 folder=$3 folder_win=$4 hive=$5 other_hive=$6 start_menu=$7 other_start_menu=$8 run
    shift 8
    for run in $(seq "$runs"); do
        echo "Installing for $name (run $run): $(basename "$installer") $*"
        wine "$installer" "$@" >/dev/null 2>&1 || fail "the installer exited with code $?"
        wineserver -w
    done
    [ -d "$folder" ] || fail "the installer made no $folder_win"
    check_files "$folder"
    [ -f "$folder/Uninstall.exe" ] || fail "no Uninstall.exe in $folder_win"
    level=$(execution_level "$folder/Uninstall.exe")
    [ "$level" = asInvoker ] || fail "the uninstaller's manifest asks for \"${level:-nothing}\", not asInvoker"

    local shortcut="$start_menu/Kestrel Downloader/Kestrel Downloader.lnk"
    [ -f "$shortcut" ] || fail "no Start-menu shortcut at ${shortcut#"$prefix/drive_c/"}"
    # A shortcut keeps its target's full path as plain text too.
    grep -aqF "$folder_win\\kestrel-downloader.exe" "$shortcut" \
        || fail "the Start-menu shortcut does not lead to $folder_win\\kestrel-downloader.exe"
    [ ! -e "$other_start_menu/Kestrel Downloader" ] \
        || fail "a Start-menu folder in ${other_start_menu#"$prefix/drive_c/"} too"

    local uninstall_string
    uninstall_string=$(reg_value "$hive\\$uninstall_subkey" UninstallString)
    case "$uninstall_string" in
        "\"$folder_win\\Uninstall.exe\""*) ;;
        *) fail "no UninstallString for $folder_win under $hive (found: \"$uninstall_string\")" ;;
    esac
    ! reg_exists "$other_hive\\$uninstall_subkey" || fail "an uninstall entry under $other_hive too"
    ! reg_exists "$other_hive\\$product_subkey" || fail "$product_subkey under $other_hive too"
    echo "  $folder_win, ${shortcut#"$prefix/drive_c/"}, $hive: UninstallString $uninstall_string"

    check_starts "$folder_win\\kestrel-downloader.exe"
    echo "  The installed program starts."

    # As Windows does it: the program in the entry, with its switches. The
    # uninstaller copies itself into the temporary folder and removes the
    # installation folder from there; wineserver -w waits for that copy.
    local uninstaller switches
    uninstaller=$(echo "$uninstall_string" | sed 's/^"\([^"]*\)".*/\1/')
    read -r -a switches <<<"$(echo "$uninstall_string" | sed 's/^"[^"]*" *//')"
    wine "$uninstaller" /S "${switches[@]}" >/dev/null 2>&1 || fail "the uninstaller exited with code $?"
    wineserver -w
    if [ -d "$folder" ]; then
        fail "left after uninstalling: $folder_win $(cd "$folder" && find . -mindepth 1 | sed 's|^\./||' | tr '\n' ' ')"
    fi
    [ ! -e "$start_menu/Kestrel Downloader" ] || fail "the Start-menu folder is still there after uninstalling"
    ! reg_exists "$hive\\$uninstall_subkey" || fail "$hive\\$uninstall_subkey is still there after uninstalling"
    ! reg_exists "$hive\\$product_subkey" || fail "$hive\\$product_subkey is still there after uninstalling"
    echo "  Uninstalled without leftovers."
}

# Wine's own user program folder is the known folder UserProgramFiles.
per_user="$user_dir/AppData/Local/Programs/Kestrel Downloader"
per_user_win="$user_win\\AppData\\Local\\Programs\\Kestrel Downloader"
program_files="$prefix/drive_c/Program Files/Kestrel Downloader"
program_files_win='C:\Program Files\Kestrel Downloader'

check_mode 1 "the current user" "$per_user" "$per_user_win" HKCU HKLM \
    "$user_start_menu" "$all_start_menu" /S /CurrentUser
[ ! -e "$program_files" ] || fail "the installation for the current user wrote into $program_files_win"

# Without a switch the installer installs for the current user too; the
# second run updates that installation.
check_mode 2 "the current user by default" "$per_user" "$per_user_win" HKCU HKLM \
    "$user_start_menu" "$all_start_menu" /S

check_mode 1 "everyone" "$program_files" "$program_files_win" HKLM HKCU \
    "$all_start_menu" "$user_start_menu" /S /AllUsers
[ ! -e "$per_user" ] || fail "the installation for everyone wrote into $per_user_win"

echo "Unpacking $(basename "$portable_zip") into C:\\Portable"
portable_parent="$prefix/drive_c/Portable"
mkdir -p "$portable_parent"
unzip -q "$portable_zip" -d "$portable_parent"
portable_name=$(basename "$portable_zip" .zip)
portable="$portable_parent/$portable_name"
[ -d "$portable" ] || fail "the ZIP has no folder $portable_name at its top"
check_files "$portable"
before=$(cd "$portable" && find . | sort)
check_starts "C:\\Portable\\$portable_name\\kestrel-downloader.exe"
after=$(cd "$portable" && find . | sort)
[ "$before" = "$after" ] \
    || fail "the portable program wrote into its own folder: $(comm -13 <(echo "$before") <(echo "$after") | tr '\n' ' ')"
echo "  The portable program starts and keeps its data in AppData."

echo "Installer checked: both modes install, start and uninstall without leftovers; the portable ZIP starts."
