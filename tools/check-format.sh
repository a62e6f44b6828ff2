#!/usr/bin/env bash
# Fails when clang-format would change a source file; with --fix it changes them.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
mode=(--dry-run --Werror)
if [ "${1:-}" = --fix ]; then
    mode=(-i)
fi
find src tests bench -name '*.h' -o -name '*.cpp' | sort | xargs clang-format "${mode[@]}"
