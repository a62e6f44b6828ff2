#!/usr/bin/env bash
# Starts the real program as its user and the companion program do: from a clipboard, from a command
# line. Usage: start-up.sh PROGRAM
#
# A display of its own (Xvfb, openbox) and folders of its own, so neither the user's screen nor the
# user's files are touched. Nothing is timed: every step waits until it has happened, for at most
# WAIT seconds (20), and prints one line a case.
set -euo pipefail

program=$(realpath "${1:?usage: start-up.sh PROGRAM}")
for tool in Xvfb openbox xclip xdotool xprop; do
    command -v "$tool" >/dev/null || { echo "$tool is missing"; exit 1; }
done

base=$(mktemp -d)
helpers=()
running=
stop() {
    kill "$1" 2>/dev/null || true
    wait "$1" 2>/dev/null || true
}
clean_up() {
    for pid in $running $(printf '%s\n' "${helpers[@]}" | tac); do stop "$pid"; done
    rm -rf "$base"
}
trap clean_up EXIT
trap 'exit 1' INT TERM HUP

until_true() { # CONDITION...: waits until it holds
    local ends=$((SECONDS + ${WAIT:-20}))
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < ends)) || return 1
        sleep 0.05
    done
}
not() { ! "$@"; }

unset WAYLAND_DISPLAY QT_QPA_PLATFORM QT_SCALE_FACTOR DBUS_SESSION_BUS_ADDRESS
export LC_ALL=C.UTF-8
# xclip and the window manager want folders too; the cases make their own.
mkdir -m 700 "$base/helpers" "$base/runtime"
export HOME=$base/helpers XDG_RUNTIME_DIR=$base/runtime
mkfifo "$base/display"
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$base/display" 2>"$base/xvfb.log" &
helpers+=($!)
read -rt 20 number <"$base/display" || { cat "$base/xvfb.log"; exit 1; }
export DISPLAY=:$number
# xprop succeeds without a window manager too, so its words are looked at. A window manager that did
# not come up is started once more.
managed() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; }
for attempt in 1 2; do
    openbox >"$base/openbox.log" 2>&1 &
    helpers+=($!)
    WAIT=10 until_true managed && break
    [[ $attempt == 1 ]] || { echo "no window manager:"; cat "$base/openbox.log"; exit 1; }
done

passed=0
failed=0
problems=
check() { # DESCRIPTION CONDITION...: the condition comes true
    local description=$1
    shift
    until_true "$@" || problems+="; not so: $description"
}
finish() { # CASE: counts it, and ends its program
    [[ -z $running ]] || stop "$running"
    running=
    if [[ -z $problems ]]; then
        passed=$((passed + 1))
        echo "ok      $1"
    else
        failed=$((failed + 1))
        echo "FAILED  $1$problems"
    fi
}
fresh() { # new folders and an empty clipboard
    problems=
    home=$(mktemp -d "$base/user.XXXXXX")
    tmp=$home/tmp
    config="$home/config/Terravo Vortak.ini"
    mkdir "$tmp" "$home/config" "$home/data"
    stop_clipboard
}
owner=
stop_clipboard() { # what its owner put on the clipboard goes with it
    [[ -z $owner ]] || stop "$owner"
    owner=
    until_true not xclip -o -selection clipboard
}
on_clipboard() { # TEXT
    printf %s "$1" | xclip -quiet -selection clipboard >/dev/null 2>&1 &
    owner=$!
    helpers+=("$owner")
    until_true xclip -o -selection clipboard
}
# The program in the folders of the case; a subshell that calls this becomes the program.
in_folders() {
    exec env HOME="$home" XDG_DATA_HOME="$home/data" XDG_CONFIG_HOME="$home/config" \
        XDG_CACHE_HOME="$home/cache" TMPDIR="$tmp" "$program" "$@"
}
start() { # ARGUMENTS...
    in_folders "$@" >"$home/out" 2>"$home/err" &
    running=$!
}
survey() { # PATH
    mkdir -p "$(dirname "$1")"
    printf '%s\n' 1,1,0 9,1.5,4 8,8,10 .5,7,6 5,4,3 >"$1"
}

window() { window=$(xdotool search --all --onlyvisible --pid "$running" --name '^Terravo$' | head -1) && [[ -n $window ]]; }
any_window() { window=$(xdotool search --all --pid "$running" --name '^Terravo$' | head -1) && [[ -n $window ]]; }
iconic() { any_window && xprop -id "$window" WM_STATE | grep -q 'window state: Iconic'; }
maximised() { window && xprop -id "$window" _NET_WM_STATE | grep -q 'MAXIMIZED_VERT.*MAXIMIZED_HORZ'; }
as_designed() { window && not iconic && not maximised; }
loaded() { [[ -s $tmp/VORTAK24/livelli.txt ]]; }
message_box() { box=$(xdotool search --all --onlyvisible --pid "$running" --name '^\.\.\.\.\.$' | head -1) && [[ -n $box ]]; }
ended() { not kill -0 "$running"; }
settled() { window && xdotool windowactivate "$window" && [[ $(xdotool getactivewindow) == "$window" ]]; }
leave() { # by the keyboard: handled after the start, so what the start loads has been loaded
    check "the window shows" settled
    xdotool key --clearmodifiers ctrl+q
    check "the program ends" ended
}
nothing_loaded() {
    leave
    [[ ! -e $tmp/VORTAK24/livelli.txt ]] || problems+="; something was loaded"
}

fresh
survey "$home/sent by caller.QRW"
on_clipboard "$home/sent by caller.QRW"
start
check "the file is loaded" loaded
check "minimised" iconic
finish "a path on the clipboard starts the program minimised and is loaded"

fresh
survey "$home/from a file manager.qrw"
on_clipboard "file://$home/from%20a%20file%20manager.qrw"
start
check "the file is loaded" loaded
finish "the address of a file on the clipboard is loaded as well"

fresh
on_clipboard "a shopping list, no path"
start
check "neither minimised nor maximised" as_designed
nothing_loaded
finish "text on the clipboard that is no path is ignored"

fresh
start
check "maximised" maximised
nothing_loaded
finish "without text on the clipboard the program starts maximised"

for quote in '' '"'; do
    fresh
    survey "$home/a b.qrw"
    start "$quote$home/a b.qrw$quote"
    check "the file is loaded" loaded
    finish "a path ${quote:+between quotes }on the command line is loaded"
done

fresh
survey "$home/other.dat"
start "$home/other.dat"
nothing_loaded
finish "a file with another extension on the command line is ignored"

fresh
survey "$home/other.dat"
start --open "$home/other.dat"
check "the file is loaded" loaded
leave
check "the recent file is kept" grep -q '^1=.*other\.dat' "$config"
check "the place is kept" grep -q '^frmProve_Left=' "$config"
finish "--open loads any extension, and Ctrl+Q ends the program with everything kept"

fresh
survey "$tmp/VORTAK24/my_point.qrw"
start "$tmp/VORTAK24/my_point.qrw"
check "the program ends" ended
check "the triangles come back" grep -q POLYLINE "$tmp/VORTAK24/px.qrz"
check "the path is the last line" test "$(tail -n 1 "$home/out")" = "$tmp/VORTAK24/px.qrz"
finish "the companion program's file on the command line comes back as triangles"

fresh
survey "$tmp/VORTAK24/my_point.qrw"
on_clipboard "$tmp/VORTAK24/my_point.qrw"
start
check "the program ends" ended
check "the triangles come back" grep -q POLYLINE "$tmp/VORTAK24/px.qrz"
check "the path is the last line" test "$(tail -n 1 "$home/out")" = "$tmp/VORTAK24/px.qrz"
finish "the companion program's file on the clipboard comes back as triangles"

fresh
echo '1,2' >"$home/bad.qrw"
on_clipboard "something of the user's"
start "$home/bad.qrw"
check "a message box titled ....." message_box
if [[ -z $problems ]]; then
    xdotool windowactivate --sync "$box" key Return
    check "the program ends" ended
    check "the clipboard is empty" not xclip -o -selection clipboard
    [[ -e $config ]] && grep -q PuntiDati "$config" && problems+="; recent files were kept"
fi
finish "a bad file ends the program after its message, with nothing kept"

fresh
unset DISPLAY
(in_folders --help) >"$home/help" || problems+="; --help failed"
(in_folders --version) >"$home/version" || problems+="; --version failed"
check "the help text" grep -q -- --open "$home/help"
check "the version" grep -Eq '^terravo [0-9]+\.[0-9]+' "$home/version"
finish "--help and --version are answered without a display"

echo "$passed passed, $failed failed"
((failed == 0))
