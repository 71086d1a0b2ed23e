# Checks shared by the installation and the Debian package tests: both must
# produce the same working tree under their prefix. Sourced, not run.
#
# Every check prints what it looked at and why it failed; fail() ends the test.

app_name="kestrel-downloader"
expected_version_line="Kestrel Downloader 2.0.023"
plugins=(LoggingMessages SysInfo Updater About)
icon_sizes=(16 32 48 64 128 256)
languages=(de fr es pt_BR it pl ru uk tr zh_CN ja ar)

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

step() {
    echo "-- $*"
}

# run_logged <log file> <command>...: runs the command with its output in the
# log, and shows the log when the command fails.
run_logged() {
    local log=$1
    shift
    if ! "$@" >"$log" 2>&1; then
        echo "command failed: $*" >&2
        sed 's/^/    /' "$log" >&2
        fail "$1 exited with an error"
    fi
}

# The width and height stored in a PNG's header.
png_size() {
    local bytes
    bytes=($(od -An -tu1 -j16 -N8 "$1"))
    [ ${#bytes[@]} -eq 8 ] || return 1
    echo "$(( (bytes[0] << 24) | (bytes[1] << 16) | (bytes[2] << 8) | bytes[3] ))x$(( (bytes[4] << 24) | (bytes[5] << 16) | (bytes[6] << 8) | bytes[7] ))"
}

is_elf() {
    [ "$(head -c 4 "$1" | od -An -c | tr -d ' ')" = '177ELF' ]
}

# check_layout <prefix> <application folder relative to the prefix> <system ffmpeg> <build dir>
#              <desktop identifier> <version>
check_layout() {
    local prefix=$1 appdir_rel=$2 system_ffmpeg=$3 build_dir=$4 app_id=$5 version=$6
    local appdir="$prefix/$appdir_rel"

    step "application folder $appdir"
    [ -d "$appdir" ] || fail "no application folder $appdir"
    for program in "$app_name" kestreldl2; do
        [ -f "$appdir/$program" ] && [ ! -L "$appdir/$program" ] || fail "$appdir/$program is missing or not a plain file"
        [ -x "$appdir/$program" ] || fail "$appdir/$program is not executable"
        is_elf "$appdir/$program" || fail "$appdir/$program is not an ELF program"
    done
    for plugin in "${plugins[@]}"; do
        [ -f "$appdir/$plugin.so" ] || fail "plug-in $appdir/$plugin.so is missing"
        is_elf "$appdir/$plugin.so" || fail "$appdir/$plugin.so is not an ELF library"
    done

    step "translations $appdir/translations"
    local language catalogue
    for language in "${languages[@]}"; do
        catalogue="$appdir/translations/kestrel_$language.qm"
        [ -s "$catalogue" ] || fail "catalogue $catalogue is missing or empty"
        # Every compiled Qt catalogue starts with the same four bytes.
        [ "$(head -c 4 "$catalogue" | od -An -tx1 | tr -d ' ')" = "3cb86418" ] || fail "$catalogue is not a Qt catalogue"
    done

    # Nothing installed may find its libraries through the build tree: it
    # would work here and nowhere else.
    if command -v readelf >/dev/null 2>&1; then
        local binaries=("$appdir/$app_name" "$appdir/kestreldl2")
        for plugin in "${plugins[@]}"; do
            binaries+=("$appdir/$plugin.so")
        done
        for binary in "${binaries[@]}"; do
            local paths
            paths=$(readelf -d "$binary" | grep -E '\((RPATH|RUNPATH)\)' || true)
            case "$paths" in
                *"$build_dir"*) fail "$binary still looks for libraries in the build tree: $paths" ;;
            esac
        done
    fi

    [ -L "$appdir/ffmpeg" ] || fail "$appdir/ffmpeg is not a symbolic link"
    [ "$(readlink "$appdir/ffmpeg")" = "$system_ffmpeg" ] ||
        fail "$appdir/ffmpeg points at '$(readlink "$appdir/ffmpeg")', not $system_ffmpeg"

    step "command $prefix/bin/$app_name"
    local link="$prefix/bin/$app_name"
    local expected_target="../$appdir_rel/$app_name"
    [ -L "$link" ] || fail "$link is not a symbolic link"
    [ "$(readlink "$link")" = "$expected_target" ] ||
        fail "$link points at '$(readlink "$link")', not $expected_target"
    [ "$(readlink -f "$link")" = "$(readlink -f "$appdir/$app_name")" ] ||
        fail "$link does not lead to $appdir/$app_name"

    step "icons"
    local size icon
    for size in "${icon_sizes[@]}"; do
        icon="$prefix/share/icons/hicolor/${size}x${size}/apps/$app_name.png"
        [ -f "$icon" ] || fail "icon $icon is missing"
        [ "$(png_size "$icon")" = "${size}x${size}" ] ||
            fail "$icon is $(png_size "$icon" || echo 'not a PNG'), not ${size}x${size}"
    done
    icon="$prefix/share/icons/hicolor/scalable/apps/$app_name.svg"
    [ -f "$icon" ] || fail "icon $icon is missing"
    grep -q '<svg' "$icon" || fail "$icon is not an SVG image"

    [ -f "$prefix/share/doc/$app_name/README" ] || fail "$prefix/share/doc/$app_name/README is missing"

    check_desktop_file "$prefix" "$app_id"
    check_metainfo "$prefix" "$app_id" "$version"
}

# The menu entry must start the installed command and name the installed icon.
check_desktop_file() {
    local prefix=$1 app_id=$2
    local desktop="$prefix/share/applications/$app_id.desktop"
    step "desktop file $desktop"
    [ -f "$desktop" ] || fail "$desktop is missing"

    local key value
    while IFS='=' read -r key value; do
        grep -qxF "$key=$value" "$desktop" || fail "$desktop lacks the line $key=$value"
    done <<'LINES'
Type=Application
Name=Kestrel Downloader
Exec=kestrel-downloader
Icon=kestrel-downloader
Terminal=false
Categories=Network;AudioVideo;Video;
StartupWMClass=Kestrel Downloader
LINES
    grep -q '^Comment=.' "$desktop" || fail "$desktop has no Comment"
    local language key
    for language in "${languages[@]}"; do
        for key in Name GenericName Comment Keywords; do
            grep -q "^$key\[$language\]=." "$desktop" || fail "$desktop has no $key[$language]"
        done
    done

    command -v desktop-file-validate >/dev/null 2>&1 ||
        fail "desktop-file-validate is not installed (Debian package desktop-file-utils)"
    local report
    if ! report=$(desktop-file-validate "$desktop" 2>&1); then
        echo "$report" >&2
        fail "$desktop does not validate"
    fi
    # Warnings do not change the exit status, but a menu may still skip or
    # misfile an entry it warns about. Hints stay hints: the entry is listed
    # under both Network and AudioVideo on purpose.
    if grep -qE ': (error|warning): ' <<<"$report"; then
        echo "$report" >&2
        fail "desktop-file-validate reports problems in $desktop"
    fi
    [ -z "$report" ] || echo "$report" | sed 's/^/   /'
}

# check_metainfo <prefix> <desktop identifier> <version>: the software centre
# entry must pass AppStream's validator without errors or warnings, and name
# the installed menu entry and command, this version and the menu entry's
# categories.
check_metainfo() {
    local prefix=$1 app_id=$2 version=$3
    local metainfo="$prefix/share/metainfo/$app_id.metainfo.xml"
    step "software centre entry $metainfo"
    [ -f "$metainfo" ] || fail "$metainfo is missing"

    command -v appstreamcli >/dev/null 2>&1 || fail "appstreamcli is not installed (Debian package appstream)"
    # --no-net: the screenshot's address is checked for its form only. The
    # exit status counts errors and warnings; the lines are read as well, so
    # that neither passes whatever the status says. Infos and pedantic hints
    # are shown (the validator's pedantic rule wants a lower-case identifier).
    local report status=0
    report=$(appstreamcli validate --no-net --no-color --explain "$metainfo" 2>&1) || status=$?
    if [ "$status" -ne 0 ] || grep -qE '^[EW]: ' <<<"$report"; then
        echo "$report" >&2
        fail "appstreamcli validate reports problems in $metainfo (status $status)"
    fi
    echo "$report" | sed 's/^/   /'

    # The same validator over the whole tree also finds the menu entry that
    # the launchable names, as a software centre looks it up: under usr/.
    case "$prefix" in
        */usr) ;;
        *) fail "check_metainfo needs a prefix that ends in /usr, not $prefix" ;;
    esac
    status=0
    report=$(appstreamcli validate-tree --no-net --no-color --explain "${prefix%/usr}" 2>&1) || status=$?
    if [ "$status" -ne 0 ] || grep -qE '^ *[EW]: ' <<<"$report"; then
        echo "$report" >&2
        fail "appstreamcli validate-tree reports problems in ${prefix%/usr} (status $status)"
    fi

    command -v python3 >/dev/null 2>&1 || fail "python3 is not installed"
    local fields
    fields=$(python3 - "$metainfo" <<'PYTHON'
import sys
import xml.etree.ElementTree as ET

root = ET.parse(sys.argv[1]).getroot()
def texts(path):
    return " ".join((e.text or "").strip() for e in root.findall(path))
print("type=" + root.get("type", ""))
print("id=" + texts("id"))
print("launchable=" + texts("launchable[@type='desktop-id']"))
print("binary=" + texts("provides/binary"))
print("releases=" + " ".join(r.get("version", "") for r in root.findall("releases/release")))
print("categories=" + "".join(c + ";" for c in texts("categories/category").split()))
lang = "{http://www.w3.org/XML/1998/namespace}lang"
for path in ("name", "summary", "description/p"):
    print("languages of " + path + "=" + " ".join(sorted({e.get(lang) for e in root.findall(path) if e.get(lang)})))
PYTHON
    ) || fail "$metainfo could not be read as XML"
    local key value desktop="$prefix/share/applications/$app_id.desktop"
    while IFS='=' read -r key value; do
        grep -qxF "$key=$value" <<<"$fields" || {
            echo "$fields" | sed 's/^/    /' >&2
            fail "$metainfo: $key is not '$value'"
        }
    done <<LINES
type=desktop-application
id=$app_id
launchable=$app_id.desktop
binary=$app_name
categories=$(sed -n 's/^Categories=//p' "$desktop")
languages of name=$(printf '%s\n' "${languages[@]}" | LC_ALL=C sort | paste -sd' ')
languages of summary=$(printf '%s\n' "${languages[@]}" | LC_ALL=C sort | paste -sd' ')
languages of description/p=$(printf '%s\n' "${languages[@]}" | LC_ALL=C sort | paste -sd' ')
LINES
    # The newest release comes first, and it is this build's version.
    local releases
    releases=$(sed -n 's/^releases=//p' <<<"$fields")
    [ "${releases%% *}" = "$version" ] ||
        fail "$metainfo: the first release is '${releases%% *}', not $version"
    [ -x "$prefix/bin/$app_name" ] || fail "$metainfo provides $app_name, which $prefix/bin lacks"
}

# check_version_run <program> <scratch folder>: runs "<program> --version" in a
# home folder of its own and checks the answer, and that the run found its
# plug-ins and tool files beside the real executable.
check_version_run() {
    local program=$1 scratch=$2
    local home="$scratch/home"
    step "$program --version"
    mkdir -p "$home/.local/share" "$home/.config" "$home/.cache" "$home/.local/state" "$home/runtime"
    chmod 700 "$home/runtime"

    local out="$scratch/version.out" err="$scratch/version.err" status=0
    env HOME="$home" \
        XDG_DATA_HOME="$home/.local/share" XDG_CONFIG_HOME="$home/.config" \
        XDG_CACHE_HOME="$home/.cache" XDG_STATE_HOME="$home/.local/state" \
        XDG_RUNTIME_DIR="$home/runtime" \
        QT_QPA_PLATFORM=offscreen \
        timeout 60 "$program" --version >"$out" 2>"$err" || status=$?
    if [ "$status" -ne 0 ]; then
        sed 's/^/    stdout: /' "$out" >&2
        sed 's/^/    stderr: /' "$err" >&2
        fail "$program --version exited with status $status"
    fi
    if ! grep -qxF "$expected_version_line" "$out"; then
        sed 's/^/    stdout: /' "$out" >&2
        sed 's/^/    stderr: /' "$err" >&2
        fail "$program --version did not print '$expected_version_line'"
    fi

    # The first start copies the tool files from the program's own folder and
    # the logging plug-in opens its log: both show that the folder was found
    # through the link in bin/.
    local appdir data
    appdir=$(dirname "$(readlink -f "$program")")
    data="$home/.local/share/Halvard Software/Kestrel Downloader"
    cmp -s "$appdir/kestreldl2" "$data/kestreldl2" ||
        fail "the first start did not copy $appdir/kestreldl2 into $data"
    [ -f "$data/ffmpeg" ] || fail "the first start did not copy ffmpeg into $data"
    [ -f "$data/kestrel-downloader.log" ] ||
        fail "no log in $data: the LoggingMessages plug-in in $appdir was not loaded"
}
