#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# What must hold before a change is done: format, warnings and clang-tidy, tests under sanitizers, races, memory,
# load, fuzzing, a fleet under Prometheus, GigE Vision against a fake camera, soak.
#   scripts/check.sh [STEP...]    steps: format warnings tidy asan races memory load fuzz fleet gige soak; all without arguments
# clang-tidy looks at what has changed since $CHECK_BASE, by default since the upstream branch, else at all.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh --check

changed_since() { git diff --name-only --diff-filter=d "$1" -- "$2" ':!docs' ':!tests/fuzz'; }
sources() { git ls-files -- '*.cpp' '*.h'; }

step_format() {
  sources | xargs clang-format --dry-run -Werror
}

step_warnings() {
  cmake --preset debug >/dev/null
  cmake --build --preset debug
}

# The compilation that clang-tidy sees is configured without gcc's precompiled headers, and built only as far as CMake
# asks before moc and uic write.
step_tidy() {
  cmake --preset tidy >/dev/null
  cmake --build build/tidy --target autogen
  local base
  base=${CHECK_BASE:-$(git merge-base HEAD '@{upstream}' 2>/dev/null || git hash-object -t tree /dev/null)}
  # A header is looked at from the first file that includes it. What is no part of that build is left out.
  {
    changed_since "$base" '*.cpp'
    changed_since "$base" '*.h' | sed 's,.*/,,' | while read -r header; do
      git grep -l "#include .*\b$header[\">]" -- '*.cpp' ':!docs' ':!tests/fuzz' | sed -n 1p || true
    done
  } | sort -u | xargs -r -P "$(nproc)" -n 4 clang-tidy --quiet -p build/tidy
}

step_asan() {
  cmake --preset asan >/dev/null
  cmake --build --preset asan
  ctest --preset asan
}

# under_valgrind LABEL OPTION...: the tests of a label with few repetitions, as many at once as there are processors.
under_valgrind() {
  local label=$1
  shift
  step_warnings
  mkdir -p build/valgrind
  ctest --test-dir build/debug -N -L "^$label\$" | sed -n 's/.*Test *#[0-9]*: //p' |
    QT_NO_GLIB=1 QTEST_FUNCTION_TIMEOUT=1200000 KESTROVA_TEST_SCALE=5 QT_QPA_PLATFORM=offscreen xargs -P "$(nproc)" -I TEST sh -c '
      "$@" build/debug/bin/TEST >build/valgrind/TEST.log 2>&1 && echo "TEST: nothing found" ||
        { cat build/valgrind/TEST.log; echo "TEST: failed"; exit 1; }' \
      sh valgrind -q --error-exitcode=1 "$@"
}

# Helgrind knows QMutex, but not GLib's locks, so Qt goes without GLib; --fair-sched keeps a polling thread from
# starving the others.
step_races() {
  under_valgrind races --tool=helgrind --fair-sched=yes --history-level=approx \
    --suppressions=tests/support/helgrind.supp
}

step_memory() {
  under_valgrind engine --leak-check=full --errors-for-leak-kinds=definite --show-leak-kinds=definite \
    --suppressions=tests/support/memcheck.supp
}

# The viewer with 64 cameras that all measure.
step_load() {
  cmake --preset release >/dev/null
  cmake --build --preset release --target tst_load
  KESTROVA_LOAD_CAMERAS=64 KESTROVA_LOAD_SECONDS=30 QT_QPA_PLATFORM=offscreen build/release/bin/tst_load
}

# What is found stays in build/fuzz, the minimized file belongs into tests/fuzz/corpus.
step_fuzz() {
  cmake --preset fuzz >/dev/null
  cmake --build --preset fuzz --target fuzz_scenario
  mkdir -p build/fuzz/corpus
  # Qt's JSON parser loses what it has read before an error.
  ASAN_OPTIONS=detect_leaks=0 build/fuzz/bin/fuzz_scenario -max_total_time="${KESTROVA_FUZZ_SECONDS:-60}" \
    -max_len=4096 -timeout=5 -rss_limit_mb=1024 -verbosity=0 -print_final_stats=1 \
    -dict=tests/fuzz/scenario.dict -artifact_prefix=build/fuzz/ build/fuzz/corpus tests/fuzz/corpus scenarios
}

# Debian's Prometheus is unpacked where it is not installed: its package starts a service.
step_fleet() {
  local tools=$PWD/build/prometheus
  PATH=$PATH:$tools/usr/bin
  if ! command -v prometheus promtool >/dev/null; then
    mkdir -p "$tools"
    (cd "$tools" && apt-get download -qq prometheus && dpkg-deb -x prometheus_*.deb . && rm prometheus_*.deb)
  fi
  cmake --preset release >/dev/null
  cmake --build --preset release --target kestrova-measure
  tests/fleet/fleet.sh build/release/bin/kestrova-measure
}

# GigE Vision against Aravis' fake camera, ten minutes of it at 100 MB/s (KESTROVA_GIGE_SECONDS). One part alone:
#   tests/gige/gige.py build/release/bin truth|beside|faults|load
# arv-camera-test is unpacked where it is not installed: its package has a viewer that needs much more.
step_gige() {
  local tools=$PWD/build/aravis-tools
  PATH=$PATH:$tools/usr/bin
  if ! command -v arv-camera-test-0.8 >/dev/null; then
    mkdir -p "$tools"
    (cd "$tools" && apt-get download -qq aravis-tools && dpkg-deb -x aravis-tools_*.deb . && rm aravis-tools_*.deb) ||
      echo "check.sh: without arv-camera-test"
  fi
  cmake --preset release >/dev/null
  cmake --build --preset release --target kestrova-measure aravisModule fakeGigeCamera tst_aravis
  # 200 times from opening to closing
  KESTROVA_TEST_SCALE=800 QTEST_FUNCTION_TIMEOUT=1200000 build/release/bin/tst_aravis manyTimes || [ $? = 77 ]
  tests/gige/gige.py build/release/bin
}

# Ten minutes of starting, stopping and fidgeting; QTEST_FUNCTION_TIMEOUT is in milliseconds.
step_soak() {
  cmake --preset release >/dev/null
  cmake --build --preset release --target tst_soak
  QTEST_FUNCTION_TIMEOUT=1200000 KESTROVA_SOAK_SECONDS=600 scripts/with-display.sh build/release/bin/tst_soak
}

[ $# -gt 0 ] || set -- format warnings tidy asan races memory load fuzz fleet gige soak
for step in "$@"; do
  echo "== $step"
  "step_$step"
done
echo "check.sh: all well"
