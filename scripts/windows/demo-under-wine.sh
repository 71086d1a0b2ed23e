#!/usr/bin/env bash
# Downloads a video with the Windows build under Wine, end to end, the way a
# user would: the staged kestrel-downloader.exe runs on a virtual X server,
# xdotool clicks the video button, types a YouTube address, presses Process
# and picks the first format's download button, and the real launcher
# (kestreldl2.exe, copied into the data folder at first start) runs a fake
# yt-dlp.exe for every tool run. The fake plays yt-dlp from outputs of the
# real tool (../shared/realtool/captures) and leaves a small MP4 made here
# with ffmpeg; nothing reaches the network.
#
# Then it checks that the merged file is in the user's download folder
# (Downloads/KestrelD in the prefix), that the launcher's log holds the
# fake's three runs and that the launcher's flag probe took the fake for a
# yt-dlp that knows --progress-delta; it photographs the formats page and
# the finished download page into docs/. It stops with a message at the
# first step that fails.
#
#   scripts/windows/demo-under-wine.sh
#
# Needs scripts/windows/build.sh to have staged the build. Everything runs in
# a throw-away folder with its own HOME and Wine prefix (Wine links the
# prefix's Downloads to HOME's), which is removed at the end.
#
# Environment:
#   KESTREL_DEMO_CAPTURES  the real tool's outputs (default ../shared/realtool/captures)
#   KESTREL_DEMO_SHOTS     where the screenshots go (default docs/)

# The clean-up function runs from a trap, which shellcheck does not follow.
# shellcheck disable=SC2317
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$(pwd)

stage="$root/build-windows/stage"
fake="$root/build-windows/tests/windows/fake-yt-dlp.exe"
captures=${KESTREL_DEMO_CAPTURES:-$root/../shared/realtool/captures}
shots=${KESTREL_DEMO_SHOTS:-$root/docs}
address="https://www.youtube.com/watch?v=dQw4w9WgXcQ"
video_id=dQw4w9WgXcQ

fail() {
    echo "demo-under-wine.sh: $*" >&2
    exit 1
}

step() {
    echo "== $*"
}

for program in kestrel-downloader.exe kestreldl2.exe; do
    [ -f "$stage/$program" ] || fail "no $program in $stage; run scripts/windows/build.sh first"
done
[ -f "$fake" ] || fail "no $fake; run scripts/windows/build.sh first"
for capture in main_a.stdout main_b.stdout main_c.stdout; do
    [ -f "$captures/$capture" ] || fail "no $captures/$capture (the real tool's outputs)"
done
scripts/install-dependencies.sh wine wine64 xvfb xdotool imagemagick ffmpeg

work=$(mktemp -d "${TMPDIR:-/tmp}/kestrel-wine-demo.XXXXXX")
xvfb_pid=
finish() {
    local status=$?
    trap - EXIT INT TERM
    if [ "$status" -ne 0 ]; then
        for log in "${app_log:-}" "${tool_log:-}" "$work/wine.out"; do
            if [ -n "$log" ] && [ -f "$log" ]; then
                echo "--- last lines of $log" >&2
                tail -n 25 "$log" >&2
            fi
        done
    fi
    if [ -d "$work/prefix" ]; then
        WINEPREFIX="$work/prefix" wineserver -k 2>/dev/null || true
    fi
    if [ -n "$xvfb_pid" ]; then
        kill "$xvfb_pid" 2>/dev/null || true
    fi
    rm -rf "$work"
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# wait_until SECONDS WHAT COMMAND...: polls COMMAND until it succeeds; fails
# with "WHAT did not happen" after SECONDS.
wait_until() {
    local seconds=$1 what=$2
    shift 2
    local deadline=$((SECONDS + seconds))
    until "$@"; do
        [ "$SECONDS" -lt "$deadline" ] || fail "$what did not happen within $seconds s"
        sleep 0.25
    done
}

step "Preparing the fake tool's files"
demo="$work/demo"
mkdir -p "$demo"
cat "$captures/main_a.stdout" >"$demo/title.txt"
cat "$captures/main_b.stdout" >"$demo/formats.txt"
# The fake writes the output folder of the run where the capture has the
# folder of the run that made it.
capture_folder=$(sed -n 's|^\[download\] Destination: \(.*\)/[^/]*$|\1|p' "$captures/main_c.stdout" | head -n 1)
[ -n "$capture_folder" ] || fail "no Destination line in $captures/main_c.stdout"
from=$capture_folder awk '{
        from = ENVIRON["from"]
        out = ""
        while ((at = index($0, from)) > 0) {
            out = out substr($0, 1, at - 1) "{path}"
            $0 = substr($0, at + length(from))
        }
        printf "%s%s\n", out, $0
    }' "$captures/main_c.stdout" >"$demo/progress.txt"
# Five seconds of 1080p with sound: the size the first listed format has.
ffmpeg -v error -f lavfi -i testsrc2=size=1920x1080:rate=25:duration=5 -f lavfi -i sine=frequency=440:duration=5 \
    -c:v libx264 -preset ultrafast -pix_fmt yuv420p -c:a aac -shortest -movflags +faststart "$demo/video.mp4" \
    || fail "ffmpeg could not make the sample video"

step "Starting a virtual X server"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$work/display" 2>"$work/xvfb.out" &
xvfb_pid=$!
wait_until 10 "the X server's start" test -s "$work/display"
display=":$(cat "$work/display")"
export DISPLAY="$display"

step "Making a throw-away Wine prefix"
mkdir -p "$work/home/.config"
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config"
export WINEPREFIX="$work/prefix" WINEDEBUG=-all
# No Mono or Gecko: their installers would ask in a window.
WINEDLLOVERRIDES="mscoree,mshtml=" wineboot --init >/dev/null 2>&1 || true
# The registry files are written when the Wine server ends.
wineserver -w
[ -f "$WINEPREFIX/system.reg" ] || fail "wineboot made no prefix in $WINEPREFIX"
user_folder="$WINEPREFIX/drive_c/users/$(id -un)"
local_folder="$user_folder/AppData/Local/Halvard Software/Kestrel Downloader"
data_folder="$user_folder/AppData/Roaming/Halvard Software/Kestrel Downloader"
app_log="$local_folder/kestrel-downloader.log"
tool_log="$data_folder/kestreldl2.log"
# The update check at start asks a closed local port, so it fails at once
# and nothing leaves the machine.
mkdir -p "$local_folder"
printf '[Updater]\nFeedUrl=http://127.0.0.1:9/feed.json\nTimeoutMs=3000\n' >"$local_folder/settings.ini"

step "Starting kestrel-downloader.exe with the fake yt-dlp.exe"
fake_windows=$(winepath -w "$fake")
KESTREL_YTDLP="$fake_windows" FAKE_BEHAVIOUR=demo FAKE_DEMO_FOLDER="$(winepath -w "$demo")" \
    wine "$stage/kestrel-downloader.exe" >"$work/wine.out" 2>&1 &

find_window() {
    window=$(xdotool search --onlyvisible --name '^Kestrel Downloader' 2>/dev/null | head -n 1)
    [ -n "$window" ]
}
log_has() {
    grep -qsF -- "$1" "$app_log"
}
wait_until 90 "the main window's appearance" find_window
# The update check is asked for once the start page shows.
wait_until 30 "the start page (the update check's line in $app_log)" log_has "[UPD] quiet check"

# The window's place and size, for clicks and screenshots.
read_geometry() {
    eval "$(xdotool getwindowgeometry --shell "$window")"
    geometry="${WIDTH}x${HEIGHT}+${X}+${Y}"
}
window_is() {
    read_geometry
    [ "${WIDTH}x${HEIGHT}" = "$1" ]
}
# The pixels of the window, as a hash, to tell when it has changed.
window_hash() {
    read_geometry
    import -window root -crop "$geometry" +repage -depth 8 rgb:- 2>/dev/null | md5sum | cut -d' ' -f1
}
window_differs_from() {
    [ "$(window_hash)" != "$1" ]
}
# Waits until two looks at the window a moment apart see the same pixels.
window_settles() {
    local before
    before=$(window_hash)
    sleep 0.3
    [ "$(window_hash)" = "$before" ]
}
shoot() {
    read_geometry
    import -window root -crop "$geometry" +repage "$1" || fail "cannot photograph the window into $1"
    echo "   screenshot: $1"
}
click() {
    xdotool mousemove --window "$window" "$1" "$2" click 1
}

# The clicks below are at the widgets' places in the window at the display
# scale of 100, which a new profile has: 384 by 128 pixels on the start and
# address pages, 256 high with the formats, 144 on the download page.
window_is 384x128 || fail "the start page is ${WIDTH}x${HEIGHT}, not 384x128; the clicks would miss"

step "Video button"
start_page=$(window_hash)
click 145 62
wait_until 10 "the address page's appearance" window_differs_from "$start_page"
wait_until 10 "the address page's settling" window_settles

step "Typing $address and pressing Process"
click 190 54
xdotool type --delay 20 "$address"
click 192 97
wait_until 20 "the metadata request for $address" log_has "requestMetadata() : QUrl($address)"
wait_until 60 "the format list" log_has "void Navigation::whenFormatsReceived()"
wait_until 10 "the formats page (384x256)" window_is 384x256
wait_until 10 "the formats page's settling" window_settles
mkdir -p "$shots"
shoot "$shots/windows-formats-wine.png"

step "Download button of the first format"
click 333 83
wait_until 10 "the download request" log_has "Requesting video with FormatID:"
format_id=$(sed -n 's/.*Requesting video with FormatID: \([0-9]*\).*/\1/p' "$app_log" | tail -n 1)
first_listed=$(awk '/--- VIEW ORDER ---/ { getline; print $3; exit }' "$app_log")
[ "$format_id" = "$first_listed" ] || fail "the click asked for format $format_id, not the first listed, $first_listed"
wait_until 120 "the end of the download" log_has "Video request::finished"
# showDownloadCompleted() logs under the name of the lambda it replaced.
wait_until 10 "the finished page" log_has "Navigation::connectDriver()::<lambda()>"
wait_until 10 "the download page (384x144)" window_is 384x144
wait_until 10 "the finished page's settling" window_settles
shoot "$shots/windows-download-finished-wine.png"

step "Checking the downloaded file"
output_windows=$(sed -n 's/.*OK: output dir //p' "$app_log" | tail -n 1)
[ -n "$output_windows" ] || fail "no output folder in $app_log"
output_folder=$(winepath -u "$output_windows")
title=$(head -n 1 "$demo/title.txt")
resolution=$(awk -v id="$format_id" '$1 == id { print $3; exit }' "$demo/formats.txt")
[ -n "$resolution" ] || fail "format $format_id is not in the listing"
expected="$output_folder/${title}_${resolution}_${video_id}.mp4"
[ -f "$expected" ] || fail "no $expected; the output folder holds: $(ls -A "$output_folder" 2>/dev/null)"
cmp -s "$expected" "$demo/video.mp4" || fail "$expected is not the sample video"
size=$(stat -c %s "$expected")
streams=$(ffprobe -v error -show_entries stream=codec_type,width,height -of csv=p=0 "$expected" | tr '\n' ' ')
echo "   $output_windows/$(basename "$expected") ($size bytes; streams: $streams)"

step "Checking the launcher's log"
[ -f "$tool_log" ] || fail "no launcher log $tool_log"
# run_ended_well PATTERN: a run of the fake whose command line matches
# PATTERN, followed by its end with exit code 0.
# Given through the environment: awk would read the backslashes of a Windows
# path in a -v value as escapes.
run_ended_well() {
    tool="run $fake_windows " pattern=$1 awk '
        index($0, ENVIRON["tool"]) && $0 ~ ENVIRON["pattern"] { running = 1; next }
        running && / end: / { if ($0 ~ / end: exit code 0$/) found = 1; running = 0 }
        END { exit !found }' "$tool_log"
}
# One extraction: the title run keeps the video's information document,
# which the format and download runs load in place of the address.
document='--load-info-json .*info-[0-9a-f]*-[0-9]*[.]json$'
run_ended_well " --get-title --get-duration --no-warnings --print-to-file %[(][)]j .* $video_id\$" \
    || fail "no finished metadata run of the fake in $tool_log"
run_ended_well " --list-formats --no-warnings $document" \
    || fail "no finished format run of the fake in $tool_log"
run_ended_well " --progress-delta 1 .* --format ${format_id}[+].* --windows-filenames $document" \
    || fail "no finished download run of format $format_id with --progress-delta in $tool_log"
# The flag cache's line: "flag", the tool's stamp, the flag, the answer, the tool.
grep -qF -- "--progress-delta"$'\t'"supported"$'\t'"$fake_windows" "$data_folder/kestreldl2.flags" \
    || fail "the launcher did not record --progress-delta as known to the fake in kestreldl2.flags"
grep -cF " run $fake_windows " "$tool_log" | sed 's/^/   runs of the fake in kestreldl2.log: /'

echo "The Windows build downloaded format $format_id under Wine through kestreldl2.exe and the fake yt-dlp.exe."
