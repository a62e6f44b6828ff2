#!/usr/bin/env bash
# desktop-files.sh: menu entry, catalogue entry and file type are valid, and a file of the type is
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
kind=$(XDG_DATA_HOME=$folder gio info -a standard::content-type "$folder/survey.qrw")
grep -q 'content-type: application/x-terravo-points' <<<"$kind" ||
    { echo "survey.qrw is taken for: $kind" && exit 1; }
grep -q "^MimeType=application/x-terravo-points;" terravo.desktop
