#!/usr/bin/env bash
# The road from a point file to a labelled map, 1600 x 1000 pixels and 10 levels, of terravo-batch,
# of matplotlib and of GMT, side by side: prints times, peak memory and ratios as rows in Markdown.
#
# usage: bench/peers.sh [BIN_FOLDER]
# Builds the preset `bench` unless a folder with terravo-batch and make_points is given. The peers
# are installed from Debian's packages where that is possible; one that is missing is left out.
# RUNS=N in the environment takes medians of N runs (3); JOBS=N limits the build. About four minutes
# after the build; needs 2 GB of free memory for ten million points.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
source tools/setup.sh

peer_packages=(python3-matplotlib gmt ghostscript)

if [ $# -eq 0 ]; then
    ensure_packages "${build_packages[@]}" libbenchmark-dev python3 >&2
    cmake --preset bench > /dev/null
    cmake --build --preset bench --target terravo-batch make_points -j "${JOBS:-$(nproc)}" >&2
fi
bin=$(cd "${1:-build/bench/bin}" && pwd)

ensure_packages "${peer_packages[@]}" >&2 || true
peers=()
if /usr/bin/python3 -c 'import matplotlib' 2> /dev/null; then
    peers+=(matplotlib)
else
    echo "peers.sh: python3-matplotlib is missing; its columns stay empty" >&2
fi
if command -v gmt > /dev/null && command -v gs > /dev/null; then
    peers+=(GMT)
else
    echo "peers.sh: gmt or ghostscript is missing; their columns stay empty" >&2
fi

# In memory, so that no run waits for a disk.
if [ -z "${TMPDIR:-}" ] && [ -d /dev/shm ]; then
    export TMPDIR=/dev/shm
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# What the peers keep for their user goes there too.
export MPLCONFIGDIR="$work" GMT_USERDIR="$work"
/usr/bin/python3 bench/peers.py "$bin" "$work" "${RUNS:-3}" "${peers[@]}"
