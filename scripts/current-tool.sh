#!/usr/bin/env bash
# Fetches the current release of yt-dlp, as Debian's unstable suite packages
# it, into the build tree, and prints the path of a yt-dlp that runs it with
# the system's /usr/bin/python3. The integration tests run against it as well
# as against the distribution's /usr/bin/yt-dlp: users run the current release.
#
#   scripts/current-tool.sh [BUILD_DIR]       BUILD_DIR defaults to build
#
# Everything goes under BUILD_DIR/current-tool: apt works there with a
# configuration of its own (its own sources list, state and cache), nothing is
# installed and the system's apt configuration is neither read nor changed.
# A second call finds the unpacked tool and only checks that it answers;
# KESTREL_CURRENT_TOOL_REFRESH=1 fetches the newest again.
#
# Besides the tool, the pure-Python modules it needs in versions newer than
# bookworm's are fetched too (its requests handler wants requests >= 2.32.2
# and urllib3 >= 2.0.2), so that it downloads through the same handler as the
# release builds. Its websockets handler stays off: unstable's websockets is
# built for a newer Python, and no test needs it.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build}
mkdir -p "$build"
folder=$(cd "$build" && pwd)/current-tool
tool="$folder/yt-dlp"
python=/usr/bin/python3
packages=(yt-dlp python3-requests python3-urllib3 python3-idna python3-chardet)

fail() {
    echo "current-tool.sh: $*" >&2
    exit 1
}

answers_version() {
    [ -x "$tool" ] && "$tool" --ignore-config --version >/dev/null 2>&1
}

if [ "${KESTREL_CURRENT_TOOL_REFRESH:-0}" != 1 ] && answers_version; then
    echo "$tool"
    exit 0
fi

[ -x "$python" ] || fail "$python is missing: install the Debian package python3"
for command in apt-get dpkg-deb; do
    command -v "$command" >/dev/null || fail "$command is missing: this script needs Debian's apt and dpkg"
done

# The mirror the system's own Debian entries name, so that a machine that
# reaches only its mirror fetches from it; the security archive is skipped.
system_mirror() {
    local sources=(/etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources)
    { grep -hoE '(https?://[^ ]+/debian)/?( |$)' "${sources[@]}" 2>/dev/null || true; } | tr -d ' ' | sed 's:/$::' | head -n 1
}
mirror=${KESTREL_DEBIAN_MIRROR:-$(system_mirror)}
mirror=${mirror:-http://deb.debian.org/debian}
keyring=/usr/share/keyrings/debian-archive-keyring.gpg
[ -r "$keyring" ] || fail "$keyring is missing: install the Debian package debian-archive-keyring"

apt_root="$folder/apt"
rm -rf "$apt_root"
mkdir -p "$apt_root"/etc/{apt.conf.d,preferences.d,sources.list.d,trusted.gpg.d} \
    "$apt_root"/state/lists/partial "$apt_root"/cache/archives/partial "$apt_root"/debs
: >"$apt_root/state/status"
echo "deb [signed-by=$keyring] $mirror unstable main" >"$apt_root/etc/sources.list"
# APT_CONFIG is read before anything under /etc/apt; with Dir::Etc here, the
# system's apt.conf.d, sources and preferences are never read.
cat >"$apt_root/apt.conf" <<EOF
Dir::Etc "$apt_root/etc";
Dir::State "$apt_root/state";
Dir::State::status "$apt_root/state/status";
Dir::Cache "$apt_root/cache";
Acquire::Languages "none";
APT::Architecture "amd64";
APT::Architectures { "amd64"; };
// Downloads land in folders that only the caller owns.
APT::Sandbox::User "root";
// A mirror frozen at a date serves a Release file whose Valid-Until has
// passed; its signature is still checked against Debian's keyring.
Acquire::Check-Valid-Until "false";
EOF
export APT_CONFIG="$apt_root/apt.conf"

if ! apt-get -qq update >"$apt_root/update.log" 2>&1 || grep -q '^[EW]:' "$apt_root/update.log"; then
    cat "$apt_root/update.log" >&2
    fail "cannot read the package list of Debian unstable from $mirror (no network? KESTREL_DEBIAN_MIRROR=URL picks another mirror)"
fi
(cd "$apt_root/debs" && apt-get -qq download "${packages[@]}") >"$apt_root/download.log" 2>&1 \
    || { cat "$apt_root/download.log" >&2; fail "cannot download ${packages[*]} from $mirror"; }

# Only packages without compiled code run on bookworm's Python unchanged.
unpacked="$folder/root"
rm -rf "$unpacked"
for deb in "$apt_root"/debs/*.deb; do
    [ "$(dpkg-deb -f "$deb" Architecture)" = all ] || fail "$(basename "$deb") is not architecture-independent"
    dpkg-deb -x "$deb" "$unpacked"
done
version=$(dpkg-deb -f "$apt_root"/debs/yt-dlp_*.deb Version)

# A Python script like Debian's own /usr/bin/yt-dlp, so that the process runs
# as "python3 PATH ARGS" as the distribution's tool does; the unpacked modules
# come before the system's (bookworm's yt_dlp among them).
modules="$unpacked/usr/lib/python3/dist-packages"
cat >"$tool.new" <<EOF
#!$python
# Debian unstable's yt-dlp $version, fetched by scripts/current-tool.sh.
import sys
sys.path.insert(0, "$modules")
from yt_dlp import main
sys.exit(main())
EOF
chmod +x "$tool.new"
mv "$tool.new" "$tool"

answers_version || fail "the unpacked yt-dlp $version does not answer --version: $("$tool" --ignore-config --version 2>&1 | tail -n 3)"
echo "current-tool.sh: yt-dlp $version from $mirror" >&2
echo "$tool"
