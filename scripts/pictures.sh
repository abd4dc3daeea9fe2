#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the pictures of README.md and docs/ anew: the real viewer with simulated cameras on a display of its own.
#   scripts/pictures.sh [SECONDS]    how long it measures before each picture, 19 s without argument
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target kestrova qlpDataThroughputGraph

seconds=${1:-19}
directory=docs/pictures
settings=$(mktemp -d)
trap 'rm -r "$settings"' EXIT
mkdir -p "$directory"

# picture NAME MODE [OPTION...]: 0 measures the data throughput, 1 counts frames
picture() {
  printf '[DataThroughputGraphPlugin]\nDTGTMeasMode=%d\n' "$2" > "$settings/$1.ini"
  scripts/with-display.sh build/release/bin/kestrova --settings "$settings/$1.ini" \
    --language en --start --quit-after "${seconds}s" --screenshot "$directory/$1.png" "${@:3}"
  echo "pictures.sh: $directory/$1.png"
}

# sixteen slow cameras, no two alike
cameras=()
for i in {1..16}; do
  cameras+=("{\"name\": \"CAM-$i\", \"id\": \"$((1000 + i))\", \"sensor\": {\"width\": 512, \"height\": 512,
    \"rateHz\": $((9 + i))}, \"link\": {\"rate\": $((5 + i)), \"stallEveryMs\": $((400 + 70 * i)), \"stallUs\": 90000}}")
done
(IFS=,; echo "{\"cameras\": [${cameras[*]}]}") > "$settings/sixteen.json"

picture throughput 0
picture counters 1
picture sixteen 0 --cameras "$settings/sixteen.json" --window-size 1280x800

# Aravis' fake camera in a network of its own; the tap needs root
if [ "$(id -u)" = 0 ] && cmake --build --preset release --target aravisModule kestrova-tap fakeGigeCamera; then
  export -f picture
  export settings directory seconds
  unshare --net bash -euo pipefail -c '
    ip link set lo up
    coproc build/release/bin/fakeGigeCamera 127.0.0.1 1024 20000 0
    picture host-arrival 0 --open gev:127.0.0.1'
fi
