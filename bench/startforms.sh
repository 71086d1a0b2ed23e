#!/bin/bash
# Start-up of the downloader tool in each form at hand: how long `--version`
# takes, and a run that lists the formats of a stored information document
# (`--load-info-json`, what the launcher's information cache makes of the
# second and third run of every video). Medians of N runs, with the fastest
# and slowest.
#
#   bench/startforms.sh [runs]          (default 9)
#
# Forms measured when present:
#   python module    the yt-dlp command of the system's package (/usr/bin/yt-dlp)
#   zip application  the same package zipped with `python3 -m zipapp` and run by
#                    the system's Python: the shape of the release's zip form
#   one-file build   the release's yt-dlp_linux, named by KESTREL_YTDLP_ONEFILE
#   folder build     the release's yt-dlp_linux.zip unpacked, its program named
#                    by KESTREL_YTDLP_FOLDER
# The release builds are not downloaded here: the script says which forms it
# could not find.
set -u

runs=${1:-9}
python=/usr/bin/python3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A document with three formats on an address that is never fetched: listing
# the formats reads only the document.
cat >"$work/video.info.json" <<'EOF'
{"id": "Kestr3lDemo", "title": "Kestrel Test Clip", "duration": 65, "extractor": "youtube",
 "extractor_key": "Youtube", "webpage_url_basename": "watch", "_type": "video",
 "formats": [
  {"format_id": "140", "url": "http://127.0.0.1:9/140", "ext": "m4a", "protocol": "http",
   "vcodec": "none", "acodec": "mp4a.40.2", "abr": 129, "filesize": 1048576},
  {"format_id": "136", "url": "http://127.0.0.1:9/136", "ext": "mp4", "protocol": "http",
   "vcodec": "avc1.4d401f", "acodec": "none", "width": 1280, "height": 720, "filesize": 7340032},
  {"format_id": "137", "url": "http://127.0.0.1:9/137", "ext": "mp4", "protocol": "http",
   "vcodec": "avc1.640028", "acodec": "none", "width": 1920, "height": 1080, "filesize": 14680064}
 ]}
EOF

# Milliseconds of one run of the command given, or nothing when it failed.
time_once() {
    local started ended
    started=$(date +%s%N)
    "$@" >/dev/null 2>&1 || return 1
    ended=$(date +%s%N)
    echo $(( (ended - started) / 1000000 ))
}

# "median N ms (fastest F, slowest S)" of $runs runs, after one warm-up run.
measure() {
    local times=() t
    time_once "$@" >/dev/null || { echo "FAILED"; return; }
    for _ in $(seq "$runs"); do
        t=$(time_once "$@") || { echo "FAILED"; return; }
        times+=("$t")
    done
    printf '%s\n' "${times[@]}" | sort -n | awk -v n="$runs" '
        { t[NR] = $1 }
        END { printf "median %d ms (fastest %d, slowest %d)\n", t[int((n + 1) / 2)], t[1], t[n] }'
}

report_form() {
    local name=$1
    shift
    echo "$name: $("$@" --version 2>/dev/null | head -1)"
    echo "  --version:        $(measure "$@" --version)"
    echo "  --load-info-json: $(measure "$@" --load-info-json "$work/video.info.json" --list-formats --no-warnings)"
}

echo "runs per figure: $runs"

if [ -x /usr/bin/yt-dlp ]; then
    report_form "python module" /usr/bin/yt-dlp
    package=$("$python" -c 'import os, yt_dlp; print(os.path.dirname(yt_dlp.__file__))' 2>/dev/null)
    if [ -n "$package" ]; then
        mkdir -p "$work/zipapp"
        cp -r "$package" "$work/zipapp/yt_dlp"
        if "$python" -m zipapp "$work/zipapp" -m "yt_dlp:main" -p "$python" -o "$work/yt-dlp" 2>/dev/null; then
            report_form "zip application" "$work/yt-dlp"
        else
            echo "zip application: could not be made"
        fi
    fi
else
    echo "python module: not installed (apt-get install yt-dlp)"
fi

for form in "one-file build:KESTREL_YTDLP_ONEFILE" "folder build:KESTREL_YTDLP_FOLDER"; do
    name=${form%%:*}
    variable=${form#*:}
    program=${!variable:-}
    if [ -n "$program" ] && [ -x "$program" ]; then
        report_form "$name" "$program"
    else
        echo "$name: not at hand (set $variable to the release's program)"
    fi
done
