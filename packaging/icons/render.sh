#!/usr/bin/env bash
# Renders kestrel-downloader.svg to the PNG sizes the desktop's icon theme
# looks up (<size>x<size>/kestrel-downloader.png) and packs some of them into
# kestrel-downloader.ico, the Windows installer's icon. They are kept in the
# repository so that building needs no SVG renderer; run this after editing
# the SVG. Requires rsvg-convert (Debian: librsvg2-bin) and icotool
# (icoutils); optipng is used when available.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"

command -v rsvg-convert >/dev/null 2>&1 || {
    echo "render.sh: rsvg-convert not found (install librsvg2-bin)" >&2
    exit 1
}
command -v icotool >/dev/null 2>&1 || {
    echo "render.sh: icotool not found (install icoutils)" >&2
    exit 1
}

for size in 16 32 48 64 128 256; do
    mkdir -p "${size}x${size}"
    rsvg-convert -w "$size" -h "$size" -o "${size}x${size}/kestrel-downloader.png" kestrel-downloader.svg
    echo "rendered ${size}x${size}/kestrel-downloader.png"
done

if command -v optipng >/dev/null 2>&1; then
    optipng -quiet -o2 -strip all ./*x*/kestrel-downloader.png
fi

# The small sizes as bitmaps, which every Windows version draws; the 256
# pixel one as PNG, as Windows expects it (a bitmap would be 256 KB).
icotool -c -o kestrel-downloader.ico \
    16x16/kestrel-downloader.png 32x32/kestrel-downloader.png 48x48/kestrel-downloader.png \
    -r 256x256/kestrel-downloader.png
echo "packed kestrel-downloader.ico"
