#!/usr/bin/env bash
# Signs a release feed with the application's release key: writes the
# detached signature FEED.sig beside it, then checks the pair against the
# public key the plug-in ships, so a signature by the wrong key is caught
# before it is published.
#
#   scripts/release/sign-feed.sh PRIVATE_GNUPGHOME path/to/feed.json
#
# Publish feed.json and feed.json.sig together; the updater refuses a feed
# whose signature is missing or covers other bytes.
set -euo pipefail

home=${1:?usage: sign-feed.sh PRIVATE_GNUPGHOME FEED}
feed=${2:?usage: sign-feed.sh PRIVATE_GNUPGHOME FEED}
here=$(cd "$(dirname "$0")" && pwd)
user_id="release@kestrel-downloader.example"

passphrase_options=()
if [ -n "${RELEASE_KEY_PASSPHRASE_FILE:-}" ]; then
    passphrase_options=(--batch --pinentry-mode loopback --passphrase-file "$RELEASE_KEY_PASSPHRASE_FILE")
fi
gpg --homedir "$home" "${passphrase_options[@]}" --yes --local-user "$user_id" \
    --output "$feed.sig" --detach-sign "$feed"
"$here/check-feed.sh" "$feed"
