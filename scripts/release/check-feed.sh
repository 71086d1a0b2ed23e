#!/usr/bin/env bash
# Checks a release feed and its detached signature (FEED.sig) the way the
# updater does: gpgv with only the release key the plug-in ships as its
# keyring, judged by its GOODSIG and VALIDSIG status lines and exit code.
#
#   scripts/release/check-feed.sh path/to/feed.json [path/to/feed.json.sig]
set -euo pipefail

feed=${1:?usage: check-feed.sh FEED [SIGNATURE]}
signature=${2:-$feed.sig}
repository=$(cd "$(dirname "$0")/../.." && pwd)
public_key="$repository/plugin-libs/Updater/keys/kestrel-release-key.asc"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# gpgv reads binary keyrings only.
gpg --homedir "$work" --batch --quiet --dearmor <"$public_key" >"$work/keyring.gpg"

status=0
/usr/bin/gpgv --homedir "$work/no-home" --status-fd 1 --keyring "$work/keyring.gpg" \
    "$signature" "$feed" >"$work/status" 2>"$work/errors" || status=$?
if [ "$status" -eq 0 ] && grep -q '^\[GNUPG:\] GOODSIG ' "$work/status" \
    && grep -q '^\[GNUPG:\] VALIDSIG ' "$work/status"; then
    echo "check-feed.sh: $feed is signed by the release key"
    exit 0
fi
cat "$work/errors" >&2
echo "check-feed.sh: $feed is NOT signed by the release key; do not publish it" >&2
exit 1
