#!/usr/bin/env bash
# Builds and runs the benchmarks and prints their tables.
#
# usage: bench/run.sh [read] [triangulate] [check] [cut] [draw] [export] [measure] [print] [sheet] [smooth] [surface] [terrain] [vector] [view] [road]
# Without a subject all of them are run.
# Installs what is missing from Debian's packages first, as root or through sudo. JOBS=N in the
# environment limits the build to N jobs. Results stay in build/bench/results.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
source tools/setup.sh

[ $# -gt 0 ] || set -- read triangulate check cut draw export measure print sheet smooth surface terrain vector view road
for subject in "$@"; do
    case $subject in
    read | triangulate | check | cut | draw | export | measure | print | sheet | smooth | surface | terrain | vector | view | road) ;;
    *)
        echo "run.sh: no benchmark is named \"$subject\"" >&2
        exit 2
        ;;
    esac
done

ensure_packages "${build_packages[@]}" libbenchmark-dev libcgal-dev hyperfine time python3 >&2
cmake --preset bench > /dev/null
cmake --build --preset bench --target benchmarks -j "${JOBS:-$(nproc)}" >&2

bin=build/bench/bin
results=build/bench/results
mkdir -p "$results"
# Where the files for CAD and GIS need not wait for a disk.
[ ! -w /dev/shm ] || memory=/dev/shm
for subject in "$@"; do
    echo "== $subject" >&2
    if [ "$subject" = road ]; then
        bench/whole_road.sh "$bin" "$results" >&2
    else
        # Repetitions of all benchmarks are mixed, so that a disturbance does not fall on one alone.
        TMPDIR=$([ "$subject" = vector ] && echo "${memory:-/tmp}" || echo "${TMPDIR:-/tmp}") \
            "$bin/${subject^}Bench" --benchmark_min_time=0.2 --benchmark_repetitions=7 \
            --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
            --benchmark_out="$results/$subject.json" --benchmark_out_format=json > /dev/null
    fi
done
bench/tables.py "$results" "$@"
