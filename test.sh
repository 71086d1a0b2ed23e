#!/usr/bin/env bash
# Installs what is missing, builds with the tests, and runs every test.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-dependencies.sh

# CI treats compiler warnings as errors.
werror=OFF
if [ "${CI:-}" = "true" ]; then
    werror=ON
fi
scripts/build.sh -DKESTREL_BUILD_TESTS=ON -DKESTREL_WARNINGS_AS_ERRORS="$werror"

cd build
export QT_QPA_PLATFORM=offscreen
ctest --output-on-failure --timeout 900 -j "$(nproc)"
