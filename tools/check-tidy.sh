#!/usr/bin/env bash
# Passes clang-tidy over the sources of the core, or over the sources named. The preset `tidy` does
# it for everything, the windows and tests included, which takes longer.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."

cmake --preset tidy >/dev/null
if [ $# -eq 0 ]; then
    set -- $(sed -n '/^add_library(terravo_core/,/^)/s#^    \(.*\.cpp\)$#src/\1#p' src/CMakeLists.txt)
fi
echo "clang-tidy: $# sources"
# Its counts of suppressed warnings in system headers say nothing.
printf '%s\n' "$@" | xargs -P "$(nproc)" -n 4 clang-tidy -p build/tidy --quiet 2> >(grep -v 'warnings generated' >&2)
