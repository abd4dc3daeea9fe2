# SPDX-License-Identifier: GPL-3.0-or-later
"""100 MB/s in packets of 1400 bytes, for long."""

import os
import time

from rig import Camera, Run, processor_seconds, require

SIZE = 2048  # pixels wide and high
PERIOD_US = 40000  # 105 MB/s; a frame that the fake camera is late with costs a pause of 100 ms


CAUSES = "OnTheWay", "InSocket", "NoBuffer", "Late", "NotAttributable", "Unknown"


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
    lost = {cause: measured["lost" + cause] for cause in CAUSES}
    print(
        f"load: {seconds} s: {measured['deliveredMBps']:.1f} MB/s, {measured['frames']} frames,"
        f" {measured['missingFrames']} lost ({', '.join(f'{cause} {number}' for cause, number in lost.items())}),"
        f" {measured['skippedFrames']} without times; the tap took {share:.2%} of a core"
    )
    require(lost["OnTheWay"] == 0, "a packet never arrived")
    require(lost["Unknown"] == 0 and measured["skippedFrames"] == 0, "the tap dropped packets")
    require(lost["NotAttributable"] == 0, "frames were lost for no known cause")
    require(sum(lost.values()) == measured["missingFrames"], "frames are lost that no cause has")
    require(measured["deliveredMBps"] >= 95, "100 MB/s not reached: the fake camera was held up, is the machine busy?")
