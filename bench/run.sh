#!/usr/bin/env bash
# Builds the benchmarks (Release) into build-bench/ and runs them all, printing
# every figure. It exits non-zero only when a benchmark fails to build or to
# run; a missed goal is reported in the output, never through the exit code.
#
#   bench/run.sh [build folder]      (default: build-bench beside bench/)

set -u

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source_dir="$(dirname "$here")"
build_dir="${1:-$source_dir/build-bench}"

# While the top-level CMakeLists.txt does not add bench/ itself, attach it
# from outside; once it does, drop the attachment from the cache again.
if grep -v '^[[:space:]]*#' "$source_dir/CMakeLists.txt" | grep -Eq 'add_subdirectory\([[:space:]]*bench[[:space:]]*\)'; then
    attach=(-UCMAKE_PROJECT_KestrelDownloader_INCLUDE)
else
    attach=(-DCMAKE_PROJECT_KestrelDownloader_INCLUDE="$here/attach.cmake")
fi

echo "== configure and build ($build_dir)"
mkdir -p "$build_dir"
cmake -S "$source_dir" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKESTREL_BUILD_TESTS=ON "${attach[@]}" \
    >"$build_dir/bench-configure.log" 2>&1 || { cat "$build_dir/bench-configure.log"; echo "bench: configure FAILED"; exit 2; }
cmake --build "$build_dir" --target kestrel_benchmarks -- -j2 || { echo "bench: build FAILED"; exit 2; }

echo
echo "== machine"
echo "cpus: $(nproc), $(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2- | sed 's/^ *//')"
echo "system: $(. /etc/os-release && echo "$PRETTY_NAME"), kernel $(uname -r)"
echo "qt: $(dpkg-query -W -f='${Version}' libqt6core6 2>/dev/null || echo unknown)"
echo "load average before: $(cut -d' ' -f1-3 /proc/loadavg)"

failed=()
for bench in startup memory toolrun formats memorygrowth feltspeed; do
    echo
    echo "== $bench"
    started=$(date +%s)
    if ! "$build_dir/bench/kestrel_bench_$bench"; then
        failed+=("$bench")
        echo "bench: $bench FAILED TO RUN"
    fi
    echo "($(( $(date +%s) - started )) s, load average $(cut -d' ' -f1-3 /proc/loadavg))"
done

echo
echo "== first video on a new installation"
"$source_dir/bench/firstvideo.sh" "$build_dir/src/kestreldl2" || failed+=("firstvideo")

echo
echo "== tool start forms"
# The one-file and folder builds of the current tool, and the current tool as a
# Python module, come from bench/build-start-forms.sh (about a minute; needs
# Debian's package mirror). They are made when missing, unless
# KESTREL_BENCH_BUILD_FORMS=no; the variables already set are kept.
forms_dir="$source_dir/build/start-forms"
if [ -z "${KESTREL_YTDLP_ONEFILE:-}${KESTREL_YTDLP_FOLDER:-}${KESTREL_YTDLP_CURRENT:-}" ]; then
    if [ ! -x "$forms_dir/onedir/yt-dlp_linux/yt-dlp_linux" ] && [ "${KESTREL_BENCH_BUILD_FORMS:-yes}" != no ]; then
        echo "making the start forms: bench/build-start-forms.sh (log: $forms_dir.log)"
        mkdir -p "$(dirname "$forms_dir")"
        "$here/build-start-forms.sh" "$forms_dir" >"$forms_dir.log" 2>&1 ||
            echo "could not make them (see $forms_dir.log); bench/build-start-forms.sh makes them by hand"
    fi
    [ -x "$forms_dir/onefile/yt-dlp_linux" ] && export KESTREL_YTDLP_ONEFILE="$forms_dir/onefile/yt-dlp_linux"
    [ -x "$forms_dir/onedir/yt-dlp_linux/yt-dlp_linux" ] && export KESTREL_YTDLP_FOLDER="$forms_dir/onedir/yt-dlp_linux/yt-dlp_linux"
    [ -x "$forms_dir/current-module/yt-dlp" ] && export KESTREL_YTDLP_CURRENT="$forms_dir/current-module/yt-dlp"
fi
"$source_dir/bench/startforms.sh" || failed+=("startforms")

echo
if [ ${#failed[@]} -gt 0 ]; then
    echo "bench: failed to run: ${failed[*]}"
    exit 1
fi
echo "bench: all benchmarks ran"
