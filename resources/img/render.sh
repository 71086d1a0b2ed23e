#!/usr/bin/env bash
# Renders the SVG sources in src/ to the PNGs used by the application.
#   <name>.png     2x the design size: the design size is the form's, at a
#                  display scale of 125; at 140 a button shows it at 1.12x, so
#                  every scale only ever scales it down. A whole factor keeps
#                  each image's exact proportions (the table's 48x23 badge).
#   <name>@2x.png  4x the design size (for high-DPI screens)
# No larger: the window decodes every button image when it is built, and
# bigger images only slow its start.
# Requires rsvg-convert (Debian/Ubuntu: librsvg2-bin) and the DejaVu Sans font
# (fonts-dejavu-core). optipng is used when available.
set -euo pipefail

cd "$(dirname "$(readlink -f "$0")")"

command -v rsvg-convert >/dev/null 2>&1 || {
    echo "render.sh: rsvg-convert not found (install librsvg2-bin)" >&2
    exit 1
}

# name width height  (design size in logical pixels)
images=(
    "btn_kestreldl  350 89"
    "btn_site       105 90"
    "btn_back_big    76 32"
    "btn_process    158 46"
    "btn_back_small  33 33"
    "sign_media      48 23"
    "sign_download   22 22"
)

for entry in "${images[@]}"; do
    read -r name w h <<<"$entry"
    src="src/$name.svg"
    [[ -f "$src" ]] || { echo "render.sh: missing $src" >&2; exit 1; }
    rsvg-convert -w $((w * 2)) -h $((h * 2)) -o "$name.png" "$src"
    rsvg-convert -w $((w * 4)) -h $((h * 4)) -o "$name@2x.png" "$src"
    echo "rendered $name.png and $name@2x.png"
done

if command -v optipng >/dev/null 2>&1; then
    optipng -quiet -o2 -strip all ./*.png
fi
