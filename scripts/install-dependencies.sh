#!/usr/bin/env bash
# Installs the Debian packages the project needs to build and test, skipping
# those already present. Runs apt-get as root, or through sudo.
#
#   scripts/install-dependencies.sh              the project's packages
#   scripts/install-dependencies.sh PACKAGE...   these packages instead
set -euo pipefail

packages=(
    cmake ninja-build g++ pkg-config
    qt6-base-dev qt6-base-dev-tools libgl-dev
    qt6-l10n-tools qt6-translations-l10n
    fonts-dejavu-core
    yt-dlp ffmpeg
    dpkg-dev desktop-file-utils appstream
    clang libclang-rt-14-dev
    libcurl4-openssl-dev libarchive-dev libssl-dev gpgv gnupg python3
)

if [ $# -gt 0 ]; then
    packages=("$@")
fi

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed"; then
        missing+=("$package")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
"${as_root[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
