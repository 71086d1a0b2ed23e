#!/usr/bin/env bash
# Installs what is missing, builds, and starts Kestrel Downloader.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-dependencies.sh
scripts/build.sh -DKESTREL_BUILD_TESTS=OFF
exec build/src/kestrel-downloader "$@"
