#!/usr/bin/env bash
# Draws a contour map of a point file with GMT, for bench/peers.sh: the same picture as
# peers_matplotlib.py describes.
#
# usage: peers_gmt.sh POINT_FILE MAP.png
# GMT wants the extents and the levels told, so the file is read once more for them. It leaves
# "gmt.history" and the like in the folder it runs in.
set -euo pipefail

points=$1
read -r west east south north low high < <(gmt info -C "$points")
levels=$(LC_ALL=C awk -v low="$low" -v high="$high" 'BEGIN {
    for (i = 0; i < 10; i++) printf "%s%.3f", i ? "," : "", low + (high - low) * i / 9 }')
# 16 by 10 centimetres at 254 dots per inch.
gmt begin "${2%.png}" png E254,A+s16c/10c
gmt contour "$points" -R"$west/$east/$south/$north" -JX14c/8c -C"$levels" -A"$levels" -W0.5p \
    -Baf -Bx+lx -By+ly -B+t"Contour map"
gmt end
