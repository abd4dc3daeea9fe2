#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and runs the benchmarks: medians of five warm runs. Arguments go to kestrova-bench.
set -euo pipefail
cd "$(dirname "$0")/.."
{
  scripts/setup.sh
  cmake --preset release
  cmake --build --preset release --target kestrova-bench
} >&2 # what comes out is the program's, also as JSON
exec build/release/bin/kestrova-bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
  --benchmark_min_warmup_time=0.2 "$@"
