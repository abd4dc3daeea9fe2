#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs a build into an empty prefix, checks what lies there, runs both programs from there, and builds a plug-in
# with nothing but the installation.
#   installation.sh BUILD_DIR VERSION
set -euo pipefail
build=$1
version=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
unset LD_LIBRARY_PATH QT_PLUGIN_PATH DISPLAY WAYLAND_DISPLAY
export QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=$work/config LC_ALL=C.UTF-8

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

cmake --install "$build" --prefix "$prefix" >"$work/install.log" || fail "$(cat "$work/install.log")"

for file in share/man/man1/kestrova{,-measure}.1 share/applications/example.kestrova.Kestrova.desktop \
  share/metainfo/example.kestrova.Kestrova.metainfo.xml share/icons/hicolor/scalable/apps/kestrova.svg \
  share/kestrova/scenarios/default.json share/kestrova/fleet/kestrova-measure.service; do
  [ -s "$prefix/$file" ] || fail "$file is not installed"
done
desktop-file-validate "$prefix"/share/applications/*.desktop
appstreamcli validate --no-net "$prefix"/share/metainfo/*.xml >"$work/metainfo.log" || fail "$(cat "$work/metainfo.log")"
for page in "$prefix"/share/man/man1/*; do
  warnings=$(MANWIDTH=80 man --warnings --local-file "$page" 2>&1 >/dev/null)
  [ -z "$warnings" ] || fail "$warnings"
done

# Nothing that is installed may need the build.
while read -r binary; do
  if readelf -d "$binary" | grep -E 'R(UN)?PATH' | grep -qF "$build"; then
    fail "$binary looks for libraries in the build"
  fi
  if ldd "$binary" | grep -E 'not found|libvnCore' | grep -qvF "=> $prefix/"; then
    fail "$binary: $(ldd "$binary" | grep -E 'not found|libvnCore')"
  fi
done < <(find "$prefix" -type f \( -name 'kestrova*' -o -name '*.so*' \) -exec sh -c 'head -c 4 "$1" | grep -q ELF' _ {} \; -print)

# The measuring program runs where there are no windows. Without --metrics it needs one library less.
needed=$(readelf -d "$prefix/bin/kestrova-measure" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' |
  grep -vE '^(lib(vnCore|Qt5Core|prometheus-cpp-pull|stdc\+\+|gcc_s|m|c)|ld-linux.*)\.so\.' || true)
[ -z "$needed" ] || fail "kestrova-measure needs $needed"

# A page that is installed links to nothing that is not.
while IFS=: read -r page link; do
  [ -e "$(dirname "$page")/${link%%#*}" ] || fail "$page links to $link, which is not installed"
done < <(grep -roP '\]\(\K(?!https?:)[^)]+' "$prefix/share/doc/kestrova" --include='*.md')
[ -e "$prefix/share/doc/kestrova/docs/plugins.md" ] || fail "the documentation is not installed"

# A build without tests needs nothing that only they need.
cmake -S "$here/../.." -B "$work/bare" -G Ninja -DBUILD_TESTING=OFF -DCMAKE_DISABLE_FIND_PACKAGE_Qt5Test=ON \
  -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON -DCMAKE_DISABLE_FIND_PACKAGE_prometheus-cpp=ON >"$work/bare.log" 2>&1 || fail "$(cat "$work/bare.log")"
ninja -C "$work/bare" -t targets all | grep -E '(^|/)(tst_|kestrova-bench)' && fail "a build without tests has tests"

cmake -S "$prefix/share/doc/kestrova/docs/example-plugin" -B "$work/plugin" -DCMAKE_PREFIX_PATH="$prefix" -G Ninja >"$work/plugin.log" &&
  cmake --build "$work/plugin" >>"$work/plugin.log" || fail "$(cat "$work/plugin.log")"

measure=$prefix/bin/kestrova-measure
[ "$("$measure" --version)" = "kestrova-measure $version" ] || fail "kestrova-measure --version"
"$measure" --cameras "$prefix/share/kestrova/scenarios/default.json" --all --duration 300ms >"$work/measure.log" ||
  fail "kestrova-measure: $(cat "$work/measure.log")"

viewer=("$prefix/bin/kestrova" --settings "$work/settings.ini" --language de)
output=$("${viewer[@]}" --plugin-dir "$work/plugin/lib/kestrova/plugins" --start --quit-after 1s 2>&1) ||
  fail "kestrova: $output"
grep -q 'greeter: 4 cameras' <<<"$output" || fail "somebody else's plug-in was not loaded: $output"
grep -q '^\[DataThroughputGraph' "$work/settings.ini" || fail "the installed plug-in was not loaded: $output"
output=$("${viewer[@]}" --open Niemand 2>&1) && fail "a camera that does not exist: $output"
grep -q 'keine Kamera' <<<"$output" || fail "the installed translations were not found: $output"
