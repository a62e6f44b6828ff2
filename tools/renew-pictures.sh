#!/usr/bin/env bash
# Draws the pictures of the documents anew from the samples.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
source tools/setup.sh
build_preset release
draw() { build/release/bin/terravo-batch --quiet --map "docs/pictures/$1" "${@:2}"; }
draw map-lines.png --size 900x640 --labels --perimeter samples/davis_hills.dat
draw map-triangles.png --size 900x640 --triangles samples/davis_hills.dat
draw map-volcano.png --size 900x640 --levels 12 --labels samples/volcano.dat
build/release/bin/terravo-batch --quiet --size 900x640 --surface --view3d docs/pictures/view-surface.png samples/volcano.dat
build/release/bin/terravo-batch --quiet --size 1000x650 --interval 5 --smooth 0.25 --view 335,32 \
    --terrain docs/pictures/terrain-volcano.png samples/volcano.dat
for lines in straight:0 smooth:0.25; do
    build/release/bin/terravo-batch --quiet --paper 110x100 --dpi 150 --scale 3500 --interval 10 --label none \
        --layers contours,points,hull --smooth "${lines#*:}" --sheet "docs/pictures/lines-${lines%:*}.png" \
        samples/davis_hills.dat
done
build/release/bin/terravo-batch --quiet --dpi 110 --title Volcano --interval 10 --smooth 0.25 \
    --layers contours,bands,hull,grid,spot-heights,legend,scale-bar,north-arrow,title-block \
    --sheet docs/pictures/sheet-volcano.png samples/volcano.dat
build/release/bin/terravo-batch --quiet --dpi 110 --title Volcano --interval 5 --scale 4000 --smooth 0.25 \
    --sheet docs/pictures/sheet-volcano-5m.png samples/volcano.dat
yard=(--quiet --dpi 110 --boundary samples/site/boundary.txt --volume-to samples/site/levelled.csv)
build/release/bin/terravo-batch "${yard[@]}" --difference-sheet docs/pictures/measure-difference.png \
    samples/site/points.csv
build/release/bin/terravo-batch "${yard[@]}" --section 691010,5335026,691070,5335026 \
    --section-picture docs/pictures/measure-section.png samples/site/points.csv
