#!/usr/bin/env bash
# Renders the icons of all sizes from terravo.svg anew.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")"
source ../../tools/setup.sh
ensure_packages librsvg2-bin
for side in 16 22 24 32 48 64 128 256; do
    rsvg-convert --width "$side" --height "$side" terravo.svg --output "$side.png"
done
