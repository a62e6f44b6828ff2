#!/usr/bin/env bash
# Takes the pictures of the windows for the documents anew, on a display of its own.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
source tools/setup.sh
ensure_packages "${build_packages[@]}" xvfb openbox xdotool x11-utils imagemagick
build_preset release

source tests/e2e/common.sh
export HOME=$base XDG_DATA_HOME=$base/data XDG_CONFIG_HOME=$base/config TMPDIR=$base/tmp
mkdir "$TMPDIR" "$base/config"
start_display
start_window_manager

# shoot NAME FILE COMMAND...: the program with a file, after xdotool's commands
shoot() {
    build/release/bin/terravo --open "$2" >/dev/null 2>&1 &
    local program=$!
    sleep 2
    xdotool "${@:3}"
    sleep 1
    import -window root "docs/pictures/$1"
    kill "$program"
    wait "$program" 2>/dev/null || true
}
# Twips, 15 to the pixel: the map top left, the 3D window over its lower right corner.
printf '[PosizioniForms]\nfrmProve_Left=150\nfrmProve_Top=75\nfrm3D_Left=6600\nfrm3D_Top=1700\n' \
    >"$base/config/Terravo Vortak.ini"
in_map=(mousemove 80 500 click 1 sleep 0.3)
shoot window-lines.png samples/davis_hills.dat "${in_map[@]}" key --delay 300 alt+v alt+p
shoot window-areas.png samples/volcano.dat "${in_map[@]}" key --delay 300 alt+a
shoot window-3d.png samples/davis_hills.dat key --delay 300 alt+r sleep 4

place() { # NAME LEFT TOP WIDTH HEIGHT, pixels
    printf '%s_Left=%d\n%s_Top=%d\n%s_Width=%d\n%s_Height=%d\n' "$1" $(($2 * 15)) "$1" $(($3 * 15)) \
        "$1" $(($4 * 15)) "$1" $(($5 * 15)) >>"$base/config/Terravo Vortak.ini"
}

# The terrain, with a point that is marked.
printf '[PosizioniForms]\n' >"$base/config/Terravo Vortak.ini"
place TerrainWindow 0 0 1000 640
printf '[Opening]\nWindows=sheet\n' >>"$base/config/Terravo Vortak.ini"
shoot window-terrain.png samples/volcano.dat key ctrl+shift+t sleep 3 mousemove 420 300 click 1 sleep 1

# Measuring: the sheet with a section, its window, and a comparison.
printf '[PosizioniForms]\n' >"$base/config/Terravo Vortak.ini"
place frmProve 0 430 620 290
place frm3D 0 430 620 290
place SheetWindow 0 0 620 430
place SectionWindow 620 0 640 360
place MeasureWindow 620 360 640 360
printf '[Opening]\nWindows=sheet\n' >>"$base/config/Terravo Vortak.ini"
site=$PWD/samples/site
shoot window-measure.png samples/site/points.csv \
    key alt+s sleep 1 key u sleep 3 type --args 1 "$site/boundary.txt" key Return sleep 2 \
    key alt+u sleep 1 key c sleep 3 type --args 1 "$site/levelled.csv" key Return sleep 2 \
    key alt+0 sleep 0.5 mousemove 88 280 click 1 sleep 0.3 mousemove 149 280 click 1 key Return sleep 1 \
    mousemove 850 12
