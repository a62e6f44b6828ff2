#!/usr/bin/env bash
# Puts the real programs before disks, files, folders and clipboards that fail.
# Usage: faults.sh TERRAVO TERRAVO-BATCH
#
# Works in a folder of its own; the windows run on Qt's offscreen platform, the cases of clipboard
# and message box on a display of their own. What needs root (small disks, read-only mounts, folders
# of other users) or a display is named as skipped where there is none. Prints one line a case.
set -uo pipefail

program=$(realpath "${1:?usage: faults.sh TERRAVO TERRAVO-BATCH}")
batch=$(realpath "${2:?usage: faults.sh TERRAVO TERRAVO-BATCH}")
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/common.sh"
export QT_QPA_PLATFORM=offscreen

can_mount=no
mkdir "$base/try"
if [[ $EUID == 0 ]] && mount -t tmpfs -o size=4k tmpfs "$base/try" 2>/dev/null; then
    umount "$base/try"
    can_mount=yes
fi

small_disk() { # FOLDER SIZE
    mkdir -p "$1"
    mount -t tmpfs -o "size=$2,mode=700" tmpfs "$1"
    mounts+=("$1")
}
read_only() { # FOLDER: also for root, who ignores permissions
    if [[ $EUID == 0 ]]; then
        mount --bind "$1" "$1"
        mounts+=("$1")
        mount -o remount,ro,bind "$1"
    else
        chmod 555 "$1"
    fi
}

# --- terravo-batch: exit code and sentence ---

cd "$base" || exit 1
mkdir tmp
export TMPDIR=$base/tmp
survey() { # POINTS SEED
    awk -v n="$1" -v seed="$2" 'BEGIN { srand(seed); for (i = 0; i < n; ++i)
        printf "%.3f,%.3f,%.3f\n", rand() * 1000, rand() * 1000, rand() * 50 }'
}
survey 20000 1 >survey.dat
code=
run() { # ARGUMENTS...: of terravo-batch
    timeout 100 "$batch" "$@" >out 2>err
    code=$?
}
says() { # EXIT-CODE TEXT
    check "exit code $1, not $code" test "$code" = "$1"
    check "the sentence '$2', not '$(cat err)'" grep -qF -- "$2" err
    check "one line" test "$(wc -l <err)" = 1
}
left_clean() { check "nothing is left in the temporary folder" test -z "$(ls "$TMPDIR")"; }

run survey.dat --map /dev/full
says 4 'terravo-batch: /dev/full: No space left on device'
left_clean
finish "a device that is always full"

(
    ulimit -f 8
    "$batch" survey.dat --segments segments.txt --map map.png >out 2>err
)
code=$?
says 4 'File too large'
check "no output" test ! -e segments.txt -a ! -e map.png
left_clean
finish "a limit on the size of files"

if [[ $can_mount == yes ]]; then
    small_disk "$base/small" 64k
    echo old >small/map.png
    run survey.dat --map small/map.png
    says 4 'terravo-batch: small/map.png: No space left on device'
    check "the old file" grep -qx old small/map.png
    check "nothing beside it" test "$(ls small)" = map.png
    finish "a full disk under the output keeps the old file"

    mkdir small/tmp
    TMPDIR=$base/small/tmp run survey.dat --map map.png --segments s.txt
    says 4 'livelli.txt: No space left on device'
    check "nothing left" test -z "$(ls -A small/tmp)" -a ! -e map.png
    finish "a full disk under the temporary folder"
else
    skip "full disks" "only root can mount one"
fi
if [[ $EUID != 0 || $can_mount == yes ]]; then
    mkdir readonly
    read_only "$base/readonly"
    run survey.dat --map readonly/map.png
    says 4 'The folder readonly for the output "readonly/map.png" cannot be written to.'
    finish "a read-only folder for the output"
else
    skip "a read-only folder" "root ignores permissions and cannot mount here"
fi

mkdir folder.qrw
run folder.qrw --map map.png
says 1 'folder.qrw: Is a directory.'
run missing.qrw --map map.png
says 1 'missing.qrw: No such file or directory.'
run /dev/null --map map.png
says 3 '/dev/null: the file holds no points.'
run /dev/zero --map map.png
says 1 '/dev/zero: this is a binary file, not a text of points.'
finish "a folder, a missing file, an empty and an endless device as input"

truncate -s 5G sparse.dat
run sparse.dat --map map.png
says 1 'this is a binary file, not a text of points.'
run <(yes 1 | tr -d '\n') --map map.png
says 1 'longer than any record.'
rm sparse.dat
finish "5 GB of nothing, and an endless line"

mkfifo pipe
cat survey.dat >pipe &
run pipe --map map.png
check "exit code 0" test "$code" = 0
check "a picture" test -s map.png
wait $!
rm -f map.png
"$batch" pipe --map map.png >out 2>err &
waiting=$!
sleep 0.5
check "it waits for a writer" kill -0 "$waiting"
ended_when_told() { ! kill -TERM "$waiting" || ! kill -0 "$waiting"; }
comes_true "a signal ends it" ended_when_told
wait "$waiting" 2>/dev/null
check "no picture" test ! -e map.png
finish "a pipe: read from its writer, left at a signal"
rm -rf tmp/*

survey 200000 3 >long.dat
for delay in 0.02 0.04 0.06 0.08 0.1 0.15; do
    cp long.dat changing.dat
    timeout 100 "$batch" changing.dat --map map.png >out 2>err &
    sleep "$delay"
    case $delay in
    *2 | *6 | *.1) truncate -s 100000 changing.dat ;;
    *4) rm changing.dat ;;
    *) cat survey.dat >>changing.dat ;;
    esac
    wait $!
    code=$?
    check "exit code $code is 0 or 1 ($delay)" test "$code" -le 1
    [[ $code == 0 ]] || check "one sentence" grep -q '^terravo-batch: changing.dat.*\.$' err
done
left_clean
finish "a file that shrinks, grows or vanishes while it is read"
rm -f long.dat changing.dat

# --- terravo: the companion's file makes it end by itself ---

number=0
fresh() { # new folders
    number=$((number + 1))
    home=$base/user$number
    user=$home/data/VORTAK24
    config="$home/config/Terravo Vortak.ini"
    mkdir -p "$home/tmp" "$home/config" "$user/supporto"
    cp "$support"/* "$user/supporto/"
}
in_folders() { # COMMAND...: the subshell that calls this becomes the command
    exec env HOME="$home" XDG_DATA_HOME="$home/data" XDG_CONFIG_HOME="$home/config" \
        XDG_CACHE_HOME="$home/cache" TMPDIR="$home/tmp" "$@" >"$home/out" 2>"$home/err"
}
comes_back() { # [WORK-FOLDER]: points sent to that folder come back as triangles
    local work=${1:-$home/tmp/VORTAK24}
    [[ -d $work ]] || mkdir -m 700 -p "$work"
    head -n 500 "$base/survey.dat" >"$work/my_point.qrw"
    (in_folders timeout 60 "$program" "$work/my_point.qrw")
    code=$?
    check "exit code 0, not $code" test "$code" = 0
    check "the triangles" grep -q POLYLINE "$work/px.qrz"
    check "the path on the last line" test "$(tail -n 1 "$home/out")" = "$work/px.qrz"
}
support=/dev/null # the first start gets the shipped files
home=$base/user0
mkdir -p "$home/tmp" "$home/config" "$home/data"
comes_back
finish "the first start"
support=$home/data/VORTAK24/supporto

broken() { # KIND PATH: puts something else in the place of a file
    rm -rf "$2"
    case $1 in
    pipe) mkfifo "$2" ;;
    folder) mkdir "$2" ;;
    binary) head -c 200000 /dev/urandom >"$2" ;;
    huge) truncate -s 5G "$2" ;;
    zero) ln -s /dev/zero "$2" ;;
    esac
}
for kind in pipe folder binary huge zero; do
    fresh
    broken $kind "$user/sxconf.cff"
    comes_back
    fresh
    broken $kind "$user/supporto/_p.trl"
    comes_back
    fresh
    broken $kind "$user/color_menu.cff"
    comes_back
    finish "a $kind in the place of sxconf.cff, the language or the colours"
done

for kind in pipe folder huge; do
    fresh
    broken $kind "$config"
    comes_back
    check "set aside" test -e "$config.aside"
    check "new settings" grep -q my_point.qrw "$config"
    finish "a $kind in the place of the settings"
done
fresh
broken folder "$config.lock"
comes_back
check "the settings are saved" grep -q my_point.qrw "$config"
fresh
broken binary "$config"
comes_back
fresh
cp "$base/user$((number - 2))/config/Terravo Vortak.ini" "$home/whole.ini"
head -c $(($(stat -c %s "$home/whole.ini") / 2)) "$home/whole.ini" >"$config"
comes_back
fresh
{
    echo '[PuntiDati]'
    for i in 1 2 3 4 5; do printf '%d=' $i && head -c 100000 /dev/zero | tr '\0' x && echo; done
    printf '[PosizioniForms]\nfrmProve_Left=1e30\nfrmProve_Top=@Variant(\\0\\0\\0\\x7f)\n'
} >"$config"
comes_back
finish "a locked, a binary, a half and an absurd settings file"

if [[ $can_mount == yes ]]; then
    fresh
    small_disk "$home/config" 8k
    cp "$base/user0/config/Terravo Vortak.ini" "$config"
    cat /dev/zero >"$home/config/rest" 2>/dev/null
    comes_back
    check "the old settings" cmp "$config" "$base/user0/config/Terravo Vortak.ini"
    check "the sentence" grep -q 'the settings cannot be saved' "$home/err"
    finish "a full disk under the settings keeps the old ones"
    fresh
    mkdir -m 700 "$home/tmp/VORTAK24"
    chown 65534 "$home/tmp/VORTAK24"
    comes_back "$home/tmp/VORTAK24-$EUID"
    check "nothing in the other user's folder" test -z "$(ls "$home/tmp/VORTAK24")"
    finish "another user's folder in the place of the work folder"
else
    skip "full disk under the settings, another user's work folder" "only root can make them"
fi
fresh
mkdir "$home/elsewhere"
ln -s "$home/elsewhere" "$home/tmp/VORTAK24"
comes_back "$home/tmp/VORTAK24-$EUID"
check "nothing behind the link" test -z "$(ls "$home/elsewhere")"
fresh
touch "$home/tmp/VORTAK24"
comes_back "$home/tmp/VORTAK24-$EUID"
fresh
rmdir "$home/tmp"
comes_back "$user/exchange"
finish "a link, a file or nothing at all in the place of the work folder"
fresh
mkdir -m 700 -p "$home/tmp/VORTAK24"
echo secret >"$home/target"
ln -s "$home/target" "$home/tmp/VORTAK24/livelli.txt"
comes_back
check "what is behind the link" grep -qx secret "$home/target"
fresh
mkdir -m 700 -p "$home/tmp/VORTAK24"
mkfifo "$home/tmp/VORTAK24/livelli.txt"
comes_back
finish "a link and a pipe in the place of the segment file"

fresh
echo '<?xml version="1.0"?><fontconfig></fontconfig>' >"$home/fonts.conf"
FONTCONFIG_FILE=$home/fonts.conf comes_back
finish "no fonts"

# Two at once: whoever looks finds whole files, each from one of the two.
work_of() { # NAME: starts with its points, ends at a signal; the exchange files are in its folder
    in_folders "$program" "$base/$1.qrw" &
    local pid=$!
    until_true test -s "$home/tmp/VORTAK24/point_qrw.txt"
    sleep 0.3
    kill -TERM "$pid"
    wait "$pid"
}
survey 6000 5 >one.qrw
survey 9000 6 >two.qrw
for name in one two; do
    fresh
    work_of $name
    check "a signal ends it with everything saved" grep -q "$name.qrw" "$config"
    check "and its place" grep -q frmProve_Left "$config"
    mkdir "$base/whole_$name"
    cp "$home/tmp/VORTAK24/"* "$base/whole_$name/"
done
fresh
mkdir -m 700 -p "$home/tmp/VORTAK24"
shared=$home
(for _ in 1 2 3 4; do home=$shared work_of one; done) &
first=$!
(for _ in 1 2 3 4; do home=$shared work_of two; done) &
second=$!
looks=0
while kill -0 $first 2>/dev/null || kill -0 $second 2>/dev/null; do
    for file in livelli.txt point_qrw.txt px.qrz; do
        # Between a removal and the end of a drawing there is no file.
        cp "$shared/tmp/VORTAK24/$file" "$base/seen" 2>/dev/null || continue
        looks=$((looks + 1))
        cmp -s "$base/seen" "whole_one/$file" || cmp -s "$base/seen" "whole_two/$file" ||
            problems+="; $file is not whole"
    done
done
wait
check "the files were there ($looks looks)" test $looks -ge 20
check "nothing unfinished" test -z "$(ls "$shared/tmp/VORTAK24" | grep tmp)"
finish "two at once on one work folder ($looks looks)"

# --- On a display: clipboard and message boxes ---

for tool in Xvfb xclip xdotool; do
    command -v $tool >/dev/null || {
        skip "clipboard and message boxes" "$tool is missing"
        can_show=no
    }
done
if [[ ${can_show:-yes} == yes ]]; then
    start_display
    export QT_QPA_PLATFORM=xcb
    window() { xdotool search --onlyvisible --name "$1"; }
    start() { # ARGUMENTS...
        in_folders "$program" "$@" &
        starter=$!
        helpers+=($!)
    }
    answered() { # TITLE: with the Return key
        xdotool windowfocus "$(window "$1" | head -1)" key Return
        sleep 0.2
        ! window "$1"
    }
    ended() { not kill -0 "$starter"; }

    for kind in pipe zero; do
        fresh
        broken $kind "$home/points.qrw"
        start "$home/points.qrw"
        comes_true "a message box titled ....." window '^\.\.\.\.\.$'
        comes_true "the box closes" answered '^\.\.\.\.\.$'
        comes_true "the program ends" ended
        check "the reason" grep -q '^terravo: .*points.qrw.*\.$' "$home/err"
        finish "a $kind as the file to start with"
    done

    if [[ $can_mount == yes ]]; then
        fresh
        small_disk "$home/tmp/VORTAK24" 16k
        start "$base/one.qrw"
        comes_true "a message box" window '^Disegna/Livelli$'
        check "nothing unfinished" test -z "$(ls "$home/tmp/VORTAK24")"
        comes_true "the box closes" answered '^Disegna/Livelli$'
        check "it goes on" kill -0 "$starter"
        finish "a full disk under the work folder"
    fi

    fresh
    echo text >"$home/text"
    xclip -quiet -selection clipboard "$home/text" >/dev/null 2>&1 &
    owner=$!
    helpers+=($owner)
    until_true xclip -o -selection clipboard
    kill -STOP $owner
    start "$base/one.qrw"
    comes_true "the window shows" window '^Terravo$'
    comes_true "the file is drawn" test -s "$home/tmp/VORTAK24/point_qrw.txt"
    kill -TERM "$starter"
    comes_true "the program ends" ended
    kill -CONT $owner
    finish "an owner of the clipboard that never answers"
fi

end
