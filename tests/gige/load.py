# SPDX-License-Identifier: GPL-3.0-or-later
"""100 MB/s in packets of 1400 bytes, for long."""

import os
import re
import time

from rig import Camera, Run, processor_seconds, require

SIZE = 2048  # pixels wide and high
PERIOD_US = 40000


def losses(complaints):
    """How many frames were lost (on the way, on this host, nobody knows where), as told at the end."""
    told = re.search(r"Lost frames: (\d+) on the way.*, (\d+) on this host.*, (\d+) nobody knows", complaints)
    return [int(number) for number in told.groups()] if told else [0, 0, 0]


def load():
    seconds = int(os.environ.get("KESTROVA_GIGE_SECONDS", "600"))
    with Camera(SIZE, PERIOD_US) as camera:
        run = Run("--camera", camera.name, "--duration", f"{seconds}s")
        tap = run.tap()
        began, used = time.monotonic(), processor_seconds(tap)
        time.sleep(seconds - 1)
        share = (processor_seconds(tap) - used) / (time.monotonic() - began)
        code, measured, complaints = run.end()
    require(code == 0, "the run ended with", code, complaints)
    on_the_way, on_this_host, unknown = losses(complaints)
    print(
        f"load: {seconds} s: {measured['deliveredMBps']:.1f} MB/s, {measured['frames']} frames,"
        f" {measured['missingFrames']} lost: {on_the_way} on the way, {on_this_host} on this host, {unknown} unknown;"
        f" {measured['skippedFrames']} without times; the tap took {share:.2%} of a core"
    )
    require(on_the_way == 0, "a packet never arrived")
    require(unknown == 0 and measured["skippedFrames"] == 0, "the tap dropped packets")
    require(on_this_host == measured["missingFrames"], "frames are lost that no cause has")
    require(measured["deliveredMBps"] >= 100, "the fake camera did not send 100 MB/s: is the machine busy?")
