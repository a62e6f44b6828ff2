#!/usr/bin/env bash
# manual.sh BATCH_PROGRAM: the manual pages are clean and name every option of the help.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/../../packaging/man"
export LC_ALL=C.UTF-8 MANROFFSEQ=''
failed=0
for page in terravo.1 terravo-batch.1; do
    complaints=$(mandoc -T lint -W warning "$page" || true)
    complaints+=$(MANWIDTH=80 man --warnings -E UTF-8 -l "$page" 2>&1 >/dev/null || true)
    if [ -n "$complaints" ]; then
        echo "$page: $complaints"
        failed=1
    fi
done
text=$(MANWIDTH=200 man -E UTF-8 -l terravo-batch.1 | col -b | sed 's/‐/-/g')
for option in $("$1" --help | grep -oE -- '^ .*--[a-z0-9-]+' | grep -oE -- '--[a-z0-9-]+'); do
    if ! grep -q -- "$option\b" <<<"$text"; then
        echo "terravo-batch.1 does not name $option."
        failed=1
    fi
done
exit "$failed"
