#!/usr/bin/env bash
# Starts Kestrel Downloader against an offline sample video service, so that
# the whole walk (address, formats, download, merge) can be tried with the
# real yt-dlp and ffmpeg and without any network.
#
#   demo.sh INSTALL [APP-ARGUMENTS...]
#
# INSTALL is an installation prefix with bin/kestrel-downloader, or a folder
# that holds kestrel-downloader itself, such as a build tree's src/.
#
# The application runs in a throw-away profile (a temporary HOME with its XDG
# folders inside), so the user's own settings, data and downloads are never
# touched. Any YouTube address can be pasted: every one gets the sample clip,
# except the addresses of these video identifiers, which show particular
# cases (https://youtu.be/Kestr3lUni0 ...):
#   Kestr3lUni0   a title with non-ASCII and Windows-hostile characters
#   Kestr3l404x   the video formats' files are missing (HTTP 404)
#   Kestr3lAprx   only estimated sizes, or none
#   unknown0000   a video that does not exist
#
# When the application is closed, the service is stopped and the profile is
# removed; the downloaded files are first copied to a folder that is kept
# and named at the end.
#
# Environment:
#   KESTREL_DEMO_THROTTLE  bytes per second the service sends (default 1.5 MiB/s)
#   KESTREL_DEMO_PORT      port on 127.0.0.1 (default: any free one)
#   KESTREL_DEMO_KEEP      where to keep the downloads, or "none"
#                          (default: a dated folder in the demo's cache)
#   KESTREL_DEMO_CACHE     where the media and kept downloads go
#                          (default: ${XDG_CACHE_HOME:-$HOME/.cache}/kestrel-demo)

# The clean-up functions run from traps, which shellcheck does not follow.
# shellcheck disable=SC2317
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

usage() {
    echo "usage: $0 INSTALL-PREFIX-OR-FOLDER [application arguments...]" >&2
    exit 2
}

[ $# -ge 1 ] || usage
install=$1
shift

if [ -x "$install/bin/kestrel-downloader" ]; then
    app="$install/bin/kestrel-downloader"
elif [ -x "$install/kestrel-downloader" ]; then
    app="$install/kestrel-downloader"
else
    echo "demo.sh: no kestrel-downloader in $install/bin or $install" >&2
    usage
fi
app="$(cd "$(dirname "$app")" && pwd)/$(basename "$app")"

python=/usr/bin/python3
[ -x "$python" ] || python=$(command -v python3 || true)
missing=()
[ -n "$python" ] || missing+=("python3")
[ -x "${KESTREL_DEMO_REAL_YTDLP:-/usr/bin/yt-dlp}" ] || missing+=("yt-dlp (${KESTREL_DEMO_REAL_YTDLP:-/usr/bin/yt-dlp})")
command -v ffmpeg >/dev/null 2>&1 || missing+=("ffmpeg")
command -v ffprobe >/dev/null 2>&1 || missing+=("ffprobe")
if [ ${#missing[@]} -gt 0 ]; then
    echo "demo.sh: missing: ${missing[*]}; install the Debian packages yt-dlp, ffmpeg and python3" >&2
    exit 1
fi

# The application copies the tool launcher from beside its executable at
# first start; without it every request fails with "cannot start the
# downloader tool".
real_app=$(readlink -f "$app")
if [ ! -e "$(dirname "$real_app")/kestreldl2" ]; then
    echo "demo.sh: warning: no kestreldl2 beside $real_app; downloads will not start" >&2
fi

# Decided before HOME points at the throw-away profile.
cache=${KESTREL_DEMO_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/kestrel-demo}
media="$cache/media"
keep=${KESTREL_DEMO_KEEP:-$cache/downloads/$(date +%Y%m%d-%H%M%S)}

run=$(mktemp -d "${TMPDIR:-/tmp}/kestrel-demo.XXXXXX")
server_pid=
app_pid=

# stop_process <pid>: asks the process to end, and kills it if it has not
# within five seconds. An empty pid or a process already gone is fine.
stop_process() {
    local pid=$1
    [ -n "$pid" ] || return 0
    kill -TERM "$pid" 2>/dev/null || return 0
    for _ in $(seq 50); do
        kill -0 "$pid" 2>/dev/null || return 0
        sleep 0.1
    done
    kill -KILL "$pid" 2>/dev/null || true
}

finish() {
    local status=$?
    trap - EXIT INT TERM
    stop_process "$app_pid"
    app_pid=
    stop_process "$server_pid"
    server_pid=
    local output="$run/home/Downloads/KestrelD"
    if [ -d "$output" ] && [ -n "$(ls -A "$output" 2>/dev/null)" ]; then
        echo
        echo "Downloaded into the demo profile's $output:"
        find "$output" -mindepth 1 -maxdepth 1 -printf '  %f (%s bytes)\n'
        if [ "$keep" != none ]; then
            mkdir -p "$keep"
            cp -a "$output/." "$keep/"
            echo "Kept a copy in: $keep"
        fi
    else
        echo "Nothing was downloaded."
    fi
    rm -rf "$run"
    exit "$status"
}
trap finish EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

echo "Making the sample media in $media (once)..."
FFMPEG=$(command -v ffmpeg) "$here/make-media.sh" "$media"

"$python" "$here/server.py" --root "$media" --port "${KESTREL_DEMO_PORT:-0}" \
    --port-file "$run/port" --pid-file "$run/server.pid" \
    --throttle "${KESTREL_DEMO_THROTTLE:-1572864}" --lifetime 14400 --exit-with-parent \
    --log "$run/server.log" >"$run/server.out" 2>&1 &
server_pid=$!
for _ in $(seq 100); do
    [ -s "$run/port" ] && break
    if ! kill -0 "$server_pid" 2>/dev/null; then
        server_pid=
        echo "demo.sh: the sample service did not start:" >&2
        cat "$run/server.out" >&2
        exit 1
    fi
    sleep 0.1
done
if [ ! -s "$run/port" ]; then
    echo "demo.sh: the sample service did not report its port" >&2
    exit 1
fi
port=$(cat "$run/port")
# The PID file is the service's own word for which process to stop.
server_pid=$(cat "$run/server.pid")

FFPROBE=$(command -v ffprobe) "$python" "$here/make-info.py" --media "$media" --port "$port" --out "$run/info" >/dev/null

profile="$run/home"
mkdir -p "$profile/.local/share" "$profile/.config" "$profile/.cache" "$profile/.local/state" "$profile/runtime"
chmod 700 "$profile/runtime"
# The application's update check asks its release server once the window
# shows; in the demo it asks the sample service, which answers 404, so the
# check fails quietly and nothing leaves the machine.
settings_folder="$profile/.local/share/Halvard Software/Kestrel Downloader"
mkdir -p "$settings_folder"
cat >"$settings_folder/settings.ini" <<EOF
[Updater]
FeedUrl=http://127.0.0.1:$port/update-feed.json
TimeoutMs=3000
EOF

export HOME="$profile"
export XDG_DATA_HOME="$profile/.local/share"
export XDG_CONFIG_HOME="$profile/.config"
export XDG_CACHE_HOME="$profile/.cache"
export XDG_STATE_HOME="$profile/.local/state"
export XDG_RUNTIME_DIR="$profile/runtime"
export KESTREL_YTDLP="$here/ytdlp-shim"
export KESTREL_DEMO_INFO_DIR="$run/info"

cat <<EOF
Sample video service: http://127.0.0.1:$port/media/ (pid $server_pid, $(( ${KESTREL_DEMO_THROTTLE:-1572864} / 1024 )) KiB/s)
Throw-away profile:   $profile
Click the video button and paste any YouTube address, for example
  https://www.youtube.com/watch?v=Kestr3lDemo
or one of these for a particular case:
  https://youtu.be/Kestr3lUni0   non-ASCII and Windows-hostile title
  https://youtu.be/Kestr3l404x   the video files are missing (HTTP 404)
  https://youtu.be/Kestr3lAprx   estimated sizes, or none
  https://youtu.be/unknown0000   no such video
Downloads go to $profile/Downloads/KestrelD
EOF

# Started in the background and waited for, so that Ctrl+C or a TERM reaches
# the trap at once; the trap then ends the application by its PID.
status=0
"$app" "$@" &
app_pid=$!
wait "$app_pid" || status=$?
app_pid=
exit "$status"
