#!/usr/bin/env bash
# tools/test-package.sh [PACKAGE.deb]: tries the Debian package (by default the one of
# tools/package.sh, which is built first) in a clean Debian 12 under build/package-root, as root.
#
# The package is installed by apt into a system that holds nothing but apt, where both programs must
# find their libraries. Then come the tools that a desktop has, and the package is removed, installed
# again, started by its file type, and removed for good. The picture of the windows stays beside the
# root. The clean system and the packages from the network are kept for the next run.
set -euo pipefail
if [ $# -gt 0 ]; then
    package=$(realpath -- "$1")
fi
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
source tools/setup.sh
if [ "$(id -u)" -ne 0 ]; then
    echo "This needs root: it installs packages into a system of its own." >&2
    exit 1
fi
ensure_packages mmdebstrap
if [ -z "${package:-}" ]; then
    tools/package.sh
    package=$(realpath build/package/terravo_*.deb)
fi

work=$PWD/build/package-root
root=$work/root
mkdir -p "$work/archives/partial"

# The sources of this machine for Debian 12 itself.
if [ ! -s "$work/base.tar" ]; then
    mapfile -t sources < <(grep -lsE '^(deb |Suites:).*bookworm( |$)' /etc/apt/sources.list \
        /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources | xargs -r grep -li /debian)
    if [ ${#sources[@]} -eq 0 ]; then
        echo "This machine has no package source of Debian 12 (bookworm)." >&2
        exit 1
    fi
    echo "Making a clean Debian 12 (kept in $work/base.tar)"
    mmdebstrap --quiet --variant=apt bookworm "$work/base.new.tar" "${sources[@]}"
    mv "$work/base.new.tar" "$work/base.tar"
fi
rm -rf --one-file-system "$root"
mkdir "$root"
tar -xf "$work/base.tar" -C "$root" --numeric-owner --exclude='./dev/*'
cp -L /etc/resolv.conf /etc/hosts "$root/etc/"
{
    apt-config dump | grep -E '^Acquire::(https?::|Check-)' || true
    echo 'APT::Sandbox::User "root"; APT::Install-Recommends "false"; Acquire::Languages "none";'
} >"$root/etc/apt/apt.conf.d/90test"
printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d" # no services
chmod +x "$root/usr/sbin/policy-rc.d"
mkdir -p "$root/var/cache/apt/archives" "$root/srv/user"
cp "$package" "$root/srv/terravo.deb"

# Runs a command in the root, with mounts and processes that end with it.
inside() {
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child bash -c '
        root=$1 archives=$2
        shift 2
        mount -t proc proc "$root/proc"
        mount --rbind /dev "$root/dev"
        mount --bind "$archives" "$root/var/cache/apt/archives"
        exec chroot "$root" env -i PATH=/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
            HOME=/srv/user LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
            http_proxy="${http_proxy-}" https_proxy="${https_proxy-}" "$@"' \
        - "$root" "$work/archives" "$@"
}
apt_inside() {
    inside apt-get -qq -y "$@" >"$work/apt.log" 2>&1 ||
        { tail -n 20 "$work/apt.log" && echo "apt-get $* failed." && exit 1; }
}

failed=0
check() { # NAME COMMAND...: the command runs in the root
    local output
    if output=$(inside bash -c "${*:2}" 2>&1); then
        echo "ok      $1"
    else
        printf 'FAILED  %s\n%s\n' "$1" "$output"
        failed=1
    fi
}
samples=/usr/share/doc/terravo/examples

echo "On a system with nothing but apt:"
apt_inside update
apt_inside install /srv/terravo.deb
check "libraries are all there" '! ldd /usr/bin/terravo /usr/bin/terravo-batch |
    grep "not found"'
check "terravo --version" 'terravo --version | grep -x "terravo [0-9.]*"'
check "terravo-batch --version" 'terravo-batch --version | grep -x "terravo-batch [0-9.]*"'
check "terravo-batch writes all files, in Italian" "mkdir /srv/out &&
    cd /srv/out && terravo-batch --quiet --language it --labels --out . $samples/davis_hills.dat &&
    [ \$(ls | wc -l) -eq 6 ] && [ \$(stat -c %s map.png) -gt 5000 ]"
cp "$root/srv/out/map.png" "$work/map.png"
"$root/usr/bin/terravo-batch" --quiet --language it --labels --map "$root/srv/here.png" \
    samples/davis_hills.dat
check "the same map on this machine, with its fonts" "cmp /srv/here.png /srv/out/map.png"

echo "On a system with a display and the tools of a desktop:"
apt_inside install xvfb xauth x11-utils xdotool imagemagick desktop-file-utils appstream \
    shared-mime-info man-db libglib2.0-bin xdg-utils bash-completion hicolor-icon-theme
apt_inside purge terravo
cp samples/davis_hills.dat "$root/srv/user/survey.qrw"
kind='gio info -a standard::content-type /srv/user/survey.qrw'
check "before: the file type is unknown" "! $kind | grep terravo"
apt_inside install /srv/terravo.deb
check "gio knows the file type" "$kind | grep application/x-terravo-points"
echo '{"terravo": 1}' >"$root/srv/user/work.terravo"
check "gio knows projects" "${kind/survey.qrw/work.terravo} | grep application/x-terravo-project"
check "xdg-mime knows the file type" 'XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype /srv/user/survey.qrw |
    grep -x application/x-terravo-points'
check "terravo opens the file type" 'gio mime application/x-terravo-points |
    grep "Default application.*terravo.desktop"'
check "terravo opens projects" 'gio mime application/x-terravo-project |
    grep "Default application.*terravo.desktop"'
check "the menu entry is valid" \
    'desktop-file-validate --no-hints /usr/share/applications/terravo.desktop'
check "the catalogue entry is valid" \
    'appstreamcli validate --no-net /usr/share/metainfo/io.github.terravo.Terravo.metainfo.xml'
check "the menu entry, its icon and the catalogue entry fit together" \
    'appstreamcli validate-tree --no-net / | tee /dev/stderr | grep "Validation was successful"'
for page in terravo terravo-batch; do
    check "man $page" "man --warnings -E UTF-8 $page 2>&1 >/srv/page | { ! grep .; } &&
        grep SYNOPSIS /srv/page && lexgrog /usr/share/man/man1/$page.1.gz"
done
check "the completion loads" 'source /usr/share/bash-completion/bash_completion
    __load_completion terravo-batch; complete -p terravo-batch | grep _terravo_batch'
# A double click, in effect: the file's type starts the program.
cat >"$root/srv/windows.sh" <<'INSIDE'
gio open /srv/user/survey.qrw
for _ in $(seq 60); do
    window=$(xdotool search --onlyvisible --name '^Terravo$' | head -n 1)
    [ -z "$window" ] || break
    sleep 0.5
done
[ -n "$window" ] || { echo "no window" && exit 1; }
sleep 4
import -window root /srv/windows.png
xprop -id "$window" WM_CLASS
xprop -id "$window" _NET_WM_ICON | head -n 1
pid=$(pidof terravo)
kill "$pid"
for _ in $(seq 20); do
    [ -d "/proc/$pid" ] || exit 0
    sleep 0.25
done
echo "still running" && exit 1
INSIDE
check "the windows open by the file type, and close" \
    'xvfb-run -a -s "-screen 0 1280x800x24" bash /srv/windows.sh >/srv/windows.log 2>&1 ||
    { cat /srv/windows.log; false; }
    grep "WM_CLASS.*\"terravo\"" /srv/windows.log && grep "Icon (" /srv/windows.log &&
    [ "$(identify -format %k /srv/windows.png)" -gt 20 ]'
cp "$root/srv/windows.png" "$work/windows.png" || true

echo "After it is removed:"
inside dpkg -L terravo >"$root/srv/files"
apt_inside purge terravo
rm -rf "$root/srv/user/.local" "$root/srv/user/.config" "$root/srv/user/.cache" # the user's own
check "no file of it is left" 'while read -r file; do
        [ ! -e "$file" ] || dpkg -S "$file" >/dev/null 2>&1 || { echo "$file"; left=1; }
    done </srv/files; [ -z "${left-}" ]'
check "no file has its name" \
    '! find /etc /opt /usr /var -iname "*terravo*" -not -path "/var/cache/apt/*" | grep .'
check "menu and file types have forgotten it" \
    "! grep -rl terravo /usr/share/applications /usr/share/mime /etc/xdg 2>/dev/null | grep . &&
    ! $kind | grep terravo"
check "dpkg has forgotten it" '! dpkg -s terravo >/dev/null 2>&1'
rm -rf --one-file-system "$root"
echo "The map and a picture of the windows are in $work."
exit "$failed"
