#!/usr/bin/env bash
# Runs a program on a display of its own (Xvfb, openbox).
#
# usage: on-display.sh PROGRAM [ARGUMENT...]
set -euo pipefail
source "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

for tool in Xvfb openbox xprop; do
    command -v "$tool" >/dev/null || { echo "$tool is missing"; exit 1; }
done
start_display
start_window_manager
TERRAVO_TEST_DISPLAY=1 QT_QPA_PLATFORM=xcb "$@"
