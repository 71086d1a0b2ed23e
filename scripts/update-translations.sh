#!/usr/bin/env bash
# Brings every catalogue in translations/ up to date with the sources: texts
# that are new arrive unfinished, texts that vanished stay as obsolete entries
# so that a translator still sees the old wording. Once they are settled,
# --drop-obsolete removes the obsolete entries.
#
#   scripts/update-translations.sh [--drop-obsolete] [BUILD-FOLDER]   (default: build)
set -euo pipefail
cd "$(dirname "$0")/.."
drop_obsolete=
if [ "${1:-}" = --drop-obsolete ]; then
    drop_obsolete=1
    shift
fi
build=${1:-build}
[ -f "$build/CMakeCache.txt" ] || { echo "update-translations.sh: no configured build in $build" >&2; exit 1; }
cmake --build "$build" --target update_translations
if [ -n "$drop_obsolete" ]; then
    lupdate=$(sed -n 's/^KESTREL_LUPDATE:FILEPATH=//p' "$build/CMakeCache.txt")
    "$lupdate" -silent -locations none -extensions cpp,h,ui -no-obsolete src plugin-libs -ts translations/*.ts
fi
