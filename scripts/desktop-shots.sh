#!/usr/bin/env bash
# Photographs the application as a user sees it on a Linux desktop, at a
# device scale of 100 % and 200 % (QT_SCALE_FACTOR), on a virtual X server:
#
#   - the first frame, taken as soon as the window is mapped, with every
#     size the window had in its first three seconds (first-frame-sizes.txt:
#     one line means the window never jumped);
#   - a walk through every page with the keyboard alone (xdotool keys, no
#     mouse): Enter on the video button, the address typed, Enter, Tab to the
#     format table, Down and Up, Enter, the finished download, Escape back to
#     the formats, Escape back to the address and to the start, the menu key.
#
# The application runs against the offline sample service of the demo
# (scripts/demo), with the real yt-dlp and ffmpeg, in a throw-away profile.
#
#   scripts/desktop-shots.sh [OUTPUT-FOLDER]    (default: docs/screenshots)
#
# With --language, the application speaks that language (its LANGUAGE and
# LANG), at 100 % only, and the pictures are those a translator checks: the
# start page, the formats page, the finished download and an error box (a
# video that does not exist), into OUTPUT-FOLDER/<language>/; "all" takes
# every language of translations/.
#
#   scripts/desktop-shots.sh --language de|all [OUTPUT-FOLDER]
#
# Needs the build in build/ (./run.sh or scripts/build.sh makes it).
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
languages=()
if [ "${1:-}" = --language ]; then
    [ -n "${2:-}" ] || { echo "desktop-shots.sh: --language needs a language" >&2; exit 1; }
    if [ "$2" = all ]; then
        for file in translations/kestrel_*.ts; do
            file=${file#translations/kestrel_}
            languages+=("${file%.ts}")
        done
    else
        [ -f "translations/kestrel_$2.ts" ] || { echo "desktop-shots.sh: no translations/kestrel_$2.ts" >&2; exit 1; }
        languages=("$2")
    fi
    shift 2
fi
out=$(realpath -m "${1:-docs/screenshots}")
missing_address="https://www.youtube.com/watch?v=unknown0000"
address="https://www.youtube.com/watch?v=Kestr3lDemo"

fail() {
    echo "desktop-shots.sh: $*" >&2
    exit 1
}

[ -x build/src/kestrel-downloader ] || fail "no build/src/kestrel-downloader; run scripts/build.sh first"
scripts/install-dependencies.sh xvfb xdotool x11-utils imagemagick yt-dlp ffmpeg python3

work=$(mktemp -d "${TMPDIR:-/tmp}/kestrel-shots.XXXXXX")
xvfb_pid=
demo_pid=
cleanup() {
    [ -z "$demo_pid" ] || kill -TERM "$demo_pid" 2>/dev/null || true
    [ -z "$demo_pid" ] || wait "$demo_pid" 2>/dev/null || true
    [ -z "$xvfb_pid" ] || kill -TERM "$xvfb_pid" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

display=:$((90 + RANDOM % 100))
Xvfb "$display" -screen 0 1600x1200x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
xvfb_pid=$!
export DISPLAY=$display
for _ in $(seq 50); do
    xdpyinfo >/dev/null 2>&1 && break
    sleep 0.1
done
xdpyinfo >/dev/null 2>&1 || fail "the virtual X server did not start"

window=
geometry() {
    xwininfo -id "$window" | awk '/Width:/ {w=$2} /Height:/ {h=$2} END {print w "x" h}'
}

shot_count=0
# shot NAME [root]: photographs the window, or with "root" the whole screen
# (a menu is a window of its own).
shot() {
    local what=(-window "$window")
    [ "${2:-}" = root ] && what=(-window root -trim)
    shot_count=$((shot_count + 1))
    import "${what[@]}" "$shots/$(printf %02d "$shot_count")-$1.png" || fail "cannot photograph $1"
}

# Waits until the window's picture has stayed the same for a second: a busy
# bar moves, a finished page does not.
wait_still() {
    local last= same=0 now
    for _ in $(seq 100); do
        now=$(import -window "$window" rgb:- 2>/dev/null | md5sum | cut -d' ' -f1)
        if [ "$now" = "$last" ]; then
            same=$((same + 1))
            [ "$same" -ge 3 ] && return 0
        else
            same=0
        fi
        last=$now
        sleep 0.35
    done
    fail "the window did not settle"
}

key() {
    xdotool key --window "$window" --clearmodifiers "$@"
    sleep 0.6
}

downloaded_file() {
    find "$work"/kestrel-demo.*/home/Downloads/KestrelD -name '*.mp4' 2>/dev/null | head -n 1
}

# start_application SCALE LOG [VARIABLE=VALUE...]: starts the demo with the
# application at that device scale and waits for its window.
start_application() {
    local scale=$1 log=$2
    shift 2
    env "$@" QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR="$scale" TMPDIR="$work" KESTREL_DEMO_KEEP=none \
        KESTREL_DEMO_THROTTLE=400000 KESTREL_DEMO_CACHE="$work/cache" \
        scripts/demo/demo.sh build/src >"$log" 2>&1 &
    demo_pid=$!

    window=
    for _ in $(seq 6000); do
        window=$(xdotool search --onlyvisible --name '^Kestrel Downloader( |$)' 2>/dev/null | head -n 1 || true)
        [ -n "$window" ] && break
        kill -0 "$demo_pid" 2>/dev/null || { cat "$log" >&2; fail "the application ended"; }
        sleep 0.01
    done
    [ -n "$window" ] || fail "the window did not appear"
}

stop_application() {
    kill -TERM "$demo_pid" 2>/dev/null || true
    wait "$demo_pid" 2>/dev/null || true
    demo_pid=
}

wait_for_download() {
    for _ in $(seq 600); do
        [ -n "$(downloaded_file)" ] && break
        sleep 0.2
    done
    [ -n "$(downloaded_file)" ] || fail "nothing was downloaded"
}

# The pages a translator checks, in one language, and the box of a video
# that does not exist.
photograph_language() {
    local language=$1
    shots="$out/$language"
    shot_count=0
    rm -rf "$shots"
    mkdir -p "$shots"
    echo "== language $language"
    start_application 1 "$work/demo-$language.log" LANGUAGE="$language" LANG="$language.UTF-8" LC_ALL= LC_MESSAGES=
    xdotool windowactivate --sync "$window" 2>/dev/null || xdotool windowfocus --sync "$window"
    wait_still
    shot start
    key Return
    xdotool type --window "$window" --delay 15 "$address"
    key Return
    wait_still
    shot formats
    key Tab Down Up Return
    wait_for_download
    wait_still
    shot downloaded
    key Escape Escape
    key ctrl+a
    xdotool type --window "$window" --delay 15 "$missing_address"
    key Return
    local box=
    for _ in $(seq 300); do
        # The virtual X server shows nothing but the application's windows.
        box=$(xdotool search --onlyvisible --name '.' 2>/dev/null | grep -vx "$window" | tail -n 1 || true)
        [ -n "$box" ] && break
        sleep 0.1
    done
    [ -n "$box" ] || fail "no error box came up"
    sleep 0.5
    shot error-box root
    key Return
    stop_application
}

if [ ${#languages[@]} -gt 0 ]; then
    for language in "${languages[@]}"; do
        photograph_language "$language"
    done
    echo "Screenshots in $out"
    exit 0
fi

for scale in 1 2; do
    shots="$out/$((scale * 100))"
    shot_count=0
    rm -rf "$shots"
    mkdir -p "$shots"
    echo "== device scale $((scale * 100)) %"

    start_application "$scale" "$work/demo-$scale.log"
    shot first-frame
    sizes=()
    for _ in $(seq 30); do
        sizes+=("$(geometry)")
        sleep 0.1
    done
    printf '%s\n' "${sizes[@]}" | uniq >"$shots/first-frame-sizes.txt"
    echo "first frame: $(paste -sd' ' "$shots/first-frame-sizes.txt")"

    xdotool windowactivate --sync "$window" 2>/dev/null || xdotool windowfocus --sync "$window"
    wait_still
    shot start
    key Tab
    shot start-tab-to-site
    key shift+Tab
    shot start-tab-back-to-video
    key Return
    shot address-empty
    xdotool type --window "$window" --delay 15 "$address"
    shot address
    key Return
    shot formats-busy
    wait_still
    shot formats
    key Tab Down Up
    shot format-chosen
    key Return
    sleep 1
    shot downloading
    wait_for_download
    wait_still
    shot downloaded
    key Escape
    shot escape-to-formats
    key Escape
    shot escape-to-address
    key Escape
    shot escape-to-start
    key Menu
    shot menu-from-keyboard root
    key Escape

    stop_application
done
echo "Screenshots in $out"
