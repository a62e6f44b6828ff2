#!/usr/bin/env bash
# Checks the floor plan of src/: each folder includes headers of the folders named here and of its
# own, and the block "Folders" of ARCHITECTURE.md names every header once, in its folder.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."

# Folder, then what it may include. Each line names only folders that stand above it, so no two
# folders can include each other. The mains in app/ may include anything.
allowed() {
    cat <<'PLAN'
util
triangulation util
plot2d util
survey util triangulation
contour util triangulation survey plot2d
analysis util triangulation survey
sheet util triangulation survey plot2d contour analysis
export util triangulation survey plot2d contour analysis sheet
gis util triangulation survey plot2d contour export
exchange util triangulation survey plot2d contour sheet export gis
view3d util triangulation survey plot2d contour sheet
app/settings util plot2d sheet export exchange view3d
app/project util triangulation survey plot2d contour sheet gis app/settings
app/session util triangulation survey plot2d contour analysis sheet export exchange gis view3d app/settings app/project
app/batch util triangulation survey plot2d contour analysis sheet export exchange gis view3d app/settings app/project app/session
app/windows util triangulation survey plot2d contour analysis sheet export exchange gis view3d app/settings app/project app/session
PLAN
}

failed=0
complain() {
    echo "$1" >&2
    failed=1
}

# The folder that a path belongs to: app/ has folders of its own, elsewhere the first part counts.
folder_of() {
    sed -E 's#^(app/[a-z0-9]+)/.*#\1#; t; s#^([a-z0-9]+)/.*#\1#'
}

above=
while read -r folder others; do
    for other in $others; do
        case " $above " in
        *" $other "*) ;;
        *) complain "The plan lets $folder include $other, which does not stand above it." ;;
        esac
    done
    above="$above $folder"
done < <(allowed)

while IFS=: read -r path header; do
    from=$(folder_of <<<"$path")
    to=$(folder_of <<<"$header")
    if [ "$from" = "$to" ] || [[ $path =~ ^app/[a-zA-Z0-9_]+\.cpp$ ]]; then
        continue
    fi
    if ! allowed | grep -qE "^$from( .*)? $to( |\$)"; then
        complain "src/$path may not include \"$header\"."
    fi
done < <(cd src && grep -rnE --include='*.h' --include='*.cpp' '^#include "' . |
    sed -E 's#^\./([^:]+):[0-9]+:\#include "([^"]+)".*#\1:\2#')

# Of the block: a line that begins with a folder opens it, the words behind and below are headers.
listed=$(awk '/^```/ { if (inside) exit; if (wanted) inside = 1; next }
    /^## Folders/ { wanted = 1 }
    inside {
        first = 1
        if ($1 ~ /\/$/) { folder = $1; first = 2 }
        for (i = first; i <= NF; ++i) { gsub(/,/, "", $i); print folder $i ".h" }
    }' ARCHITECTURE.md | sort)
present=$(cd src && git ls-files '*.h' | sort)
difference=$(diff <(echo "$listed") <(echo "$present") || true)
if [ -n "$difference" ]; then
    complain "ARCHITECTURE.md (<) and src/ (>) differ in their headers:
$(grep '^[<>]' <<<"$difference")"
fi
exit $failed
