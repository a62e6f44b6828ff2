# Sourced by the scripts that run the real programs: a folder of their own, a display of their own,
# and the count of cases.
#
# Nothing is timed: until_true waits until something has happened, for at most WAIT seconds (60).
#
# A script runs itself once more, with a mark in its environment that all inherit which it starts. At
# its end, or after LIMIT seconds (280), whatever still has the mark is killed: a test that waits for
# the end of the script's output ends with it, however busy the machine is.

with_mark() { # the numbers of the processes that have it
    grep -lszx "TERRAVO_TEST=$TERRAVO_TEST" /proc/[0-9]*/environ | cut -d / -f 3
}
kill_marked() {
    local left attempt
    for attempt in {1..50}; do
        mapfile -t left < <(with_mark)
        ((${#left[@]})) || return 0
        kill -KILL "${left[@]}" 2>/dev/null || true
        sleep 0.1
    done
    echo "still running: ${left[*]}"
    return 1
}
if [[ -z ${TERRAVO_TEST:-} ]]; then
    mark=$$.$RANDOM$RANDOM
    scratch=$(mktemp -d)
    TERRAVO_TEST=$mark TMPDIR=$scratch timeout --kill-after=10 "${LIMIT:-280}" "$0" "$@" <&0 &
    inner=$!
    trap 'kill -TERM $inner 2>/dev/null' INT TERM HUP
    code=0
    wait $inner || code=$?
    while kill -0 $inner 2>/dev/null; do wait $inner || code=$?; done
    ((code != 124 && code != 137)) || echo "ended after ${LIMIT:-280} seconds"
    TERRAVO_TEST=$mark
    kill_marked || code=1
    awk -v inside="$scratch/" 'index($2, inside) == 1 { print $2 }' /proc/self/mounts |
        sort -r | xargs -r umount
    rm -rf "$scratch"
    exit "$code"
fi

unset WAYLAND_DISPLAY DISPLAY QT_QPA_PLATFORM QT_SCALE_FACTOR DBUS_SESSION_BUS_ADDRESS
export LC_ALL=C.UTF-8
base=$(mktemp -d)
mkdir -m 700 "$base/runtime"
export XDG_RUNTIME_DIR=$base/runtime
helpers=() # processes that end with the script, the last one first
mounts=()

stop() { # PID: also one that is halted, or that does not listen
    kill -CONT "$1" 2>/dev/null || true
    kill "$1" 2>/dev/null || true
    if ! WAIT=${PATIENCE:-10} until_true not kill -0 "$1"; then
        echo "killed  $(tr '\0' ' ' <"/proc/$1/cmdline" || true)"
        kill -KILL "$1" || true
    fi 2>/dev/null
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
    local ends=$((SECONDS + ${WAIT:-60}))
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
        3>"$base/display" >"$base/xvfb.log" 2>&1 &
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
