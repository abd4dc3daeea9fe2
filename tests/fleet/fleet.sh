#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# A fleet on loopback: Prometheus with the files of packaging/fleet collects three processes with 24 cameras, one of
# which falls silent. Its alert fires, queries and the dashboard have the figures of the processes' own JSON, serving
# costs less than 1 % of a core, and a hundred bad collectors lose no frame.
#   fleet.sh KESTROVA_MEASURE
set -euo pipefail
measure=$1
files=$(cd "$(dirname "$0")/../../packaging/fleet" && pwd)
work=$(mktemp -d)
processes=()
trap 'kill "${processes[@]}" 2>/dev/null || true; wait; rm -rf "$work"' EXIT

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# within SECONDS COMMAND...: until it succeeds.
within() {
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    [ $SECONDS -lt $end ] || return 1
    sleep 0.2
  done
}

promtool check config "$files/prometheus.yml"
promtool test rules "$files/kestrova.rules.test.yml"
systemd-analyze --version >/dev/null 2>&1 && {
  sed "s,/usr/bin/kestrova-measure,$(realpath "$measure")," "$files/kestrova-measure.service" >"$work/kestrova-measure.service"
  verdict=$(systemd-analyze verify --man=no "$work/kestrova-measure.service" 2>&1) && [ -z "$verdict" ] || fail "$verdict"
  systemd-analyze security --offline=true --threshold=20 "$work/kestrova-measure.service" >"$work/security" ||
    fail "the service may do more than it did: $(tail -n 1 "$work/security")" # tenths
}

# rig NUMBER CAMERAS FAULTS [OPTION...]: starts a process, `address` is where it serves. Its last two cameras share a
# link, the last one has faults.
rig() {
  jq -n --argjson rig "$1" --argjson cameras "$2" --argjson faults "$3" '{
    links: [{name: "hub", rate: 20}],
    cameras: [range(1; $cameras + 1) | {
      id: "\($rig * 1000 + .)", sensor: {width: 320, height: 240}, transportSpeed: 3, queueFrames: 200,
      link: (if . > $cameras - 2 then "hub" else {rate: (4 + .)} end),
      faults: (if . == $cameras then $faults else {} end)}]}' >"$work/rig$1.json"
  "$measure" --cameras "$work/rig$1.json" --all --json --metrics 0 "${@:4}" >"$work/rig$1.out" 2>"$work/rig$1.err" &
  processes+=($!)
  within 10 grep -q 'metrics at' "$work/rig$1.err" || fail "rig $1: $(cat "$work/rig$1.err")"
  address=$(sed -n 's,.*metrics at http://\(.*\)/metrics,\1,p' "$work/rig$1.err")
}

targets=()
rig 1 8 '{}'
targets+=("$address")
rig 2 8 '{"noImage": [{"atMs": 8000, "forMs": 3600000}]}'
targets+=("$address")
rig 3 8 '{}'
targets+=("$address")

cp "$files/kestrova.rules.yml" "$work"
sed "s/_interval: .*/_interval: 1s/; /^ *- [0-9.]*:9841/d; /- targets:/s/:\$/: [$(tr ' ' , <<<"${targets[*]}")]/" \
  "$files/prometheus.yml" >"$work/prometheus.yml"
until port=$((20000 + RANDOM % 10000)) && ! (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; do :; done
prometheus --config.file="$work/prometheus.yml" --storage.tsdb.path="$work/data" --log.level=error \
  --web.listen-address="127.0.0.1:$port" &
processes+=($!)

query() {
  curl -sfG "http://127.0.0.1:$port/api/v1/query" --data-urlencode "query=$1"
}
has() {
  query "$1" | jq -e '.data.result | length > 0' >/dev/null
}
alert='ALERTS{alertname="KestrovaCameraSilent", alertstate="firing"}'
within 60 has "$alert" || fail "a camera fell silent, and there was no alert"
[ "$(query "$alert" | jq -r '.data.result[].metric | .instance + " " + .id')" = "${targets[1]} 2008" ] ||
  fail "another camera is silent: $(query "$alert")"
has 'ALERTS{severity="critical", alertname!="KestrovaCameraSilent"}' && fail "there is another alert: $(query ALERTS)"
echo "the alert fires"

# Lines up to the time at which the figures of a scrape were taken add up to it.
query '{job="kestrova", __name__=~"kestrova_.+"}' >"$work/served.json"
jq -n '[inputs | select(.type == "interval") | .at = (.time | capture("(?<s>.*)[.](?<ms>[0-9]+)Z") |
    (.s + "Z" | fromdate) + (.ms | tonumber) / 1000)]' "$work"/rig?.out >"$work/lines.json"
jq -r -n --slurpfile served "$work/served.json" --slurpfile lines "$work/lines.json" '
  def near($a; $b): ($a - $b | fabs) <= 1e-9 * ($b | fabs) + 1e-12;
  def total($key): map(.[$key]) | add;
  $served[0].data.result | map({name: .metric.__name__, id: .metric.id, instance: .metric.instance,
                                value: (.value[1] | tonumber)}) as $all
  | ($all | map(select(.name == "kestrova_update_timestamp_seconds") | {(.instance): .value}) | add) as $taken
  | $all | group_by(.id)[] | select(.[0].id) | . as $camera | .[0].id as $id
  | ($lines[0] | map(select(.id == $id and .at <= $taken[$camera[0].instance]))) as $until
  | [["frames_total", ($until | total("frames"))],
     ["missing_frames_total", ($until | total("missingFrames"))],
     ["blocks_total", ($until | total("blocks"))],
     ["buffer_overflows_total", ($until | total("overflows"))],
     ["silent_seconds_total", ($until | total("silentMs")) / 1000],
     ["min_throughput_bytes_per_second", ($until | map(.minThroughputMBps // infinite) | min) * 1e6],
     ["max_buffer_level_ratio", ($until | map(.maxBufferLevelPercent) | max) / 100],
     ["longest_gap_seconds", ($until | map(.longestGapMs) | max) / 1000]][]
  | . as [$name, $expected] | ($camera | map(select(.name == "kestrova_" + $name))) as $found
  | if ($found | length) == 1 and near($found[0].value; $expected) then "same"
    else "camera \($id): \($name) is \($found | map(.value)), not \($expected)" end' >"$work/compared"
grep -vx same "$work/compared" >&2 && fail "Prometheus and JSON differ"
[ "$(wc -l <"$work/compared")" = $((24 * 8)) ] || fail "only $(wc -l <"$work/compared") figures were compared"
echo "$(wc -l <"$work/compared") figures are the same"

jq -r '.panels[].targets[].expr | gsub("[$](rig|camera)"; ".*")' "$files/grafana-dashboard.json" | while read -r expression; do
  has "$expression" || fail "the dashboard shows nothing for $expression"
done

# A hundred connections: nothing, half a request, a request whose answer nobody reads.
bad=()
for i in {1..100}; do
  exec {connection}<>"/dev/tcp/${targets[0]/:/\/}"
  bad+=("$connection")
  [ $((i % 3)) = 0 ] || printf 'GET /metrics HTTP/1.1\r\n' >&"$connection"
  [ $((i % 3)) = 1 ] || printf '\r\n' >&"$connection"
done
for _ in {1..300}; do
  curl -s -m 5 -o "$work/answer" "http://${targets[2]}/metrics" &
done
sleep 3

kill "${processes[0]}"
within 10 grep -q '"summary"' "$work/rig1.out" || fail "a process does not end while collectors hang"
within 5 test ! -e "/proc/${processes[0]}" || fail "a process does not end while collectors hang"
kill "${processes[2]}"
within 10 grep -q '"summary"' "$work/rig3.out" || fail "a process does not end"
missing=$(jq -n '[inputs | select(.type == "summary") | .cameras[] | .missingFrames] | add' "$work/rig1.out" "$work/rig3.out")
[ "$missing" = 0 ] || fail "$missing frames were lost with bad collectors"
echo "a hundred bad collectors and three hundred at once: no frame lost"

# Threads that serve, and the one that publishes, with 24 cameras that are asked each second.
rig 4 24 '{}' --interval 1h
nanoseconds() {
  for task in "/proc/${processes[-1]}/task"/*; do
    [ "$(basename "$task")" = "${processes[-1]}" ] || grep -q civetweb "$task/comm" || continue
    cat "$task/schedstat"
  done | awk '{sum += $1} END {print sum}'
}
before=$(nanoseconds)
for _ in {1..20}; do
  curl -sf --compressed -o "$work/answer" "http://$address/metrics" || fail "no answer"
  sleep 1
done
cost=$((($(nanoseconds) - before) / 20))
grep -c '^kestrova_frames_total' "$work/answer" | grep -qx 24 || fail "not all cameras are served"
[ "$cost" -lt 10000000 ] || fail "serving 24 cameras takes $cost ns a second"
echo "serving 24 cameras each second takes $((cost / 1000)) us of a second"
