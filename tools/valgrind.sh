#!/usr/bin/env bash
# tools/valgrind.sh [BIN_FOLDER]: runs both programs under valgrind's memcheck and fails on an error
# or a lost block. Without a folder the preset dev is built and used.
#
# terravo-batch writes all its files, as lines and as areas; terravo, on a display of its own, opens
# a file, changes the map, turns the 3D view and is closed.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
source tools/setup.sh
ensure_packages "${build_packages[@]}" valgrind xvfb openbox xdotool
if [ $# -eq 0 ]; then
    build_preset dev
fi
bin=${1:-build/dev/bin}

base=$(mktemp -d)
helpers=()
clean_up() {
    kill "${helpers[@]}" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$base"
}
trap clean_up EXIT
trap 'exit 1' INT TERM HUP
unset WAYLAND_DISPLAY QT_QPA_PLATFORM QT_SCALE_FACTOR DBUS_SESSION_BUS_ADDRESS
export HOME=$base XDG_DATA_HOME=$base/data XDG_CONFIG_HOME=$base/config TMPDIR=$base/tmp
export XDG_RUNTIME_DIR=$base/runtime LC_ALL=C.UTF-8
mkdir -p "$TMPDIR" "$base/config" "$base/out"
mkdir -m 700 "$XDG_RUNTIME_DIR"

memcheck=(valgrind --quiet --error-exitcode=99 --leak-check=full --show-leak-kinds=definite
    --errors-for-leak-kinds=definite --num-callers=30 --suppressions=tests/valgrind.supp)
failed=0
judge() { # NAME EXIT_CODE
    if [ "$2" -eq 0 ]; then
        echo "clean   $1"
    else
        echo "FAILED  $1: exit code $2"
        failed=1
    fi
}

for mode in lines areas; do
    code=0
    "${memcheck[@]}" "$bin/terravo-batch" --quiet --out "$base/out" --mode "$mode" --labels \
        --triangles --perimeter samples/davis_hills.dat || code=$?
    judge "terravo-batch, $mode" "$code"
done

mkfifo "$base/display"
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$base/display" 2>/dev/null &
helpers+=($!)
read -rt 20 number <"$base/display"
export DISPLAY=:$number
openbox >/dev/null 2>&1 &
helpers+=($!)

"${memcheck[@]}" "$bin/terravo" --open samples/davis_hills.dat &
program=$!
helpers+=("$program")
spent() { awk '{ print $14 + $15 }' "/proc/$program/stat" 2>/dev/null || echo gone; }
settle() { # waits until the program has rested for two seconds, half a minute at most
    local before=-1 now rounds=0
    now=$(spent)
    while [ "$now" != gone ] && [ "$((now - before))" -gt 4 ] && [ "$((rounds++))" -lt 15 ]; do
        before=$now
        sleep 2
        now=$(spent)
    done
}
windows() { xdotool search --all --onlyvisible --name "$1" 2>/dev/null | head -1 || true; }
for _ in $(seq 240); do
    main=$(windows '^Terravo$')
    [ -z "$main" ] || break
    sleep 0.5
done
settle
code=0
if [ -n "${main:-}" ]; then
    # The 3D window has the keys after a file is opened; a click gives them to the map.
    xdotool windowactivate --sync "$main" key alt+r
    sleep 15 # some steps of the rotation
    xdotool key alt+s # the button says Stop now
    settle
    xdotool mousemove 80 500 click 1
    for keys in alt+v alt+p alt+a; do
        xdotool key "$keys"
        settle
    done
    xdotool windowactivate --sync "$main" windowsize "$main" 700 500
    settle
    xdotool windowactivate --sync "$main" key ctrl+q
fi
for _ in $(seq 240); do
    [ "$(spent)" != gone ] && [ "$(awk '{ print $3 }' "/proc/$program/stat")" != Z ] || break
    sleep 0.5
done
kill "$program" 2>/dev/null || true
wait "$program" || code=$?
judge "terravo" "$code"
exit "$failed"
