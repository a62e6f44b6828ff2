#!/usr/bin/env bash
# Point sets that are hard by their shape or order, through terravo-batch with the map as its only
# output: time and peak memory of each, as rows of a table.
#
# usage: bench/worst_cases.sh BIN_FOLDER [COUNT [NAME...]]
# COUNT points a set (a million), all sets of make_points or the named ones. A run ends after
# LIMIT seconds (600).
set -euo pipefail

if [ $# -lt 1 ]; then
    echo "usage: bench/worst_cases.sh BIN_FOLDER [COUNT [NAME...]]" >&2
    exit 2
fi
bin=$(cd "$1" && pwd)
count=${2:-1000000}
shift $(($# < 2 ? $# : 2))
if [ $# -eq 0 ]; then
    # The last line of its help but the COUNT names the sets.
    read -ra names < <("$bin/make_points" 2>&1 | sed -n '$s/.*make_points //p')
    set -- "${names[@]:0:${#names[@]}-1}"
fi
# In memory, so that no run waits for the disk.
if [ -z "${TMPDIR:-}" ] && [ -d /dev/shm ]; then
    export TMPDIR=/dev/shm
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

echo "| set | triangulate, s | whole, s of the processor | peak memory, MiB | outcome |"
echo "|---|---:|---:|---:|---|"
for name in "$@"; do
    "$bin/make_points" "$name" "$count" > "$work/points.dat"
    code=0
    (cd "$work" && command time --quiet --format '%U %S %M' --output figures \
        timeout "${LIMIT:-600}" "$bin/terravo-batch" --map map.png --summary json points.dat \
        > summary 2> words) || code=$?
    read -r user system kilobytes < "$work/figures"
    spent=$(tr -d ' \n' < "$work/summary" | sed -n 's/.*"triangulate":\([0-9.]*\).*/\1/p')
    triangles=$(tr -d ' \n' < "$work/summary" | sed -n 's/.*"triangles":\([0-9]*\).*/\1/p')
    outcome="$triangles triangles"
    if [ "$code" -eq 124 ]; then
        outcome="ended after ${LIMIT:-600} s"
    elif [ "$code" -ne 0 ]; then
        outcome="exit code $code: $(sed 's/^terravo-batch: [^:]*: //' "$work/words")"
    fi
    awk -v name="$name" -v ms="$spent" -v user="$user" -v system_="$system" -v kb="$kilobytes" \
        -v outcome="$outcome" 'BEGIN {
            printf "| %s | %s | %.2f | %.0f | %s |\n", name, ms == "" ? "–" : sprintf("%.2f", ms / 1000),
                user + system_, kb / 1024, outcome }'
done
