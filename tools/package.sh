#!/usr/bin/env bash
# Builds the Debian package into build/package and lets lintian look at it: the release preset with
# Debian's hardening flags, in a build folder of its own.
set -euo pipefail
cd -- "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/.."
source tools/setup.sh
ensure_packages "${build_packages[@]}" dpkg-dev lintian

# No debug symbols: the programs in the package are stripped anyway.
export DEB_CXXFLAGS_MAINT_STRIP=-g
build=build/package
if [ ! -f "$build/build.ninja" ]; then
    cmake --preset release -B "$build" -DTERRAVO_INSTALLED_FILES_ONLY=ON \
        -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)" \
        -DCMAKE_EXE_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS)" >/dev/null
fi
cmake --build "$build"
rm -f "$build"/terravo_*.deb
(cd "$build" && cpack)
package=$(ls "$build"/terravo_*.deb)
lintian --tag-display-limit 0 --fail-on error "$package"
dpkg-deb --info "$package"
echo "The package is $package."
