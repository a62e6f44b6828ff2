#!/usr/bin/env bash
# dpkg-shlibdeps as CPack calls it, but without terravo_gis.so: what that library needs is
# recommended, since the programs load it only when a file of its formats is asked for.
set -euo pipefail
arguments=()
for argument in "$@"; do
    case $argument in
    */terravo_gis.so) ;;
    *) arguments+=("$argument") ;;
    esac
done
exec dpkg-shlibdeps "${arguments[@]}"
