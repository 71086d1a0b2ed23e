#!/bin/bash
# Start-up of the downloader tool in each form at hand: how long `--version`
# takes, and a run that lists the formats of a stored information document
# (`--load-info-json`, what the launcher's information cache makes of the
# second and third run of every video). Medians of N runs, with the fastest
# and slowest, with a warm page cache and with a cold one, and a table of
# all forms side by side at the end.
#
#   bench/startforms.sh [runs]          (default 9)
#
# Forms measured when present:
#   python module    the yt-dlp command of the system's package (/usr/bin/yt-dlp)
#   zip application  the same package zipped with `python3 -m zipapp` and run by
#                    the system's Python: the shape of the release's zip form
#   current module   the current tool as a Python module run by the system's
#                    Python, named by KESTREL_YTDLP_CURRENT
#   one-file build   a PyInstaller --onefile yt-dlp_linux, named by KESTREL_YTDLP_ONEFILE
#   folder build     a PyInstaller --onedir yt-dlp_linux, its program named
#                    by KESTREL_YTDLP_FOLDER
# bench/build-start-forms.sh makes the last three from Debian's packages and
# prints the three variables. Nothing is downloaded by this script: it says
# which forms it could not find.
#
# Warm: one run first, then N runs one after another, so that every file the
# form reads is in the page cache. Cold: before each of N runs, the form's own
# files are dropped from the page cache (posix_fadvise DONTNEED on each file:
# the program or its folder; for the Python forms the interpreter, its standard
# library and the packages' folders), so the run reads them from disk again.
# Pages another running process has mapped (the C library, a python3.11 that
# some other program is running) cannot be dropped that way and stay warm; the
# rest of the machine's page cache is left alone.
set -u

runs=${1:-9}
python=/usr/bin/python3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A document with three formats on an address that is never fetched: listing
# the formats reads only the document.
cat >"$work/video.info.json" <<'JSON'
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
JSON

# Drops the files under the paths given from the page cache. The interpreter
# that does it keeps its own program mapped while it runs, so python3.11
# itself is dropped afterwards by dd.
cat >"$work/evict.py" <<'PY'
import os, sys
for top in sys.argv[1:]:
    for folder, _, names in os.walk(top) if os.path.isdir(top) else [(os.path.dirname(top), [], [os.path.basename(top)])]:
        for name in names:
            path = os.path.join(folder, name)
            try:
                fd = os.open(path, os.O_RDONLY | os.O_NOFOLLOW)
            except OSError:
                continue
            try:
                os.posix_fadvise(fd, 0, 0, os.POSIX_FADV_DONTNEED)
            finally:
                os.close(fd)
PY
evict_paths=()
evict() {
    [ ${#evict_paths[@]} -gt 0 ] || return 0
    "$python" "$work/evict.py" "${evict_paths[@]}"
    dd if="$(readlink -f "$python")" iflag=nocache count=0 status=none 2>/dev/null || true
}

# Milliseconds of one run of the command given, or nothing when it failed.
time_once() {
    local started ended
    started=$(date +%s%N)
    "$@" >/dev/null 2>&1 || return 1
    ended=$(date +%s%N)
    echo $(( (ended - started) / 1000000 ))
}

# "median N ms (fastest F, slowest S)" of $runs runs; warm: after one warm-up
# run; cold: each run after evict.
measure() {
    local mode=$1 times=() t
    shift
    time_once "$@" >/dev/null || { echo "FAILED"; return; }
    for _ in $(seq "$runs"); do
        [ "$mode" = cold ] && evict
        t=$(time_once "$@") || { echo "FAILED"; return; }
        times+=("$t")
    done
    printf '%s\n' "${times[@]}" | sort -n | awk -v n="$runs" '
        { t[NR] = $1 }
        END { printf "median %d ms (fastest %d, slowest %d)\n", t[int((n + 1) / 2)], t[1], t[n] }'
}

table=()
short() { sed -E 's/^median ([0-9]+) ms \(fastest ([0-9]+), slowest ([0-9]+)\)$/\1 (\2-\3)/' <<<"$1"; }

# report_form NAME PROGRAM [ARGUMENTS...], with evict_paths set to the form's files.
report_form() {
    local name=$1 version vw lw vc lc
    shift
    version=$("$@" --version 2>/dev/null | head -1)
    echo "$name: $version"
    vw=$(measure warm "$@" --version)
    echo "  --version, warm:        $vw"
    lw=$(measure warm "$@" --load-info-json "$work/video.info.json" --list-formats --no-warnings)
    echo "  --load-info-json, warm: $lw"
    vc=$(measure cold "$@" --version)
    echo "  --version, cold:        $vc"
    lc=$(measure cold "$@" --load-info-json "$work/video.info.json" --list-formats --no-warnings)
    echo "  --load-info-json, cold: $lc"
    table+=("$(printf '%-16s %-11s %-15s %-15s %-15s %-15s' "$name" "$version" "$(short "$vw")" "$(short "$lw")" "$(short "$vc")" "$(short "$lc")")")
}

stdlib=$("$python" -c 'import sysconfig; print(sysconfig.get_paths()["stdlib"])')
echo "runs per figure: $runs; load average before: $(cut -d' ' -f1-3 /proc/loadavg)"

if [ -x /usr/bin/yt-dlp ]; then
    package=$("$python" -c 'import os, yt_dlp; print(os.path.dirname(yt_dlp.__file__))' 2>/dev/null)
    evict_paths=("$stdlib" /usr/lib/python3/dist-packages)
    report_form "python module" /usr/bin/yt-dlp
    if [ -n "$package" ]; then
        mkdir -p "$work/zipapp"
        cp -r "$package" "$work/zipapp/yt_dlp"
        if "$python" -m zipapp "$work/zipapp" -m "yt_dlp:main" -p "$python" -o "$work/yt-dlp" 2>/dev/null; then
            evict_paths=("$stdlib" /usr/lib/python3/dist-packages "$work/yt-dlp")
            report_form "zip application" "$work/yt-dlp"
        else
            echo "zip application: could not be made"
        fi
    fi
else
    echo "python module: not installed (apt-get install yt-dlp)"
fi

made_by="bench/build-start-forms.sh makes it"
for form in "current module:KESTREL_YTDLP_CURRENT" "one-file build:KESTREL_YTDLP_ONEFILE" "folder build:KESTREL_YTDLP_FOLDER"; do
    name=${form%%:*}
    variable=${form#*:}
    program=${!variable:-}
    if [ -n "$program" ] && [ -x "$program" ]; then
        case $variable in
            KESTREL_YTDLP_CURRENT)
                site=$(sed -n 's/^sys.path.insert(0, "\(.*\)")$/\1/p' "$program")
                evict_paths=("$stdlib" /usr/lib/python3/dist-packages ${site:+"$site"}) ;;
            KESTREL_YTDLP_ONEFILE) evict_paths=("$program") ;;
            KESTREL_YTDLP_FOLDER) evict_paths=("$(dirname "$program")") ;;
        esac
        report_form "$name" "$program"
    else
        echo "$name: not at hand (set $variable; $made_by)"
        table+=("$(printf '%-16s %s' "$name" "not at hand")")
    fi
done

echo
echo "median ms of $runs runs (fastest-slowest); load average after: $(cut -d' ' -f1-3 /proc/loadavg)"
printf '%-16s %-11s %-15s %-15s %-15s %-15s\n' "form" "version" "version, warm" "listing, warm" "version, cold" "listing, cold"
printf '%s\n' "${table[@]}"
