#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Debian package of a build and looks into it.
#   package.sh BUILD_DIR VERSION
set -euo pipefail
build=$1
version=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

(cd "$build" && cpack -G DEB -B "$work") >"$work/cpack.log" 2>&1 || fail "$(cat "$work/cpack.log")"
package=$(echo "$work"/kestrova_"$version"_*.deb)
depends=$(dpkg-deb -f "$package" Depends)
for library in libc6 libstdc++6 libqt5core5a libqt5gui5 libqt5widgets5 libqcustomplot2.1; do
  grep -qF "$library" <<<"$depends" || fail "no dependency on $library: $depends"
done

dpkg-deb -x "$package" "$work/root"
for file in bin/kestrova bin/kestrova-measure lib/kestrova/plugins/qlpDataThroughputGraph.so \
  share/kestrova/translations/kestrova_de.qm share/doc/kestrova/LICENSE; do
  [ -s "$work/root/usr/$file" ] || fail "$file is not in the package"
done
if [ -e "$build/lib/kestrova/devices/aravis.so" ]; then
  if grep -qF libaravis <<<"$depends"; then fail "a dependency on Aravis: $depends"; fi
  package=$(echo "$work"/kestrova-aravis_"$version"_*.deb)
  depends=$(dpkg-deb -f "$package" Depends)
  grep -qF libaravis-0.8-0 <<<"$depends" || fail "kestrova-aravis depends on: $depends"
  contents=$(dpkg-deb -c "$package")
  for file in lib/kestrova/devices/aravis.so bin/kestrova-tap; do
    grep -qF "$file" <<<"$contents" || fail "$file is not in the package"
  done
fi
[ "$("$work/root/usr/bin/kestrova-measure" --version)" = "kestrova-measure $version" ] || fail "kestrova-measure --version"
