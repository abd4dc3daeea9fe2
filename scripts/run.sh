#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and measures the default cameras for ten seconds. Arguments go to kestrova-measure.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target kestrova-measure
if [ $# -eq 0 ]; then
  set -- --all --duration 10s
fi
exec build/release/bin/kestrova-measure "$@"
