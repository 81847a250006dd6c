#!/usr/bin/env bash
# Runs the libFuzzer programs built by the fuzz preset (cmake --workflow --preset fuzz), each
# for a fixed time, two at a time, starting from its seed corpus in fuzz/corpus/<name>/.
#
#   scripts/run-fuzzers.sh [seconds per target, default 30] [target names, default all]
#
# FUZZ_JOBS sets how many run at once (default 2; 1 on a machine shared with others).
# Inputs the fuzzer finds go to build/fuzz/corpus/<name>/, never into the committed corpus.
# Fails loudly on any crash, broken check, leak, timeout or out-of-memory: the log of the
# failing target is printed and the input that caused it is kept in build/fuzz/findings/.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-30}
shift || true
build=build/fuzz
if [ "$#" -gt 0 ]; then
    names=("$@")
else
    names=()
    for program in "$build"/fuzz/fuzz_*; do
        [ -x "$program" ] && names+=("${program##*/fuzz_}")
    done
fi
if [ "${#names[@]}" -eq 0 ]; then
    echo "No fuzz targets in $build/fuzz; run: cmake --workflow --preset fuzz" >&2
    exit 1
fi
mkdir -p "$build/findings" "$build/logs"

run_one() {
    local name=$1 seconds=$2 build=$3
    local work="$build/corpus/$name" log="$build/logs/$name.log"
    mkdir -p "$work"
    local status=0
    "$build/fuzz/fuzz_$name" "$work" "fuzz/corpus/$name" -max_total_time="$seconds" \
        -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$build/findings/$name-" >"$log" 2>&1 || status=$?
    local runs
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    if [ "$status" -ne 0 ]; then
        echo "FAILED $name (exit $status); log $log:" >&2
        tail -n 60 "$log" >&2
        return 1
    fi
    echo "ok     $name: ${runs:-?} executions in ${seconds} s"
}
export -f run_one

printf '%s\n' "${names[@]}" | xargs -P "${FUZZ_JOBS:-2}" -I{} bash -c 'run_one "$@"' _ {} "$seconds" "$build"
