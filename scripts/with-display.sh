#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs a command on an X server of its own, which chooses a free number itself and ends with the command:
#   scripts/with-display.sh COMMAND [ARGUMENT...]
set -euo pipefail
exec {number}< <(exec Xvfb -displayfd 1 -screen 0 1920x1200x24 -dpi 96 -nolisten tcp 2>/dev/null)
server=$!
trap 'kill "$server" && wait "$server" || true' EXIT
read -r display <&"$number" || { echo "with-display.sh: the X server does not start" >&2; exit 1; }
# Nothing here draws with OpenGL, whose drivers leak memory of their own.
DISPLAY=:$display QT_QPA_PLATFORM=xcb QT_XCB_GL_INTEGRATION=none "$@"
