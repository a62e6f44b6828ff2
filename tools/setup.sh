# Sourced by ./run and ./test: installs what is missing from Debian's packages and builds a preset.

# Installs the named packages that are not installed yet; does nothing when all are there.
ensure_packages() {
    local missing=()
    local package
    for package in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed'; then
            missing+=("$package")
        fi
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    if ! command -v apt-get >/dev/null; then
        echo "This needs the packages: ${missing[*]}. Please install them and try again." >&2
        return 1
    fi
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
    fi
    echo "Installing from Debian: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

build_packages=(g++ cmake ninja-build qt6-base-dev libqt6opengl6-dev libepoxy-dev libegl1 libgl1-mesa-dri pkg-config libpng-dev libfontconfig-dev libexpat1-dev
    libsimdjson-dev libgdal-dev fonts-liberation qt6-translations-l10n)
test_packages=(libgtest-dev libgmp-dev clang-format clang-tidy xvfb openbox xclip xdotool x11-utils desktop-file-utils
    appstream shared-mime-info libglib2.0-bin bash-completion man-db mandoc bsdextrautils
    qt6-svg-dev poppler-utils)

# Configures a preset when its build folder is new, and builds what has changed. Further arguments go
# to the build.
build_preset() {
    local preset=$1
    if [ ! -f "build/$preset/build.ninja" ]; then
        cmake --preset "$preset" >"/dev/null"
    fi
    cmake --build --preset "$preset" "${@:2}"
}
