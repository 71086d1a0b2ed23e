#!/usr/bin/env bash
# Installs what is missing, builds with the tests, and runs every test.
#
#   ./test.sh          the whole suite of the normal build
#   ./test.sh --full   first the fuzzers (briefly) and the whole suite under
#                      AddressSanitizer and UndefinedBehaviorSanitizer
set -euo pipefail
cd "$(dirname "$0")"

full=false
if [ "${1:-}" = "--full" ]; then
    full=true
fi

scripts/install-dependencies.sh

# CI treats compiler warnings as errors and gives each fuzzer a minute.
werror=OFF
fuzz_seconds=${KESTREL_FUZZ_SECONDS:-15}
if [ "${CI:-}" = "true" ]; then
    werror=ON
    fuzz_seconds=${KESTREL_FUZZ_SECONDS:-60}
fi
scripts/build.sh -DKESTREL_BUILD_TESTS=ON -DKESTREL_WARNINGS_AS_ERRORS="$werror"

if [ "$full" = true ]; then
    scripts/fuzz.sh "$fuzz_seconds"
    scripts/sanitizers.sh
fi

cd build
export QT_QPA_PLATFORM=offscreen
ctest --output-on-failure --timeout 900 -j "$(nproc)"
