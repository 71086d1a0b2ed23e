#!/usr/bin/env bash
# The first video on a new installation: how long until the managed tool is
# ready, and how long from Enter to the format list, with the tool's release
# (35 MB) and Deno's (45 MB) coming from a local feed at 2 MB/s, an ordinary
# line. Measured twice with the built launcher:
#
#   before  nothing happens until the user's first video: its title run
#           installs the copies behind the busy page;
#   after   the application's start-up check starts the background install
#           ("kestreldl2 --update --background") with the window.
#
# The user presses Enter USER_SECONDS after the start (default 10: finding
# and pasting an address). Enter to formats is the title run and the listing
# run, as the window makes them. The stand-in release costs 100 ms a start
# and nothing else, so the figures are the install's and the waits'.
#
#   bench/firstvideo.sh [LAUNCHER] [USER_SECONDS]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/.." && pwd)
launcher=${1:-$root/build/src/kestreldl2}
user_seconds=${2:-10}

work=$(mktemp -d)
server=
cleanup() {
    if [ -n "$server" ]; then kill "$server" 2>/dev/null || true; fi
    gpgconf --homedir "$work/gnupg" --kill gpg-agent 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

now_ms() { date +%s%3N; }

# A user's machine without a JavaScript runtime the tool accepts: only what
# the stand-ins need is on PATH.
mkdir -p "$work/bin"
for program in bash sh sleep cat; do ln -s "$(command -v "$program")" "$work/bin/$program"; done

# The feed: a stand-in release of the tool's size and a Deno zip of Deno's,
# signed with a throw-away key.
feed=$work/feed
mkdir -p "$feed" "$work/gnupg"
chmod 700 "$work/gnupg"
gpg_quiet() { gpg --homedir "$work/gnupg" --batch --yes --passphrase '' --pinentry-mode loopback "$@" >/dev/null 2>&1; }
gpg_quiet --quick-gen-key "Bench Release <bench@example.invalid>" ed25519 sign never
gpg --homedir "$work/gnupg" --batch --armor --export bench@example.invalid >"$work/key.asc"
{
    cat <<'TOOL'
#!/bin/bash
sleep 0.1
for argument in "$@"; do [ "$argument" = --version ] && { echo 2026.11.20; exit 0; }; done
for argument in "$@"; do
    case "$argument" in
        --get-title) printf 'First Video\n3:05\n'; exit 0 ;;
        --list-formats) printf 'ID  EXT  RESOLUTION\n---\n18  mp4  640x360\n'; exit 0 ;;
    esac
done
exit 0
TOOL
    head -c 25800000 /dev/urandom | base64 -w 76 | sed 's/^/# /'
} >"$feed/yt-dlp_linux"
{
    printf '#!/bin/sh\necho "deno 2.5.6 (stable, release, x86_64-unknown-linux-gnu)"\nexit 0\n'
    head -c 45000000 /dev/urandom
} >"$work/deno"
(cd "$work" && python3 -c 'import sys, zipfile
with zipfile.ZipFile(sys.argv[1], "w", zipfile.ZIP_STORED) as z:
    z.write("deno", "deno")' "$feed/deno-x86_64-unknown-linux-gnu.zip")
(cd "$feed" && sha256sum yt-dlp_linux >SHA2-256SUMS \
    && sha256sum deno-x86_64-unknown-linux-gnu.zip >deno-x86_64-unknown-linux-gnu.zip.sha256sum)
gpg_quiet --homedir "$work/gnupg" --local-user bench@example.invalid --output "$feed/SHA2-256SUMS.sig" \
    --detach-sign "$feed/SHA2-256SUMS"
printf 'yt-dlp_linux throttled\ndeno-x86_64-unknown-linux-gnu.zip throttled\n' >"$feed/.behaviour"
python3 "$root/tests/launcher/feedserver.py" "$feed" "$work/port" "$work/feed.log" </dev/null >/dev/null 2>&1 &
server=$!
for _ in $(seq 100); do [ -f "$work/port" ] && break; sleep 0.1; done
address="http://127.0.0.1:$(cat "$work/port")/"

run_launcher() {
    env -i HOME="$work/home" PATH="$work/bin" KESTREL_TOOL_FEED="$address" KESTREL_JS_RUNTIME_FEED="$address" \
        KESTREL_TOOL_KEYRING="$work/key.asc" "$data/kestreldl2" "$@" >/dev/null 2>&1
}

# Prints "<ms to a ready tool> <ms from Enter to formats> <how the title run
# ended>": a title run whose wait for the install runs out (30 s) goes on
# with the system's yt-dlp, of which this PATH has none.
measure() {
    local background=$1
    data=$work/data-$background
    rm -rf "$data" && mkdir -p "$data" "$work/home"
    cp "$launcher" "$data/kestreldl2"
    local start ready=0 installer=
    start=$(now_ms)
    if [ "$background" = after ]; then
        run_launcher --update --background &
        installer=$!
    fi
    sleep "$user_seconds"
    local enter listed
    enter=$(now_ms)
    local title=0
    run_launcher --get-title --get-duration --no-warnings kestrel || title=$?
    run_launcher --list-formats --no-warnings kestrel
    listed=$(now_ms)
    if [ -n "$installer" ]; then wait "$installer" || true; fi
    # Ready once both copies are in place: the runtime is installed last.
    ready=$(( $(date -r "$data/deno" +%s%3N) - start ))
    echo "$ready $(( listed - enter )) $([ "$title" = 0 ] && echo ok || echo "failed($title)")"
}

echo "first video, feed at 2 MB/s (tool 35 MB, Deno 45 MB), Enter ${user_seconds} s after the start"
read -r before_ready before_formats before_title < <(measure before)
read -r after_ready after_formats after_title < <(measure after)
printf '%-8s %22s %22s %12s\n' "" "start to ready tool" "Enter to formats" "title run"
printf '%-8s %19s ms %19s ms %12s\n' before "$before_ready" "$before_formats" "$before_title"
printf '%-8s %19s ms %19s ms %12s\n' after "$after_ready" "$after_formats" "$after_title"
