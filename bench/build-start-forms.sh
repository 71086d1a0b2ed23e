#!/bin/bash
# Makes the downloader tool's start forms that bench/startforms.sh compares,
# from Debian packages, on this machine:
#
#   one-file build   yt-dlp_linux made by PyInstaller with --onefile
#   folder build     yt-dlp_linux/ made by PyInstaller with --onedir
#   current module   the same tool as a Python module run by the system's
#                    python3 (what Debian's own yt-dlp command does)
#
#   bench/build-start-forms.sh [folder]     (default: build/start-forms)
#
# The tool is the current release as Debian's unstable suite packages it
# (binary package yt-dlp, plain Python files), with the pure-Python libraries
# the release bundles (requests, urllib3, websockets, certifi, mutagen, idna,
# charset-normalizer), also from unstable. PyInstaller is built from the
# unstable suite's source package: its bootloader is compiled here with its
# own waf script, because the bootloader of the binary package needs a newer C
# library than this system's; PyInstaller then runs from its source tree with
# the system's /usr/bin/python3. Everything from unstable comes through a
# private apt configuration in FOLDER/apt (own sources list, state and cache):
# nothing is added to the system's sources and nothing from unstable is
# installed. From the system (bookworm) come python3 itself, python3-altgraph,
# python3-packaging and python3-setuptools (PyInstaller's own needs), and the
# two compiled libraries the release also bundles, python3-brotli and
# python3-pycryptodome (see "What differs from the release" below).
#
# Prints the three programs at the end; bench/startforms.sh takes them through
# KESTREL_YTDLP_ONEFILE, KESTREL_YTDLP_FOLDER and KESTREL_YTDLP_CURRENT.
#
# How PyInstaller is run: the tool's README builds with `python -m
# bundle.pyinstaller`, a wrapper that passes PyInstaller's own options such as
# --onefile or --onedir, after `devscripts/make_lazy_extractors.py` (Debian's
# package already ships the lazy extractors it makes). That wrapper is only in
# the tool's source tree, which the mirror here does not serve, so PyInstaller
# is run directly, with the release's program name (yt-dlp_linux), --noconfirm,
# the hook folder the package ships (yt_dlp/__pyinstaller, which names the
# hidden imports and the data to collect) and the entry point
# yt_dlp/__main__.py.
#
# What differs from the release: the tool's package metadata names brotli
# (pinned at 1.2.1), pycryptodomex and yt-dlp-ejs for its default set, and its
# hook also collects curl_cffi and secretstorage when installed. Here brotli
# (1.0.9) and Cryptodome (3.11.0; bookworm's python3-pycryptodome ships that
# namespace too) come from bookworm, and the other three are left out: Debian
# has no yt-dlp-ejs, and unstable's compiled packages are built for its own
# Python (3.14 and 3.15), not for this system's 3.11. The builds carry
# bookworm's Python 3.11.2 (its shared library), not the release's own.
set -eu

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source_dir="$(dirname "$here")"
out="${1:-$source_dir/build/start-forms}"
mkdir -p "$out"
out="$(cd "$out" && pwd)"
python=/usr/bin/python3
nice="nice -n 10"

say() { echo "== $*"; }

# --- the system's part (bookworm) -------------------------------------------
missing=()
for package in python3-altgraph python3-packaging python3-setuptools python3-dev zlib1g-dev build-essential \
               python3-brotli python3-pycryptodome; do
    dpkg-query -W -f='${Status}\n' "$package" 2>/dev/null | grep -q '^install ok installed' || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    if [ "$(id -u)" = 0 ]; then
        say "installing from the system's suite: ${missing[*]}"
        $nice apt-get install -y "${missing[@]}"
    else
        echo "missing system packages: ${missing[*]} (apt-get install them)" >&2
        exit 2
    fi
fi

# --- private apt configuration for the unstable suite -----------------------
apt_dir="$out/apt"
mkdir -p "$apt_dir"/etc/{apt.conf.d,preferences.d,sources.list.d,trusted.gpg.d} \
         "$apt_dir"/state/lists/partial "$apt_dir"/cache/archives/partial
touch "$apt_dir/state/status"
# The same mirror host as the system's sources.
mirror=$(grep -rhoE 'https?://[^ ]*/debian/?( |$)' /etc/apt/sources.list /etc/apt/sources.list.d/*.sources \
             /etc/apt/sources.list.d/*.list 2>/dev/null | head -1 | tr -d ' ')
mirror=${mirror:-http://deb.debian.org/debian}
keyring=/usr/share/keyrings/debian-archive-keyring.gpg
cat >"$apt_dir/etc/sources.list" <<EOF
deb [signed-by=$keyring] ${mirror%/} unstable main
deb-src [signed-by=$keyring] ${mirror%/} unstable main
EOF
apt_options=(
    -o "Dir::Etc=$apt_dir/etc"
    -o "Dir::Etc::SourceList=$apt_dir/etc/sources.list"
    -o "Dir::Etc::SourceParts=$apt_dir/etc/sources.list.d"
    -o "Dir::Etc::Parts=$apt_dir/etc/apt.conf.d"
    -o "Dir::Etc::Preferences=$apt_dir/etc/preferences"
    -o "Dir::Etc::PreferencesParts=$apt_dir/etc/preferences.d"
    -o "Dir::Etc::Trusted=$apt_dir/etc/trusted.gpg"
    -o "Dir::Etc::TrustedParts=$apt_dir/etc/trusted.gpg.d"
    -o "Dir::State=$apt_dir/state"
    -o "Dir::State::status=$apt_dir/state/status"
    -o "Dir::Cache=$apt_dir/cache"
    -o "APT::Architecture=$(dpkg --print-architecture)"
    -o "APT::Sandbox::User=root"
)
say "private apt: updating the unstable suite's lists ($mirror)"
$nice apt-get "${apt_options[@]}" update >"$out/apt-update.log" 2>&1 || { cat "$out/apt-update.log"; exit 2; }

fetched="$out/fetched"
mkdir -p "$fetched"

# --- PyInstaller from its source package -------------------------------------
pyinstaller_version=$(apt-cache "${apt_options[@]}" showsrc pyinstaller | awk '/^Version:/ { print $2; exit }')
say "PyInstaller source package $pyinstaller_version"
# apt checks every file it fetches against the hashes of the signed Sources
# index. When the whole source package comes, dpkg-source unpacks it with
# Debian's patches; when the mirror serves only the upstream tarball (as the
# one this was written on does: the .dsc and .debian.tar.xz answer 404), the
# upstream tarball is unpacked as it is: Debian's patches concern its own
# packaging and tests, and the bootloader and PyInstaller proper build from
# the upstream source.
(cd "$fetched" && $nice apt-get "${apt_options[@]}" source --download-only pyinstaller) \
    >"$out/pyinstaller-source.log" 2>&1 || true
upstream=${pyinstaller_version%-*}
upstream=${upstream#*:}
orig=$(ls "$fetched"/pyinstaller_"$upstream".orig.tar.* 2>/dev/null | head -1 || true)
dsc="$fetched/pyinstaller_${pyinstaller_version#*:}.dsc"
pyinstaller_tree="$out/pyinstaller"
if [ ! -f "$pyinstaller_tree/PyInstaller/__init__.py" ]; then
    rm -rf "$pyinstaller_tree" "$out/pyinstaller.unpack"
    if [ -f "$dsc" ]; then
        dpkg-source -x "$dsc" "$pyinstaller_tree"
    elif [ -n "$orig" ]; then
        want=$(apt-cache "${apt_options[@]}" showsrc pyinstaller |
               awk -v f="$(basename "$orig")" '/^Checksums-Sha256:/ { s = 1; next } /^[^ ]/ { s = 0 } s && $3 == f { print $1; exit }')
        have=$(sha256sum "$orig" | cut -d' ' -f1)
        [ -n "$want" ] && [ "$want" = "$have" ] || { echo "PyInstaller tarball: SHA-256 $have, index says '$want'" >&2; exit 2; }
        echo "the source package's .dsc could not be fetched (see $out/pyinstaller-source.log);"
        echo "unpacking the upstream tarball, SHA-256 checked against the signed Sources index"
        mkdir -p "$out/pyinstaller.unpack"
        tar -xf "$orig" -C "$out/pyinstaller.unpack"
        mv "$out/pyinstaller.unpack"/* "$pyinstaller_tree"
        rmdir "$out/pyinstaller.unpack"
    else
        cat "$out/pyinstaller-source.log" >&2
        echo "PyInstaller's source could not be fetched" >&2
        exit 2
    fi
fi

bootloader=$(ls "$pyinstaller_tree"/PyInstaller/bootloader/Linux-*/run 2>/dev/null | head -1 || true)
if [ -z "$bootloader" ]; then
    say "building PyInstaller's bootloader (waf)"
    (cd "$pyinstaller_tree/bootloader" && $nice "$python" ./waf distclean all) >"$out/bootloader.log" 2>&1 ||
        { tail -40 "$out/bootloader.log"; echo "bootloader build FAILED (log: $out/bootloader.log)" >&2; exit 2; }
    bootloader=$(ls "$pyinstaller_tree"/PyInstaller/bootloader/Linux-*/run | head -1)
fi
echo "bootloader: $bootloader"

# --- the tool and its libraries (binary packages, unpacked) -------------------
packages=(yt-dlp pyinstaller-hooks-contrib python3-requests python3-urllib3 python3-websockets python3-certifi
          python3-mutagen python3-idna python3-charset-normalizer)
root="$out/unstable-root"
site="$root/usr/lib/python3/dist-packages"
say "fetching from unstable: ${packages[*]}"
(cd "$fetched" && $nice apt-get "${apt_options[@]}" download "${packages[@]}") >"$out/download.log" 2>&1 ||
    { cat "$out/download.log"; exit 2; }
rm -rf "$root"
mkdir -p "$root"
for package in "${packages[@]}"; do
    deb=$(ls -t "$fetched"/"${package}"_*.deb | head -1)
    echo "  $(basename "$deb")"
    dpkg-deb -x "$deb" "$root"
done
# Compiled modules built for unstable's Pythons (3.14, 3.15) cannot load here; the
# libraries fall back to their pure-Python code without them.
soabi=$("$python" -c 'import sysconfig; print(sysconfig.get_config_var("SOABI"))')
find "$site" -name '*.cpython-3*-*.so' ! -name "*.$soabi.so" -print -delete | sed 's/^/  removed /'
# Byte-compile the way Debian's package installation does, so that the module
# form starts with its compiled cache like the system's package.
$nice "$python" -m compileall -q "$site" >/dev/null || true
tool_version=$(PYTHONPATH="$site" "$python" -c 'import yt_dlp.version as v; print(v.__version__)')
say "tool $tool_version"

# --- the current tool as a Python module ---------------------------------------
mkdir -p "$out/current-module"
cat >"$out/current-module/yt-dlp" <<EOF
#!$python
# The current tool as a Python module, the way Debian's yt-dlp command starts.
import sys
sys.path.insert(0, "$site")
from yt_dlp import main
if __name__ == "__main__":
    sys.exit(main())
EOF
chmod +x "$out/current-module/yt-dlp"

# --- the two PyInstaller builds -------------------------------------------------
build_form() {
    local mode=$1 dist="$out/$1"
    say "PyInstaller --$mode"
    rm -rf "$dist" "$out/work-$mode"
    (cd "$site" && PYTHONPATH="$pyinstaller_tree:$site" $nice "$python" -m PyInstaller \
        --name=yt-dlp_linux --noconfirm --additional-hooks-dir=yt_dlp/__pyinstaller "--$mode" \
        --distpath "$dist" --workpath "$out/work-$mode" --specpath "$out/work-$mode" \
        yt_dlp/__main__.py) >"$out/pyinstaller-$mode.log" 2>&1 ||
        { tail -40 "$out/pyinstaller-$mode.log"; echo "PyInstaller --$mode FAILED (log: $out/pyinstaller-$mode.log)" >&2; exit 2; }
    grep -E 'WARNING: (Using Crypto|Hidden import .* not found)' "$out/pyinstaller-$mode.log" | sort -u | sed 's/^/  /' || true
}
build_form onefile
build_form onedir
onefile="$out/onefile/yt-dlp_linux"
folder="$out/onedir/yt-dlp_linux/yt-dlp_linux"

# --- check that each form answers --------------------------------------------------
say "checking the forms (offline)"
info=$(mktemp --suffix=.info.json)
trap 'rm -f "$info"' EXIT
cat >"$info" <<'EOF'
{"id": "Kestr3lDemo", "title": "Kestrel Test Clip", "duration": 65, "extractor": "youtube",
 "extractor_key": "Youtube", "webpage_url_basename": "watch", "_type": "video",
 "formats": [
  {"format_id": "140", "url": "http://127.0.0.1:9/140", "ext": "m4a", "protocol": "http",
   "vcodec": "none", "acodec": "mp4a.40.2", "abr": 129, "filesize": 1048576},
  {"format_id": "137", "url": "http://127.0.0.1:9/137", "ext": "mp4", "protocol": "http",
   "vcodec": "avc1.640028", "acodec": "none", "width": 1920, "height": 1080, "filesize": 14680064}
 ]}
EOF
status=0
for program in "$onefile" "$folder" "$out/current-module/yt-dlp"; do
    version=$("$program" --version 2>&1 | head -1)
    listing=$("$program" --load-info-json "$info" --list-formats --no-warnings 2>&1)
    if [ "$version" = "$tool_version" ] && grep -q '^137 ' <<<"$listing" && grep -q '^140 ' <<<"$listing"; then
        echo "  ok: $program ($version, $(du -sh "$(dirname "$program")" | cut -f1) in its folder)"
    else
        status=1
        echo "  FAILED: $program"
        echo "    --version: $version"
        sed 's/^/    /' <<<"$listing"
    fi
done
[ $status = 0 ] || exit 1

echo
echo "export KESTREL_YTDLP_ONEFILE=$onefile"
echo "export KESTREL_YTDLP_FOLDER=$folder"
echo "export KESTREL_YTDLP_CURRENT=$out/current-module/yt-dlp"
