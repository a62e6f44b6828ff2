#!/usr/bin/env bash
# Makes the animated turn of the documents: one picture every ten degrees, joined into a GIF.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
source tools/setup.sh
ensure_packages "${build_packages[@]}" imagemagick
build_preset release
frames=$(mktemp -d)
trap 'rm -rf "$frames"' EXIT
for degrees in $(seq -w 0 10 350); do
    build/release/bin/terravo-batch --quiet --size 480x360 --surface --theta "$((10#$degrees))" \
        --view3d "$frames/$degrees.png" samples/volcano.dat
done
convert -delay 10 -loop 0 "$frames"/*.png -colors 64 -layers Optimize docs/pictures/turn.gif
