#!/usr/bin/env bash
# completion.sh BATCH_PROGRAM: what the completion of terravo-batch offers.
set -euo pipefail
here=$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")
program=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
touch survey.dat
mkdir maps
set +eu # the library is not written for them
source /usr/share/bash-completion/bash_completion
source "$here/../../packaging/terravo-batch.bash-completion"
compopt() { :; } # works only while readline completes

failed=0
# offers EXPECTED WORD...: the last word is the one to complete; = stands apart, as in a shell
offers() {
    local expected=$1
    shift
    COMP_WORDS=("$program" "$@")
    COMP_CWORD=$#
    COMP_LINE="${COMP_WORDS[*]}"
    COMP_LINE=${COMP_LINE// = /=}
    COMP_POINT=${#COMP_LINE}
    COMPREPLY=()
    _terravo_batch "$program" "${COMP_WORDS[-1]}" "${COMP_WORDS[-2]}"
    local got
    got=$(printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd ' ')
    if [ "$got" != "$expected" ]; then
        echo "after \"$*\": \"$got\" instead of \"$expected\""
        failed=1
    fi
}
offers "areas lines" --mode ""
offers "areas" --mode = a
offers "json" --quiet --summary j
offers "de en es fr it" --language ""
offers "A3" --paper A3
offers "--qrz-levels --qrz-triangles" --qrz
offers "" --levels ""
offers "--volume --volume-to" --vol
offers "" --height-at ""
offers "maps" --out ""
offers "survey.dat" --labels su
exit "$failed"
