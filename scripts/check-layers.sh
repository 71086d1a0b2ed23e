#!/bin/bash
# Checks that every include of the program's sources points down its layers:
#
#   app          start-up and wiring; nothing includes it
#   ui           the window
#   downloader   the tool driver, the video record, the file set-up
#   plugins      the plug-in interfaces and their loader
#   formats      the format listing and its table model
#   base         identity, version, log, settings, platform, images
#
# A folder may include its own files and those of the folders below it;
# downloader and plugins, side by side, do not include each other. Prints
# every include that breaks this and exits non-zero when there is one.
#
#   scripts/check-layers.sh [source folder]     (default: src/ beside scripts/)
set -u

source_dir=${1:-"$(cd "$(dirname "$0")/.." && pwd)/src"}

layer_of() {
    case "$1" in
        base) echo 0 ;;
        formats) echo 1 ;;
        plugins | downloader) echo 2 ;;
        ui) echo 3 ;;
        app) echo 4 ;;
        *) echo "" ;;
    esac
}

problems=0
checked=0
for folder in base formats plugins downloader ui app; do
    own=$(layer_of "$folder")
    for file in "$source_dir/$folder"/*.h "$source_dir/$folder"/*.cpp "$source_dir/$folder"/*.h.in; do
        [ -e "$file" ] || continue
        while IFS= read -r included; do
            checked=$((checked + 1))
            target=${included%%/*}
            [ "$target" = "$included" ] && continue # a file of its own folder
            [ "$target" = "$folder" ] && continue
            layer=$(layer_of "$target")
            [ -z "$layer" ] && continue # a generated form header, not a layer
            if [ "$layer" -ge "$own" ]; then
                echo "${file#"$source_dir"/}: includes \"$included\", which is not below $folder/"
                problems=$((problems + 1))
            fi
        done < <(sed -n 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*"\([^"]*\)".*/\1/p' "$file")
    done
done

# The roof: no file outside app/ includes it.
while IFS= read -r line; do
    echo "$line: includes app/, which nothing below it may include"
    problems=$((problems + 1))
done < <(grep -rlE '#[[:space:]]*include[[:space:]]*"app/' "$source_dir" --include=*.h --include=*.cpp |
         grep -v "^$source_dir/app/" | grep -v "^$source_dir/main.cpp$" | sed "s|^$source_dir/||")

if [ "$problems" -gt 0 ]; then
    echo "layers: $problems include(s) point up"
    exit 1
fi
echo "layers: all $checked includes point down"
