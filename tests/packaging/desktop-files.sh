#!/usr/bin/env bash
# desktop-files.sh: menu entry, catalogue entry and file types are valid, and a file of each type is
# known by its name.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/../../packaging"
desktop-file-validate --no-hints terravo.desktop
appstreamcli validate --no-net io.github.terravo.Terravo.metainfo.xml

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/mime/packages"
cp terravo.xml "$folder/mime/packages"
update-mime-database "$folder/mime" 2>/dev/null # it minds that nobody searches there
printf '0 0 1\n' >"$folder/survey.qrw"
printf '{\n  "terravo_project": 1\n}\n' >"$folder/survey.terravo"
while read -r file type; do
    kind=$(XDG_DATA_HOME=$folder gio info -a standard::content-type "$folder/$file")
    grep -q "content-type: $type" <<<"$kind" || { echo "$file is taken for: $kind" && exit 1; }
    grep -Eq "^MimeType=(.*;)?$type;" terravo.desktop
done <<'TYPES'
survey.qrw application/x-terravo-points
survey.terravo application/x-terravo-project
TYPES
