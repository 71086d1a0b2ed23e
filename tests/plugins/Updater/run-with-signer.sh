#!/usr/bin/env bash
# Runs one of the updater's test programs under Wine with a signer for its
# test feeds on the build machine (signer.py): a Wine prefix has no gpg to
# make and use throw-away keys. The program finds the signer through
# KESTREL_TEST_SIGNER.
#
#   run-with-signer.sh TEST_EXE [TEST ARGUMENTS...]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../../.." && pwd)

work=$(mktemp -d)
signer=
cleanup() {
    if [ -n "$signer" ]; then kill "$signer" 2>/dev/null || true; fi
    gpgconf --homedir "$work/gnupg" --kill gpg-agent 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

python3 "$here/signer.py" "$work/gnupg" "$work/port" </dev/null >/dev/null 2>"$work/signer.log" &
signer=$!
for _ in $(seq 300); do
    [ -f "$work/port" ] && break
    if ! kill -0 "$signer" 2>/dev/null; then
        cat "$work/signer.log" >&2
        exit 1
    fi
    sleep 0.1
done
KESTREL_TEST_SIGNER="http://127.0.0.1:$(cat "$work/port")/"
export KESTREL_TEST_SIGNER
"$root/scripts/windows/ctest-wine.sh" "$@"
