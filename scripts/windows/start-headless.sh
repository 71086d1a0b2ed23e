#!/usr/bin/env bash
# Starts the Windows program PROGRAM headless under Wine in the prefix
# WINEPREFIX names and waits, up to a minute, until it has written its
# start-up lines into its log in the local application data folder; then
# stops everything in the prefix. Exit code 1 when the lines never came.
# Wine does not pass QT_* variables on, so the platform is given on the
# command line.
#
#   WINEPREFIX=... start-headless.sh PROGRAM
set -euo pipefail
program=$1
log="$WINEPREFIX/drive_c/users/$(id -un)/AppData/Local/Halvard Software/Kestrel Downloader/kestrel-downloader.log"

WINEDEBUG=-all timeout 60 wine "$program" -platform offscreen >/dev/null 2>&1 &
for _ in $(seq 120); do
    if grep -qs "OK: output dir" "$log"; then
        break
    fi
    sleep 0.5
done
wineserver -k 2>/dev/null || true
wait || true
if ! grep -qs "OK: output dir" "$log"; then
    echo "start-headless.sh: $program did not start under Wine (no start-up lines in $log)" >&2
    exit 1
fi
