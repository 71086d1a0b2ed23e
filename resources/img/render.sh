#!/usr/bin/env bash
# Renders the SVG sources in src/ to the PNGs used by the application.
#
# Button images are rendered at the largest size a button shows them on a
# normal screen: the box the window gives each icon at the largest display
# scale (140 %) or in the form, whichever is larger, with the image fitted
# into it at its own proportions. Every scale then only ever scales them down,
# and no larger: the window decodes all of them while it is built, so every
# extra pixel delays its first appearance. The table's badges are drawn at a
# fixed size; they are rendered at twice it, a whole factor, so that their
# exact proportions (the 48x23 badge) survive.
#   <name>.png     that size
#   <name>@2x.png  twice that size, picked by Qt on high-density screens
# Requires rsvg-convert (Debian/Ubuntu: librsvg2-bin) and the DejaVu Sans font
# (fonts-dejavu-core). optipng is used when available.
set -euo pipefail

cd "$(dirname "$(readlink -f "$0")")"

command -v rsvg-convert >/dev/null 2>&1 || {
    echo "render.sh: rsvg-convert not found (install librsvg2-bin)" >&2
    exit 1
}

# name width height  (rendering size of <name>.png in pixels; the design
# sizes are in README.md)
images=(
    "btn_kestreldl  390 99"
    "btn_site       117 100"
    "btn_back_big    87 37"
    "btn_process    207 60"
    "btn_back_small  33 33"
    "sign_media      96 46"
    "sign_download   44 44"
)

for entry in "${images[@]}"; do
    read -r name w h <<<"$entry"
    src="src/$name.svg"
    [[ -f "$src" ]] || { echo "render.sh: missing $src" >&2; exit 1; }
    rsvg-convert -w "$w" -h "$h" -o "$name.png" "$src"
    rsvg-convert -w $((w * 2)) -h $((h * 2)) -o "$name@2x.png" "$src"
    echo "rendered $name.png and $name@2x.png"
done

if command -v optipng >/dev/null 2>&1; then
    optipng -quiet -o2 -strip all ./*.png
fi
