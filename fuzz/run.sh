#!/usr/bin/env bash
# Runs the libFuzzer harnesses of the fuzz build over their committed seed corpora.
#
#   fuzz/run.sh [--build DIR] [--seconds N] [--jobs J] [--timeout T] [--scratch DIR] [--fresh]
#               [HARNESS...]
#
# Each harness runs N seconds (default 60) with its dictionary (fuzz/dict/NAME.dict). New
# inputs go to DIR/corpus/NAME, never to the committed corpus (fuzz/corpus/NAME); a crash or
# broken property is saved as DIR/crashes/NAME-* and makes the exit status 1. --fresh starts
# DIR/corpus empty (otherwise a run continues from the inputs earlier runs found). J harnesses
# run at once (default 1); T is libFuzzer's per-input time-out in seconds (default: its own).
# Without HARNESS every harness runs.
set -uo pipefail

here="$(cd "$(dirname "$0")" && pwd)"
build="$here/../build/fuzz"
seconds=60
jobs=1
timeout=""
scratch=""
fresh=0
harnesses=()
while [ $# -gt 0 ]; do
    case "$1" in
        --build) build="$2"; shift 2 ;;
        --seconds) seconds="$2"; shift 2 ;;
        --jobs) jobs="$2"; shift 2 ;;
        --timeout) timeout="$2"; shift 2 ;;
        --scratch) scratch="$2"; shift 2 ;;
        --fresh) fresh=1; shift ;;
        -h|--help) sed -n '2,13p' "$0"; exit 0 ;;
        -*) echo "fuzz/run.sh: unknown option $1" >&2; exit 2 ;;
        *) harnesses+=("$1"); shift ;;
    esac
done
[ -n "$scratch" ] || scratch="$build/findings"
if [ ${#harnesses[@]} -eq 0 ]; then
    for c in "$here"/fuzz_*.cpp; do
        n="$(basename "$c" .cpp)"
        harnesses+=("${n#fuzz_}")
    done
fi
for h in "${harnesses[@]}"; do
    if [ ! -x "$build/fuzz/fuzz_$h" ]; then
        echo "fuzz/run.sh: $build/fuzz/fuzz_$h is not built (cmake --preset fuzz && cmake --build --preset fuzz)" >&2
        exit 2
    fi
done

mkdir -p "$scratch/corpus" "$scratch/crashes"

# One harness; its log is $scratch/NAME.log, its summary line $scratch/NAME.summary.
run_one() {
    local h="$1"
    local found="$scratch/corpus/$h"
    [ "$fresh" -eq 1 ] && rm -rf "$found"
    mkdir -p "$found"
    local options=(-max_total_time="$seconds" -print_final_stats=1 -dict="$here/dict/$h.dict"
                   -artifact_prefix="$scratch/crashes/$h-")
    [ -n "$timeout" ] && options+=(-timeout="$timeout")
    local start=$SECONDS
    "$build/fuzz/fuzz_$h" "${options[@]}" "$found" "$here/corpus/$h" </dev/null >"$scratch/$h.log" 2>&1
    local status=$?
    local runs
    runs="$(sed -n 's/^stat::number_of_executed_units: *//p' "$scratch/$h.log" | tail -1)"
    local verdict="ok"
    if [ $status -ne 0 ]; then
        verdict="FAILED (exit $status; see $scratch/$h.log and $scratch/crashes/$h-*)"
    fi
    printf '%-18s %5ss %12s executions %6s inputs found  %s\n' "$h" "$((SECONDS - start))" "${runs:-?}" \
        "$(find "$found" -type f | wc -l)" "$verdict" >"$scratch/$h.summary"
    return $status
}

failed=0
running=0
for h in "${harnesses[@]}"; do
    if [ "$running" -ge "$jobs" ]; then
        wait -n || failed=1
        running=$((running - 1))
    fi
    echo "fuzzing $h for ${seconds}s"
    run_one "$h" &
    running=$((running + 1))
done
while [ "$running" -gt 0 ]; do
    wait -n || failed=1
    running=$((running - 1))
done

for h in "${harnesses[@]}"; do cat "$scratch/$h.summary"; done
exit $failed
