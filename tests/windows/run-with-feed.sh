#!/usr/bin/env bash
# Serves a local release feed for the Windows launcher test and runs the test
# under Wine (scripts/windows/ctest-wine.sh): the fake yt-dlp.exe as the
# tool's release, its SHA2-256SUMS signed with a throw-away key, a runtime
# archive holding the same program as deno.exe; and beside it the same
# release signed by another key, and releases damaged in one way each.
#
#   run-with-feed.sh TEST_EXE FAKE_TOOL_EXE [TEST ARGUMENTS...]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
test_exe=$1
fake_tool=$2
shift 2

work=$(mktemp -d)
pids=()
cleanup() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    gpgconf --homedir "$work/gnupg" --kill gpg-agent 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

export GNUPGHOME="$work/gnupg"
mkdir -m 700 "$GNUPGHOME"
gpg_quiet() { gpg --batch --yes --passphrase '' --pinentry-mode loopback "$@" >/dev/null 2>&1; }
gpg_quiet --quick-gen-key "Test Release Key <release@example.invalid>" ed25519 sign never
gpg_quiet --quick-gen-key "Stranger <stranger@example.invalid>" ed25519 sign never
gpg --batch --armor --export release@example.invalid >"$work/release-key.asc"

# A feed folder signed by the given key's owner.
make_feed() {
    local folder=$1 signer=$2
    mkdir -p "$folder"
    cp "$fake_tool" "$folder/yt-dlp.exe"
    (cd "$folder" && sha256sum yt-dlp.exe >SHA2-256SUMS)
    gpg_quiet --local-user "$signer" --output "$folder/SHA2-256SUMS.sig" --detach-sign "$folder/SHA2-256SUMS"
    mkdir -p "$work/zip"
    cp "$fake_tool" "$work/zip/deno.exe"
    python3 -c 'import sys, zipfile
with zipfile.ZipFile(sys.argv[1], "w", zipfile.ZIP_DEFLATED) as z:
    z.write(sys.argv[2], "deno.exe")' "$folder/deno-x86_64-pc-windows-msvc.zip" "$work/zip/deno.exe"
    (cd "$folder" && sha256sum deno-x86_64-pc-windows-msvc.zip >deno-x86_64-pc-windows-msvc.zip.sha256sum)
}

# Serves folder; its address goes into the variable named second.
serve() {
    local folder=$1
    python3 "$root/tests/launcher/feedserver.py" "$folder" "$folder.port" "$folder.log" </dev/null >/dev/null 2>&1 &
    pids+=($!)
    for _ in $(seq 100); do
        [ -f "$folder.port" ] && break
        sleep 0.1
    done
    printf -v "$2" 'http://127.0.0.1:%s/' "$(cat "$folder.port")"
}

make_feed "$work/release" release@example.invalid
make_feed "$work/stranger" stranger@example.invalid
serve "$work/release" release_feed
serve "$work/stranger" stranger_feed

# Releases damaged in one way each, served as KESTREL_TEST_FEED_<damage>.
damaged() {
    local damage=$1 folder="$work/$1"
    make_feed "$folder" release@example.invalid
    case "$damage" in
        asset) printf 'changed' >>"$folder/yt-dlp.exe" ;;
        sums) echo "0000000000000000000000000000000000000000000000000000000000000000  other.exe" >>"$folder/SHA2-256SUMS" ;;
        nosignature) rm "$folder/SHA2-256SUMS.sig" ;;
        noline)
            echo "0000000000000000000000000000000000000000000000000000000000000000  other.exe" >"$folder/SHA2-256SUMS"
            gpg_quiet --local-user release@example.invalid --output "$folder/SHA2-256SUMS.sig" \
                --detach-sign "$folder/SHA2-256SUMS"
            ;;
        truncated) echo "yt-dlp.exe truncate" >"$folder/.behaviour" ;;
        runtime) printf 'changed' >>"$folder/deno-x86_64-pc-windows-msvc.zip" ;;
        notaprogram)
            # A release whose program does not start: it is no Windows program.
            printf 'not a program' >"$folder/yt-dlp.exe"
            (cd "$folder" && sha256sum yt-dlp.exe >SHA2-256SUMS)
            gpg_quiet --local-user release@example.invalid --output "$folder/SHA2-256SUMS.sig" \
                --detach-sign "$folder/SHA2-256SUMS"
            ;;
    esac
    local address
    serve "$folder" address
    export "KESTREL_TEST_FEED_$damage=$address"
}
for damage in asset sums nosignature noline truncated runtime notaprogram; do
    damaged "$damage"
done
# Nothing listens on port 9 (discard) here.
export KESTREL_TEST_FEED_unreachable="http://127.0.0.1:9/"

export KESTREL_TEST_TOOL_FEED="$release_feed"
export KESTREL_TEST_RUNTIME_FEED="$release_feed"
export KESTREL_TEST_STRANGER_FEED="$stranger_feed"
export KESTREL_TEST_KEYRING="Z:${work//\//\\}\\release-key.asc"
export KESTREL_TEST_FEED_LOG="Z:${work//\//\\}\\release.log"

status=0
"$root/scripts/windows/ctest-wine.sh" "$test_exe" "$@" || status=$?
exit "$status"
