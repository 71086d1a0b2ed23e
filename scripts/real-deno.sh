#!/usr/bin/env bash
# Fetches the official Deno binary into the build tree and prints its path.
# The npm registry carries it as @deno/linux-x64-glibc (a package holding just
# the executable); the launcher's tests use it to check, offline, that a real
# Deno's --version answer passes the launcher's floor and that the launcher
# names it to the tool.
#
#   scripts/real-deno.sh [BUILD_DIR]          BUILD_DIR defaults to build
#
# The package is unpacked into BUILD_DIR/real-deno, nothing is installed. A
# second call finds the binary and only checks that it answers;
# KESTREL_REAL_DENO_REFRESH=1 fetches the newest again.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build}
mkdir -p "$build"
folder=$(cd "$build" && pwd)/real-deno
deno="$folder/deno"

fail() {
    echo "real-deno.sh: $*" >&2
    exit 1
}

answers_version() {
    [ -x "$deno" ] && "$deno" --version 2>/dev/null | head -n 1 | grep -q '^deno '
}

if [ "${KESTREL_REAL_DENO_REFRESH:-0}" != 1 ] && answers_version; then
    echo "$deno"
    exit 0
fi

case $(uname -m) in
    x86_64) package=@deno/linux-x64-glibc ;;
    aarch64) package=@deno/linux-arm64-glibc ;;
    *) fail "no Deno package for $(uname -m)" ;;
esac
command -v npm >/dev/null || fail "npm is missing: install the Debian package npm"

rm -rf "$folder"
mkdir -p "$folder/pack"
# npm pack downloads the package's tarball without installing anything.
tarball=$(npm pack --silent --pack-destination "$folder/pack" "$package" 2>"$folder/pack/npm.log" | tail -n 1) \
    || { cat "$folder/pack/npm.log" >&2; fail "cannot fetch $package from the npm registry (no network?)"; }
tar -xzf "$folder/pack/$tarball" -C "$folder/pack" package/deno package/package.json \
    || fail "$tarball does not hold package/deno"
mv "$folder/pack/package/deno" "$deno"
chmod +x "$deno"
answers_version || fail "the fetched $deno does not answer --version"
echo "real-deno.sh: $("$deno" --version | head -n 1) from $package" >&2
rm -rf "$folder/pack"
echo "$deno"
