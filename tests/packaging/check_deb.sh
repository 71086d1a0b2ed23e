#!/usr/bin/env bash
# Builds the Debian package with CPack into a scratch folder, reads its
# control fields, unpacks it into a scratch root and starts the program from
# there through /usr/bin.
#
#   check_deb.sh <CPack configuration file> <package version> <build dir>
#                <application folder relative to the prefix> <system ffmpeg>
#                <desktop identifier>
set -euo pipefail
source "$(dirname "$0")/common.sh"

[ $# -eq 6 ] || fail "usage: $0 <CPack config> <version> <build dir> <application folder> <system ffmpeg> <desktop identifier>"
cpack_config=$1 version=$2 build_dir=$3 appdir_rel=$4 system_ffmpeg=$5 app_id=$6

for tool in cpack dpkg-deb dpkg; do
    command -v "$tool" >/dev/null 2>&1 || fail "$tool is not installed"
done
# The package's library dependencies are worked out by dpkg-shlibdeps.
command -v dpkg-shlibdeps >/dev/null 2>&1 || fail "dpkg-shlibdeps is not installed (Debian package dpkg-dev)"
[ -f "$cpack_config" ] || fail "no CPack configuration at $cpack_config"

scratch=$(mktemp -d "${TMPDIR:-/tmp}/kestrel-deb-test.XXXXXX")
trap 'rm -rf "$scratch"' EXIT

step "cpack -G DEB into $scratch/out"
run_logged "$scratch/cpack.log" cpack --config "$cpack_config" -G DEB -B "$scratch/out"

arch=$(dpkg --print-architecture)
deb="$scratch/out/${app_name}_${version}_${arch}.deb"
if [ ! -f "$deb" ]; then
    ls -l "$scratch/out" >&2 || true
    fail "cpack made no $(basename "$deb")"
fi

step "control fields of $(basename "$deb")"
dpkg-deb --info "$deb"
field() {
    dpkg-deb --field "$deb" "$1"
}
[ "$(field Package)" = "$app_name" ] || fail "Package is '$(field Package)'"
[ "$(field Version)" = "$version" ] || fail "Version is '$(field Version)', not $version"
[ "$(field Architecture)" = "$arch" ] || fail "Architecture is '$(field Architecture)', not $arch"
[ "$(field Section)" = "video" ] || fail "Section is '$(field Section)', not video"
[ -n "$(field Maintainer)" ] || fail "the package has no Maintainer"
[ -n "$(field Description)" ] || fail "the package has no Description"

# Package names only: "libqt6core6 (>= 6.4.2)" and "a | b" alternatives count
# by their names.
depends=" $(field Depends | tr ',|' '\n\n' | sed -E 's/\(.*\)//; s/^ +//; s/ +$//' | tr '\n' ' ') "
for needed in yt-dlp ffmpeg gpgv libcurl4 libarchive13 libqt6core6 libqt6gui6 libqt6widgets6 libqt6network6; do
    case "$depends" in
        *" $needed "*) ;;
        *) fail "Depends lacks $needed: $(field Depends)" ;;
    esac
done

# Installed files belong to root, whoever built the package.
step "file owners"
owners=$(dpkg-deb --fsys-tarfile "$deb" | tar -tvf - | awk '{print $2}' | sort -u)
[ "$owners" = "root/root" ] || fail "files in the package are owned by: $owners"

# The desktop's entries, read from the package's own file list.
step "desktop entries in $(basename "$deb")"
contents=$(dpkg-deb --contents "$deb" | awk '{print $NF}')
for entry in "./usr/share/applications/$app_id.desktop" "./usr/share/metainfo/$app_id.metainfo.xml"; do
    grep -qxF "$entry" <<<"$contents" || fail "$(basename "$deb") does not hold $entry"
done

root="$scratch/root"
step "dpkg -x into $root"
run_logged "$scratch/extract.log" dpkg -x "$deb" "$root"

check_layout "$root/usr" "$appdir_rel" "$system_ffmpeg" "$build_dir" "$app_id" "$version"
check_version_run "$root/usr/bin/$app_name" "$scratch"

echo "PASS: $(basename "$deb") holds a complete application that starts"
