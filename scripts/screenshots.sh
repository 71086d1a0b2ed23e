#!/usr/bin/env bash
# Photographs every page of the main window under a virtual X server into the
# given folder (default: build/screenshots), in a throw-away home folder.
set -euo pipefail
cd "$(dirname "$0")/.."
out=$(realpath -m "${1:-build/screenshots}")

for package in xvfb xauth imagemagick; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed" || missing="${missing:-} $package"
done
if [ -n "${missing:-}" ]; then
    apt-get install -y -qq --no-install-recommends $missing
fi

scripts/build.sh -DKESTREL_BUILD_TESTS=ON >/dev/null
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
rm -rf "$out"
HOME="$home" XDG_DATA_HOME="$home/.local/share" XDG_CONFIG_HOME="$home/.config" QT_QPA_PLATFORM=xcb \
    xvfb-run -a -s "-screen 0 1280x1024x24" build/tools/screenshots/kestrel-screenshots "$out"
echo "Screenshots in $out"
