#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang into build-fuzz/ and runs
# each for the given number of seconds (default 60), starting from a copy of
# the corpus in fuzz/corpus/ so that the repository stays as it is.
#
#   scripts/fuzz.sh [seconds per target] [target...]
#
# The targets run side by side, as many as there are cores
# (KESTREL_FUZZ_JOBS to choose). Exits non-zero when any target crashes, leaks,
# times out, runs out of memory or reports undefined behaviour; the input that
# did it is kept under build-fuzz/artifacts/<target>/ and can be replayed with
#   build-fuzz/fuzz/<target> <file>
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
if ! [[ "$seconds" =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: $0 [seconds per target] [target...]" >&2
    exit 2
fi
shift || true
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(fuzz_address fuzz_metadata fuzz_formattable fuzz_formatline fuzz_progress fuzz_sizes fuzz_releasetext)
fi

if ! grep -q 'add_subdirectory(fuzz)' CMakeLists.txt; then
    echo "The top-level CMakeLists.txt does not add fuzz/ (if(KESTREL_FUZZ) add_subdirectory(fuzz) endif())." >&2
    exit 2
fi

build=build-fuzz
# Only the parsers' library and the fuzzers are built; the tests, the
# plug-ins and the launcher are not needed here.
cmake -S . -B "$build" -G Ninja \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++ \
    -DKESTREL_FUZZ=ON \
    -DKESTREL_BUILD_TESTS=OFF \
    -DKESTREL_WARNINGS_AS_ERRORS=OFF >/dev/null
cmake --build "$build" --target kestrel_fuzzers

export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
export ASAN_OPTIONS=detect_leaks=1
export QT_LOGGING_RULES=
export QT_MESSAGE_PATTERN=

dictionary_of() {
    case "$1" in
        fuzz_address) echo fuzz/dict/address.dict ;;
        fuzz_metadata) echo fuzz/dict/metadata.dict ;;
        fuzz_formattable | fuzz_formatline) echo fuzz/dict/formats.dict ;;
        fuzz_progress) echo fuzz/dict/progress.dict ;;
        fuzz_sizes) echo fuzz/dict/sizes.dict ;;
        fuzz_releasetext) echo fuzz/dict/releasetext.dict ;;
        *) echo "no dictionary for $1" >&2; return 1 ;;
    esac
}

for target in "${targets[@]}"; do
    if [ ! -x "$build/fuzz/$target" ]; then
        echo "No such fuzz target: $target" >&2
        exit 2
    fi
done

# run_target <target>: one fuzzing run; its exit status and duration go to
# logs/<target>.status, its output to logs/<target>.log.
run_target() {
    local target=$1
    local corpus="$build/corpus/$target"
    local artifacts="$build/artifacts/$target"
    local log="$build/logs/$target.log"
    rm -rf "$corpus" "$artifacts"
    mkdir -p "$corpus" "$artifacts"
    cp -R "fuzz/corpus/$target/." "$corpus/"

    local started=$SECONDS
    local status=0
    "$build/fuzz/$target" "$corpus" \
        -dict="$(dictionary_of "$target")" \
        -max_total_time="$seconds" \
        -timeout=10 \
        -rss_limit_mb=2048 \
        -print_final_stats=1 \
        -artifact_prefix="$artifacts/" \
        >"$log" 2>&1 || status=$?
    echo "$status $((SECONDS - started))" >"$build/logs/$target.status"
}

# Each fuzzer runs on one core, so as many run at once as there are cores.
parallel=${KESTREL_FUZZ_JOBS:-$(nproc)}
rm -rf "$build/logs"
mkdir -p "$build/logs"
echo "Fuzzing ${targets[*]} for $seconds s each, $parallel at a time"
# An interrupted run takes its fuzzers with it.
trap 'kill $(jobs -p) 2>/dev/null || true' INT TERM
running=0
for target in "${targets[@]}"; do
    if [ "$running" -ge "$parallel" ]; then
        wait -n || true
        running=$((running - 1))
    fi
    run_target "$target" &
    running=$((running + 1))
done
wait

failed=()
summaries=()
for target in "${targets[@]}"; do
    log="$build/logs/$target.log"
    artifacts="$build/artifacts/$target"
    status=1
    elapsed=?
    if [ -f "$build/logs/$target.status" ]; then
        read -r status elapsed <"$build/logs/$target.status"
    fi

    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
    stats=$(grep -E '^#[0-9]+[[:space:]]+(DONE|pulse|NEW|REDUCE|INITED)' "$log" | tail -n 1 || true)
    coverage=$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' <<<"$stats")
    features=$(sed -n 's/.* ft: \([0-9]*\).*/\1/p' <<<"$stats")
    inputs=$(sed -n 's/.* corp: \([0-9]*\)\/.*/\1/p' <<<"$stats")

    # A sanitizer report counts even if the process somehow exited normally.
    if [ "$status" -eq 0 ] && grep -qE 'ERROR: (Address|Leak|UndefinedBehavior)Sanitizer|runtime error:|^==[0-9]+==ERROR' "$log"; then
        status=1
    fi

    verdict=ok
    if [ "$status" -ne 0 ]; then
        verdict="FAILED (exit $status)"
        failed+=("$target")
        echo "---- $target: end of $log ----"
        tail -n 80 "$log"
        echo "---- inputs kept in $artifacts: ----"
        ls -l "$artifacts"
    fi
    summaries+=("$(printf '%-17s %-16s %10s runs in %3s s, coverage %s edges / %s features, corpus %s inputs' \
        "$target" "$verdict" "${runs:-?}" "$elapsed" "${coverage:-?}" "${features:-?}" "${inputs:-?}")")
done

echo
echo "Fuzzing summary:"
printf '  %s\n' "${summaries[@]}"
if [ ${#failed[@]} -ne 0 ]; then
    echo "Failed: ${failed[*]}"
    exit 1
fi
