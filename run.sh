#!/usr/bin/env bash
# Installs what is missing, builds, and starts Kestrel Downloader from an
# installed layout staged in build/install (no root needed), so it runs the
# way a user's installation does: executable, plug-ins and tool files in one
# folder, started through the link in bin/.
#
#   ./run.sh [application arguments...]
#   ./run.sh --demo [demo arguments...]   runs scripts/demo/demo.sh on that installation
set -euo pipefail
cd "$(dirname "$0")"

demo=false
if [ "${1:-}" = "--demo" ]; then
    demo=true
    # Checked before the build, so a missing script does not cost one.
    if [ ! -f scripts/demo/demo.sh ]; then
        echo "run.sh: --demo needs scripts/demo/demo.sh, which this checkout does not have yet." >&2
        exit 1
    elif [ ! -x scripts/demo/demo.sh ]; then
        echo "run.sh: scripts/demo/demo.sh is not executable (chmod +x scripts/demo/demo.sh)." >&2
        exit 1
    fi
fi

scripts/install-dependencies.sh
scripts/build.sh -DKESTREL_BUILD_TESTS=OFF
# A fresh copy each time, so nothing left from an older build is started.
rm -rf build/install
cmake --install build --prefix build/install >/dev/null

if [ "$demo" = true ]; then
    exec scripts/demo/demo.sh build/install "${@:2}"
fi
exec build/install/bin/kestrel-downloader "$@"
