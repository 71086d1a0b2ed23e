#!/usr/bin/env bash
# Sets up the Wine prefix WINEPREFIX names, if it is not set up yet.
#
# A new prefix links its user folders (Downloads, Documents, Desktop...) to
# the user's home, and Wine links such a folder again when a program asks for
# it while it is empty; a program under test would then write into the real
# ~/Downloads. Set up with a home that does not exist, the prefix gets
# folders of its own instead, which go when it goes; whoever runs programs
# in it keeps HOME away from the real one too.
set -euo pipefail
if [ ! -f "$WINEPREFIX/system.reg" ]; then
    HOME="$WINEPREFIX/no-home" WINEDEBUG=-all wineboot --init >/dev/null 2>&1 || true
    wineserver -w 2>/dev/null || true
fi
