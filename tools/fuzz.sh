#!/usr/bin/env bash
# tools/fuzz.sh [SECONDS] [TARGET...]: installs what is missing, builds the fuzzers and runs each
# target (all by default) for some seconds (60 by default) on a copy of its corpus that grows from
# run to run. Inputs that break a rule stay under build/fuzz/findings, and the script fails.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
source tools/setup.sh

seconds=${1:-60}
shift || true
ensure_packages "${build_packages[@]}" libgtest-dev clang libclang-rt-14-dev
build_preset fuzz

root=$PWD/build/fuzz
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    mapfile -t targets < <(ls tests/fuzz/corpus)
fi
# The files that the targets read and write need no disk.
scratch=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo "${TMPDIR:-/tmp}")")
trap 'rm -rf "$scratch"' EXIT

failed=0
printf '%-16s %12s %9s %9s %9s\n' target executions seconds coverage findings
for target in "${targets[@]}"; do
    corpus=$root/corpus/$target
    findings=$root/findings/$target
    log=$root/$target.log
    mkdir -p "$corpus" "$findings"
    cp tests/fuzz/corpus/"$target"/* "$corpus"
    before=$(find "$findings" -type f | wc -l)
    TMPDIR=$scratch nice "$root/bin/Fuzz$target" "$corpus" -artifact_prefix="$findings/" \
        -max_total_time="$seconds" -max_len=4096 -timeout=10 -rss_limit_mb=2048 \
        -print_final_stats=1 >"$log" 2>&1 || failed=1
    found=$(($(find "$findings" -type f | wc -l) - before))
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    spent=$(sed -n 's/^Done .* in \([0-9]*\) second.*/\1/p' "$log")
    coverage=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -n 1)
    printf '%-16s %12s %9s %9s %9s\n' "$target" "${runs:--}" "${spent:--}" "${coverage:--}" "$found"
    grep -hE '^Broken rule|runtime error|^SUMMARY' "$log" || true
done
exit "$failed"
