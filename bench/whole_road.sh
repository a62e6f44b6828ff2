#!/usr/bin/env bash
# The whole road of terravo-batch, from a point file to the map, both exchange files and both vector
# files, with its peak memory.
#
# usage: bench/whole_road.sh BIN_FOLDER RESULT_FOLDER
# Makes its point files in a folder in memory. For each survey and count it leaves in RESULT_FOLDER
# road-SURVEY-COUNT.json (times of hyperfine) and .runs (per run one line: kilobytes of peak memory,
# and the summary of terravo-batch on one line).
set -euo pipefail

if [ $# -ne 2 ]; then
    echo "usage: bench/whole_road.sh BIN_FOLDER RESULT_FOLDER" >&2
    exit 2
fi
bin=$(cd "$1" && pwd)
mkdir -p "$2"
results=$(cd "$2" && pwd)
# In memory, so that no run waits while the disk takes the files of the run before.
if [ -z "${TMPDIR:-}" ] && [ -d /dev/shm ]; then
    export TMPDIR=/dev/shm
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

measure() { # survey count runs warmups
    local name="road-$1-$2" points="$work/points.dat" out="$work/out" run
    local files=(--map "$out/map.png" --segments "$out/livelli.txt" --mesh "$out/point_qrw.txt"
        --qrz-triangles "$out/triangles.qrz" --qrz-levels "$out/levels.qrz")
    "$bin/make_points" "$1" "$2" > "$points"
    mkdir -p "$out"
    hyperfine --style basic --warmup "$4" --runs "$3" --export-json "$results/$name.json" \
        --command-name "$1 $2" "'$bin/terravo-batch' --quiet ${files[*]@Q} '$points'"
    : > "$results/$name.runs"
    for run in $(seq "$3"); do
        command time --format %M --output "$work/memory" \
            "$bin/terravo-batch" --summary json "${files[@]}" "$points" > "$work/summary"
        echo "$(cat "$work/memory") $(tr -d '\n' < "$work/summary")" >> "$results/$name.runs"
    done
}

for survey in random grid lines; do
    for count in 1000 10000 100000; do
        measure "$survey" "$count" 5 1
    done
done
measure random 1000000 5 1
measure lines 1000000 5 1
measure grid 1000000 2 0 # slow: see docs/performance.md
