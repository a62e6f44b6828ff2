#!/usr/bin/env bash
# Starts the real program as its user and the companion program do: from a clipboard, from a command
# line. Usage: start-up.sh PROGRAM
#
# A display of its own (Xvfb, openbox) and folders of its own, so neither the user's screen nor the
# user's files are touched. Prints one line a case.
set -euo pipefail

program=$(realpath "${1:?usage: start-up.sh PROGRAM}")
for tool in Xvfb openbox xclip xdotool xprop; do
    command -v "$tool" >/dev/null || { echo "$tool is missing"; exit 1; }
done

source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"
# xclip and the window manager want folders too; the cases make their own.
mkdir -m 700 "$base/helpers"
export HOME=$base/helpers
start_display
start_window_manager

running=
end_case() { # CASE: ends its program and counts it
    [[ -z $running ]] || stop "$running"
    running=
    finish "$1"
}
fresh() { # new folders and an empty clipboard
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
    helpers+=("$running")
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
    comes_true "the window shows" settled
    xdotool key --clearmodifiers ctrl+q
    comes_true "the program ends" ended
}
nothing_loaded() {
    leave
    [[ ! -e $tmp/VORTAK24/livelli.txt ]] || problems+="; something was loaded"
}

fresh
survey "$home/sent by caller.QRW"
on_clipboard "$home/sent by caller.QRW"
start
comes_true "the file is loaded" loaded
comes_true "minimised" iconic
end_case "a path on the clipboard starts the program minimised and is loaded"

fresh
survey "$home/from a file manager.qrw"
on_clipboard "file://$home/from%20a%20file%20manager.qrw"
start
comes_true "the file is loaded" loaded
end_case "the address of a file on the clipboard is loaded as well"

fresh
on_clipboard "a shopping list, no path"
start
comes_true "neither minimised nor maximised" as_designed
nothing_loaded
end_case "text on the clipboard that is no path is ignored"

fresh
start
comes_true "maximised" maximised
nothing_loaded
end_case "without text on the clipboard the program starts maximised"

for quote in '' '"'; do
    fresh
    survey "$home/a b.qrw"
    start "$quote$home/a b.qrw$quote"
    comes_true "the file is loaded" loaded
    end_case "a path ${quote:+between quotes }on the command line is loaded"
done

fresh
survey "$home/other.dat"
start "$home/other.dat"
nothing_loaded
end_case "a file with another extension on the command line is ignored"

fresh
survey "$home/other.dat"
start --open "$home/other.dat"
comes_true "the file is loaded" loaded
leave
comes_true "the recent file is kept" grep -q '^1=.*other\.dat' "$config"
comes_true "the place is kept" grep -q '^frmProve_Left=' "$config"
end_case "--open loads any extension, and Ctrl+Q ends the program with everything kept"

fresh
survey "$tmp/VORTAK24/my_point.qrw"
start "$tmp/VORTAK24/my_point.qrw"
comes_true "the program ends" ended
comes_true "the triangles come back" grep -q POLYLINE "$tmp/VORTAK24/px.qrz"
comes_true "the path is the last line" test "$(tail -n 1 "$home/out")" = "$tmp/VORTAK24/px.qrz"
end_case "the companion program's file on the command line comes back as triangles"

fresh
survey "$tmp/VORTAK24/my_point.qrw"
on_clipboard "$tmp/VORTAK24/my_point.qrw"
start
comes_true "the program ends" ended
comes_true "the triangles come back" grep -q POLYLINE "$tmp/VORTAK24/px.qrz"
comes_true "the path is the last line" test "$(tail -n 1 "$home/out")" = "$tmp/VORTAK24/px.qrz"
end_case "the companion program's file on the clipboard comes back as triangles"

fresh
echo '1,2' >"$home/bad.qrw"
on_clipboard "something of the user's"
start "$home/bad.qrw"
comes_true "a message box titled ....." message_box
if [[ -z $problems ]]; then
    xdotool windowactivate --sync "$box" key Return
    comes_true "the program ends" ended
    comes_true "the clipboard is empty" not xclip -o -selection clipboard
    [[ -e $config ]] && grep -q PuntiDati "$config" && problems+="; recent files were kept"
fi
end_case "a bad file ends the program after its message, with nothing kept"

fresh
unset DISPLAY
(in_folders --help) >"$home/help" || problems+="; --help failed"
(in_folders --version) >"$home/version" || problems+="; --version failed"
comes_true "the help text" grep -q -- --open "$home/help"
comes_true "the version" grep -Eq '^terravo [0-9]+\.[0-9]+' "$home/version"
end_case "--help and --version are answered without a display"

end
