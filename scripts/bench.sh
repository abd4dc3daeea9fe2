#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and runs the benchmarks. Arguments go to kestrova-bench; without any, medians of five warm runs.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target kestrova-bench
if [ $# -eq 0 ]; then
  set -- --benchmark_repetitions=5 --benchmark_report_aggregates_only=true --benchmark_min_warmup_time=0.2
fi
exec build/release/bin/kestrova-bench "$@"
