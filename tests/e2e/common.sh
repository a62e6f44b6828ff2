# Sourced by the scripts that run the real programs: a folder of their own, a display of their own,
# and the count of cases.
#
# Nothing is timed: until_true waits until something has happened, for at most WAIT seconds (20).

unset WAYLAND_DISPLAY DISPLAY QT_QPA_PLATFORM QT_SCALE_FACTOR DBUS_SESSION_BUS_ADDRESS
export LC_ALL=C.UTF-8
base=$(mktemp -d)
mkdir -m 700 "$base/runtime"
export XDG_RUNTIME_DIR=$base/runtime
helpers=() # processes that end with the script, the last one first
mounts=()

stop() { # PID: also one that is halted
    kill -CONT "$1" 2>/dev/null || true
    kill "$1" 2>/dev/null || true
    wait "$1" 2>/dev/null || true
}
clean_up() {
    local i
    for ((i = ${#helpers[@]} - 1; i >= 0; --i)); do stop "${helpers[i]}"; done
    for i in "${mounts[@]}"; do umount "$i"; done
    rm -rf "$base"
}
trap clean_up EXIT
trap 'exit 1' INT TERM HUP

not() { ! "$@"; }
until_true() { # CONDITION...: waits until it holds
    local ends=$((SECONDS + ${WAIT:-20}))
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < ends)) || return 1
        sleep 0.05
    done
}

# Without -noreset the server begins anew when its last client goes, and refuses who comes meanwhile.
start_display() {
    local number
    mkfifo "$base/display"
    Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset \
        3>"$base/display" 2>"$base/xvfb.log" &
    helpers+=($!)
    read -rt 20 number <"$base/display" || { cat "$base/xvfb.log"; exit 1; }
    export DISPLAY=:$number
}
# xprop succeeds without a window manager too, so its words are looked at.
managed() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; }
start_window_manager() { # one that did not come up is started once more
    local attempt
    for attempt in 1 2; do
        openbox >"$base/openbox.log" 2>&1 &
        helpers+=($!)
        ! WAIT=10 until_true managed || return 0
    done
    echo "no window manager:"
    cat "$base/openbox.log"
    exit 1
}

passed=0
failed=0
problems=
check() { # DESCRIPTION CONDITION...: the condition holds
    local description=$1
    shift
    "$@" >/dev/null 2>&1 || problems+="; not so: $description"
}
comes_true() { # DESCRIPTION CONDITION...: the same, within the time
    check "$1" until_true "${@:2}"
}
finish() { # CASE: counts it
    if [[ -z $problems ]]; then
        passed=$((passed + 1))
        echo "ok      $1"
    else
        failed=$((failed + 1))
        echo "FAILED  $1$problems"
    fi
    problems=
}
skip() { echo "skipped $1: $2"; }
end() { # with the count
    echo "$passed passed, $failed failed"
    ((failed == 0))
}
