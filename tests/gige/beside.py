# SPDX-License-Identifier: GPL-3.0-or-later
"""kestrova-measure and arv-camera-test, one after the other on the same fake camera."""

import math
import re
import shutil
import subprocess

from rig import Camera, Run, require

SECONDS = 10
EDGE = 3  # frames that were under way at the beginning or the end


def other_program(camera):
    """Whole and failed frames, and the bytes of one."""
    command = ["arv-camera-test-0.8", "-n", "Aravis-SN" + camera.name[4:], "--no-packet-socket", f"--duration={SECONDS}"]
    told = dict(re.findall(r"^(\w+) *= *(\d+)", subprocess.run(command, capture_output=True, text=True).stdout, re.M))
    return int(told["n_completed_buffers"]), int(told["n_failures"]), int(told["payload"])


def this_program(camera, mode):
    run = Run("--camera", camera.name, "--mode", mode, "--duration", f"{SECONDS}s")
    code, measured, complaints = run.end()
    require(code == 0, mode, "ended with", code, complaints)
    return measured


def beside():
    if not shutil.which("arv-camera-test-0.8"):
        return print("beside: skipped: there is no arv-camera-test-0.8 (Debian's aravis-tools)")
    for loss in 0, 0.005:
        with Camera(period_us=40000, loss=loss) as camera:
            before = camera.sent()
            whole, failed, size = other_program(camera)
            sent = camera.sent() - before
            print(f"beside: loss {loss}: {sent} frames sent, arv-camera-test {whole} and {failed} lost")
            require(abs(sent - whole - failed) <= EDGE, "frames of arv-camera-test are missing")
            for mode in "throughput", "counters":
                before = camera.sent()
                measured = this_program(camera, mode)
                sent, lost = camera.sent() - before, measured["missingFrames"]
                print(f"beside: loss {loss}: {sent} frames sent, {measured['frames']} and {lost} lost in {mode} mode")
                require(abs(sent - measured["frames"] - lost) <= EDGE, "frames are missing")
                if mode == "throughput":
                    bytes_told = measured["deliveredMBps"] * 1e6 * measured["durationS"] / measured["frames"]
                    require(abs(bytes_told - size) < size * 0.01, "bytes of a frame:", bytes_told, "and", size)
                # Which packets are lost is chance.
                require(abs(lost - failed) <= 4 * math.sqrt(lost + failed), "lost:", lost, "and", failed)
