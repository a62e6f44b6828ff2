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
