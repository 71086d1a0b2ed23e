#!/usr/bin/env bash
# Installs what is missing, builds with the tests, and runs every check.
#
#   ./test.sh          the whole suite of the normal build, then the fuzzers
#                      (briefly) and the whole suite again, built with
#                      AddressSanitizer and UndefinedBehaviorSanitizer
#   ./test.sh --quick  the whole suite of the normal build only
#   ./test.sh --windows
#                      the Windows build (scripts/windows/build.sh: cross-built,
#                      staged, installer made and checked under Wine), then
#                      its tests under Wine
set -euo pipefail
cd "$(dirname "$0")"

quick=false
case "${1:-}" in
    "") ;;
    --quick) quick=true ;;
    --windows)
        scripts/windows/build.sh
        # One Wine prefix for the whole run: a new one takes seconds to start.
        KESTREL_WINEPREFIX=$(mktemp -d)
        export KESTREL_WINEPREFIX
        trap 'WINEPREFIX="$KESTREL_WINEPREFIX" wineserver -k 2>/dev/null || true; rm -rf "$KESTREL_WINEPREFIX"' EXIT
        (cd build-windows && ctest --output-on-failure --timeout 900)
        exit 0
        ;;
    *)
        echo "usage: ./test.sh [--quick | --windows]" >&2
        exit 2
        ;;
esac

scripts/install-dependencies.sh

# CI treats compiler warnings as errors and gives each fuzzer a minute.
werror=OFF
fuzz_seconds=${KESTREL_FUZZ_SECONDS:-15}
if [ "${CI:-}" = "true" ]; then
    werror=ON
    fuzz_seconds=${KESTREL_FUZZ_SECONDS:-60}
fi

# The tools users run, fetched into the build tree: the integration suites run
# against the current yt-dlp as well as the distribution's, and the launcher's
# runtime detection is checked with the official Deno. A developer without
# network may set KESTREL_SKIP_CURRENT_TOOLS=1 to run without them; in CI a
# failed fetch fails the run. The sanitized build uses the same files.
KESTREL_CURRENT_YTDLP=
KESTREL_REAL_DENO=
if [ "${KESTREL_SKIP_CURRENT_TOOLS:-0}" = 1 ] && [ "${CI:-}" = "true" ]; then
    echo "test.sh: KESTREL_SKIP_CURRENT_TOOLS=1 is ignored in CI" >&2
fi
if [ "${KESTREL_SKIP_CURRENT_TOOLS:-0}" = 1 ] && [ "${CI:-}" != "true" ]; then
    echo "test.sh: KESTREL_SKIP_CURRENT_TOOLS=1: the integration suites run against /usr/bin/yt-dlp only," \
        "and the real Deno's cases are skipped" >&2
else
    KESTREL_CURRENT_YTDLP=$(scripts/current-tool.sh build)
    KESTREL_REAL_DENO=$(scripts/real-deno.sh build)
fi
export KESTREL_CURRENT_YTDLP KESTREL_REAL_DENO
scripts/build.sh -DKESTREL_BUILD_TESTS=ON -DKESTREL_WARNINGS_AS_ERRORS="$werror" \
    -DKESTREL_CURRENT_YTDLP="$KESTREL_CURRENT_YTDLP" -DKESTREL_REAL_DENO="$KESTREL_REAL_DENO"

(
    cd build
    export QT_QPA_PLATFORM=offscreen
    ctest --output-on-failure --timeout 900 -j "$(nproc)"
)

if [ "$quick" = false ]; then
    scripts/fuzz.sh "$fuzz_seconds"
    scripts/sanitizers.sh
fi
