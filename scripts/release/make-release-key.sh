#!/usr/bin/env bash
# Makes the application's release key: an Ed25519 signing key in a private
# GnuPG home that never enters the repository, and exports its public half
# into plugin-libs/Updater/keys/, where the Updater plug-in embeds it.
#
#   scripts/release/make-release-key.sh PRIVATE_GNUPGHOME
#
# gpg asks for the key's passphrase; with RELEASE_KEY_PASSPHRASE_FILE set it
# reads it from that file instead. An existing release key in the home is
# never replaced: a new key means every installed copy must be updated first.
set -euo pipefail

home=${1:?usage: make-release-key.sh PRIVATE_GNUPGHOME}
repository=$(cd "$(dirname "$0")/../.." && pwd)
public_key="$repository/plugin-libs/Updater/keys/kestrel-release-key.asc"
user_id="Kestrel Downloader Release <release@kestrel-downloader.example>"

umask 077
mkdir -p "$home"
chmod 700 "$home"
case "$(cd "$home" && pwd)/" in
    "$repository"/*)
        echo "make-release-key.sh: $home lies inside the repository; the private key must not" >&2
        exit 1
        ;;
esac

if gpg --homedir "$home" --batch --list-secret-keys "$user_id" >/dev/null 2>&1; then
    echo "make-release-key.sh: $home already holds a release key; it is kept" >&2
    exit 1
fi

passphrase_options=()
if [ -n "${RELEASE_KEY_PASSPHRASE_FILE:-}" ]; then
    passphrase_options=(--batch --pinentry-mode loopback --passphrase-file "$RELEASE_KEY_PASSPHRASE_FILE")
fi
gpg --homedir "$home" "${passphrase_options[@]}" --quick-gen-key "$user_id" ed25519 sign 10y

fingerprint=$(gpg --homedir "$home" --batch --with-colons --list-keys "$user_id" | awk -F: '$1 == "fpr" { print $10; exit }')
umask 022
mkdir -p "$(dirname "$public_key")"
gpg --homedir "$home" --batch --armor --export "$fingerprint" >"$public_key"
echo "Public key written to $public_key"
echo "Fingerprint: $fingerprint (put it in plugin-libs/Updater/README.md)"
