#!/usr/bin/env bash
# Checks that each Windows program given imports only the system's own DLLs:
# the launcher and the fake tool run from a data folder with no DLL beside
# them.
#
#   check-static.sh PROGRAM.exe...
set -euo pipefail
status=0
for program in "$@"; do
    foreign=$(x86_64-w64-mingw32-objdump -p "$program" | sed -n 's/^\tDLL Name: //p' \
        | grep -viE '^(kernel32|advapi32|shell32|user32|msvcrt|bcrypt|winhttp|ws2_32|ntdll|api-ms-win-.*)\.dll$' || true)
    if [ -n "$foreign" ]; then
        echo "check-static.sh: $program needs DLLs that would not lie beside it: $foreign" >&2
        status=1
    else
        echo "$program: system DLLs only"
    fi
done
exit "$status"
