#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs, by apt, what building and testing needs and is missing. Asks nothing; does nothing when all is there.
# With --check also the tools of scripts/check.sh.
set -euo pipefail

packages=(
  g++ cmake ninja-build git ca-certificates
  qtbase5-dev qtbase5-dev-tools qttools5-dev qttools5-dev-tools qttranslations5-l10n libqcustomplot-dev libbenchmark-dev
  prometheus-cpp-dev pkg-config libaravis-dev libusb-1.0-0-dev
  fonts-dejavu-core fonts-noto-cjk xvfb xauth
  desktop-file-utils appstream man-db dpkg-dev file
)
if [ "${1:-}" = --check ]; then
  packages+=(clang libclang-rt-dev clang-format clang-tidy valgrind libgl1-mesa-dri curl jq python3 tcpdump)
fi

missing=()
for package in "${packages[@]}"; do
  state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null || ! sudo -n true 2>/dev/null; then
    echo "setup.sh: these packages are missing and installing them needs root: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo -n)
fi

echo "setup.sh: installing ${missing[*]}"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
