#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and opens the viewer with the default cameras; arguments go to it. Without a display: measures the default
# cameras for ten seconds and saves a picture of the viewer; arguments go to kestrova-measure.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release

bin=build/release/bin
settings=build/run-settings.ini
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$bin/kestrova" --settings "$settings" "$@"
fi

echo "run.sh: there is no display: measuring from the command line and drawing the viewer into a picture."
if [ $# -gt 0 ]; then
  exec "$bin/kestrova-measure" "$@"
fi
status=0
"$bin/kestrova-measure" --all --duration 10s || status=$?
picture=build/kestrova.png
QT_QPA_PLATFORM=offscreen "$bin/kestrova" --settings "$settings" --start --quit-after 10s --screenshot "$picture"
echo "run.sh: the viewer's picture: $picture"
exit "$status"
