#!/bin/bash
# Start-up of the downloader tool in each form at hand: how long `--version`
# takes, and a run that lists the formats of a stored information document
# (`--load-info-json`, what the launcher's information cache makes of the
# second and third run of every video). Medians of N runs, with the fastest
# and slowest, with a warm page cache and with a cold one, the forms taking
# turns within each round; a table of all forms side by side at the end. Exits
# non-zero when a form at hand fails to run.
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

# Drops the files of form $1 (its evict list, one path a line) from the page cache.
evict() {
    local paths=()
    mapfile -t paths <<<"${form_evict[$1]}"
    "$python" "$work/evict.py" "${paths[@]}"
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

# The forms: name, program, files to drop for a cold run.
form_name=()
form_program=()
form_evict=()
add_form() { form_name+=("$1"); form_program+=("$2"); form_evict+=("$3"); }

stdlib=$("$python" -c 'import sysconfig; print(sysconfig.get_paths()["stdlib"])')
echo "runs per figure: $runs; load average before: $(cut -d' ' -f1-3 /proc/loadavg)"

missing=()
if [ -x /usr/bin/yt-dlp ]; then
    add_form "python module" /usr/bin/yt-dlp "$stdlib"$'\n'/usr/lib/python3/dist-packages
    package=$("$python" -c 'import os, yt_dlp; print(os.path.dirname(yt_dlp.__file__))' 2>/dev/null)
    if [ -n "$package" ]; then
        mkdir -p "$work/zipapp"
        cp -r "$package" "$work/zipapp/yt_dlp"
        if "$python" -m zipapp "$work/zipapp" -m "yt_dlp:main" -p "$python" -o "$work/yt-dlp" 2>/dev/null; then
            add_form "zip application" "$work/yt-dlp" "$stdlib"$'\n'/usr/lib/python3/dist-packages$'\n'"$work/yt-dlp"
        else
            missing+=("zip application: could not be made")
        fi
    fi
else
    missing+=("python module: not installed (apt-get install yt-dlp)")
fi

for form in "current module:KESTREL_YTDLP_CURRENT" "one-file build:KESTREL_YTDLP_ONEFILE" "folder build:KESTREL_YTDLP_FOLDER"; do
    name=${form%%:*}
    variable=${form#*:}
    program=${!variable:-}
    if [ -n "$program" ] && [ -x "$program" ]; then
        case $variable in
            KESTREL_YTDLP_CURRENT)
                site=$(sed -n 's/^sys.path.insert(0, "\(.*\)")$/\1/p' "$program")
                add_form "$name" "$program" "$stdlib"$'\n'/usr/lib/python3/dist-packages${site:+$'\n'"$site"} ;;
            KESTREL_YTDLP_ONEFILE) add_form "$name" "$program" "$program" ;;
            KESTREL_YTDLP_FOLDER) add_form "$name" "$program" "$(dirname "$program")" ;;
        esac
    else
        missing+=("$name: not at hand (set $variable; bench/build-start-forms.sh makes it)")
    fi
done

# One figure for every form: a first run of each, then $runs rounds in which
# the forms take turns, so that a busy moment of the machine falls on all of
# them alike. Cold: the form's files are dropped before each of its runs.
# Sets result[i] to "median fastest slowest", or "FAILED".
measure_all() {
    local mode=$1 i r t
    shift
    local times=()
    result=()
    for i in "${!form_name[@]}"; do
        times[i]=""
        result[i]=""
        time_once "${form_program[i]}" "$@" >/dev/null || result[i]=FAILED
    done
    for r in $(seq "$runs"); do
        for i in "${!form_name[@]}"; do
            [ "${result[i]}" = FAILED ] && continue
            [ "$mode" = cold ] && evict "$i"
            if t=$(time_once "${form_program[i]}" "$@"); then
                times[i]+="$t "
            else
                result[i]=FAILED
            fi
        done
    done
    for i in "${!form_name[@]}"; do
        [ "${result[i]}" = FAILED ] && continue
        result[i]=$(tr ' ' '\n' <<<"${times[i]}" | grep . | sort -n | awk -v n="$runs" '
            { t[NR] = $1 } END { printf "%d %d %d", t[int((n + 1) / 2)], t[1], t[n] }')
    done
}

# "median N ms (fastest F, slowest S)" from "N F S".
long() { [ "$1" = FAILED ] && echo FAILED || { set -- $1; echo "median $1 ms (fastest $2, slowest $3)"; }; }
short() { [ "$1" = FAILED ] && echo FAILED || { set -- $1; echo "$1 ($2-$3)"; }; }

listing=(--load-info-json "$work/video.info.json" --list-formats --no-warnings)
version=()
for i in "${!form_name[@]}"; do
    version[i]=$("${form_program[i]}" --version 2>/dev/null | head -1)
done
measure_all warm --version;    version_warm=("${result[@]}")
measure_all warm "${listing[@]}"; listing_warm=("${result[@]}")
measure_all cold --version;    version_cold=("${result[@]}")
measure_all cold "${listing[@]}"; listing_cold=("${result[@]}")

for i in "${!form_name[@]}"; do
    echo "${form_name[i]}: ${version[i]}"
    echo "  --version, warm:        $(long "${version_warm[i]}")"
    echo "  --load-info-json, warm: $(long "${listing_warm[i]}")"
    echo "  --version, cold:        $(long "${version_cold[i]}")"
    echo "  --load-info-json, cold: $(long "${listing_cold[i]}")"
done
[ ${#missing[@]} -eq 0 ] || printf '%s\n' "${missing[@]}"

echo
echo "median ms of $runs runs (fastest-slowest), the forms taking turns; load average after: $(cut -d' ' -f1-3 /proc/loadavg)"
printf '%-16s %-11s %-15s %-15s %-15s %-15s\n' "form" "version" "version, warm" "listing, warm" "version, cold" "listing, cold"
for i in "${!form_name[@]}"; do
    printf '%-16s %-11s %-15s %-15s %-15s %-15s\n' "${form_name[i]}" "${version[i]}" "$(short "${version_warm[i]}")" \
        "$(short "${listing_warm[i]}")" "$(short "${version_cold[i]}")" "$(short "${listing_cold[i]}")"
done
for line in "${missing[@]}"; do
    printf '%-16s %s\n' "${line%%:*}" "${line#*: }"
done
failed=0
for r in "${version_warm[@]}" "${listing_warm[@]}" "${version_cold[@]}" "${listing_cold[@]}"; do
    [ "$r" = FAILED ] && failed=1
done
exit $failed
