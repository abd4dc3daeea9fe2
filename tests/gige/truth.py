# SPDX-License-Identifier: GPL-3.0-or-later
"""Stamps and figures of kestrova-measure against those of a capture by tcpdump.

The throughput of a capture is found by the formulas of docs/measurements.md and docs/real-cameras.md, without the
program's own evaluation, in whole numbers throughout.
"""

import csv
import shutil
import signal
import struct
import subprocess
import time

import rig
from rig import Camera, Run, require

TICK_NS = 4
LEADER, TRAILER, PAYLOAD = 1, 2, 3
CONTROL_PORT = 3956
ID_COUNT = 65535  # 0 is none


def packets(file):
    """(id of the frame, id of the packet, kind, bytes of the frame, stamp in ns) of each packet of a stream."""
    data = open(file, "rb").read()
    if struct.unpack_from("<I", data)[0] != 0xA1B23C4D:
        raise ValueError("no capture with stamps in ns")
    at = 24
    while at + 16 <= len(data):
        seconds, nanoseconds, captured, _ = struct.unpack_from("<IIII", data, at)
        packet = data[at + 16 + 14 : at + 16 + captured]  # behind the Ethernet header
        at += 16 + captured
        header = (packet[0] & 15) * 4
        if len(packet) < header + 16 or packet[9] != 17:
            continue
        source, target, length = struct.unpack_from(">HHH", packet, header)
        frame, information = struct.unpack_from(">HI", packet, header + 10)
        kind = information >> 24
        if CONTROL_PORT not in (source, target) and kind in (LEADER, TRAILER, PAYLOAD):
            yield frame, information & 0xFFFFFF, kind, length - 16, seconds * 10**9 + nanoseconds


def curves(file):
    """Of each whole frame, in the order of arrival: {id: [(bytes, time in ns), ...]}"""
    frames = {}
    for frame, packet, kind, size, stamp in packets(file):
        frames.setdefault(frame, {}).setdefault(packet, (kind, size, stamp))
    found = {}
    for frame, parts in frames.items():
        last = max(parts)
        if len(parts) == last + 1 and parts[0][0] == LEADER and parts[last][0] == TRAILER:
            found[frame] = curve(parts[0][2], [parts[i][1:] for i in range(1, last)])
    return found


def curve(leader, arrivals):
    points = []
    total = 0
    for size, stamp in arrivals:
        total += size
        if points and stamp <= points[-1][1]:
            points[-1] = (total, points[-1][1])
        else:
            points.append((total, stamp))
    begin = leader
    if len(points) > 1:
        (size, stamp), (next_size, next_stamp) = points[:2]
        begin = max(leader, stamp - (next_stamp - stamp) * size // (next_size - size))
    return [(0, begin)] + points


def block_times(points, period):
    """When the first word of each block had arrived, in ns."""
    times = []
    step = 1
    for offset in range(8, points[-1][0] // period * period + 1, period):
        while points[step][0] < offset:
            step += 1
        (before, since), (after, until) = points[step - 1 : step + 1]
        times.append(since + (until - since) * (offset - before) // (after - before))
    return times


def figures(frames, period):
    """Average and minimum throughput in MB/s of frames of block times."""
    average = sum(len(times) * period / (times[-1] - times[0]) * 1000 for times in frames) / len(frames)
    longest = max(after - before for times in frames for before, after in zip(times, times[1:]))
    return average, period / longest * 1000


def captured_frames(camera, run, expected):
    """Whole frames by their number in the run, from a capture of all that lasts."""
    found = curves(camera)
    first = next(iter(found))
    by_number = {(frame - first) % ID_COUNT: points for frame, points in found.items()}
    require(set(run) <= set(by_number), "the capture has", len(found), "whole frames, the run", expected)
    return by_number


def truth():
    if not shutil.which("tcpdump"):
        return print("truth: skipped: there is no tcpdump")
    if open("/proc/self/setgroups").read().strip() == "deny":
        return print("truth: skipped: tcpdump refuses to run in the name of a mapped user; root can have it")
    for packet_bytes in 1400, 9000:
        for period in 256, 1024, 4096, 51200:
            compare(packet_bytes, period)


def compare(packet_bytes, period):
    capture, report = rig.file("capture"), rig.file("report.csv")
    with Camera(size=1024, period_us=40000, packet_bytes=packet_bytes) as camera:
        command = "tcpdump -Z root -i lo -s 128 --time-stamp-precision=nano -B 65536 -U udp -w".split()
        dump = subprocess.Popen(command + [capture], stderr=subprocess.PIPE, text=True)
        dump.stderr.readline()  # it listens
        run = Run("--camera", camera.name, "--duration", "2s", "--sample-period", str(period), "--csv", report)
        code, measured, complaints = run.end()
        time.sleep(1.5)  # what it has not read when it ends is lost, and it reads once a second
        dump.send_signal(signal.SIGINT)
        dropped = dump.communicate()[1]
    require(code == 0 and measured["frames"] > 20, "the run:", code, complaints)
    told = {}
    with open(report, newline="") as lines:
        for row in list(csv.reader(lines))[1:]:
            told.setdefault(int(row[0]), []).append(int(row[3]))
    require(len(told) == measured["frames"], len(told), "frames in the report, measured", measured["frames"])
    captured = captured_frames(capture, told, f"{len(told)} ({dropped})")
    own = {number: block_times(captured[number], period) for number in told}
    # The report leaves out the first block of a frame. Both clocks differ by one number of nanoseconds.
    apart = [a - b for number in told for a, b in zip(told[number], own[number][1:])]
    require(all(len(told[number]) + 1 == len(own[number]) for number in told), "blocks of a frame")
    require(max(apart) - min(apart) <= 2 * TICK_NS, "stamps are", max(apart) - min(apart), "ns apart")
    average, least = figures(list(own.values()), period)
    # A tick at either end of an interval is what the figures cannot tell apart.
    longest_ns, shortest_ns = period / least * 1000, min(times[-1] - times[0] for times in own.values())
    for ours, theirs, span in (average, measured["avgThroughputMBps"], shortest_ns), (
        least,
        measured["minThroughputMBps"],
        longest_ns,
    ):
        require(abs(ours - theirs) <= ours * 2 * TICK_NS / span, "MB/s:", ours, "measured", theirs)
    print(
        f"truth: packets of {packet_bytes}, blocks of {period}: {len(told)} frames, {len(apart)} stamps within"
        f" {max(apart) - min(apart)} ns, average {average:.3f}, least {least:.4f} MB/s"
    )
