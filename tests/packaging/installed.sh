#!/usr/bin/env bash
# installed.sh BUILD_FOLDER: what `cmake --install` writes is whole, and the installed terravo-batch
# takes its texts from beside it: a language that only the installed tree has tells.
set -euo pipefail
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
DESTDIR=$stage cmake --install "$1" --prefix /opt/terravo >/dev/null
tree=$stage/opt/terravo
for file in bin/terravo share/applications/terravo.desktop share/mime/packages/terravo.xml \
    share/icons/hicolor/16x16/apps/terravo.png share/icons/hicolor/scalable/apps/terravo.svg \
    share/metainfo/io.github.terravo.Terravo.metainfo.xml share/terravo/supporto/_p.trl \
    share/bash-completion/completions/terravo-batch; do
    [ -s "$tree/$file" ] || { echo "$file is missing." && exit 1; }
done
if [ -f "$1/bin/terravo_gis.so" ]; then # found where it is installed, named where it is not
    raster=$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/../data/gis/heights.tif
    "$tree/bin/terravo-batch" "$raster" | grep -q "GeoTIFF: band 1; 19 points"
    rm "$tree/lib/terravo/terravo_gis.so"
    ! "$tree/bin/terravo-batch" "$raster" 2>"$stage/error"
    grep -q "needs the file lib/terravo/terravo_gis.so" "$stage/error"
fi
gzip -dc "$tree/share/man/man1/terravo-batch.1.gz" | cmp - \
    "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/../../packaging/man/terravo-batch.1"

mv "$tree/share/terravo/supporto/it_p.trl" "$tree/share/terravo/supporto/xx_p.trl"
cd "$tree"
bin/terravo-batch --quiet --language xx --map map.png share/doc/terravo/examples/davis_hills.dat
[ -s map.png ]
