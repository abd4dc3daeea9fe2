# SPDX-License-Identifier: GPL-3.0-or-later
"""A camera, a tap or a user that does what it should not, each in a run of its own, and again with Ctrl-C meanwhile."""

import csv
import os
import signal
import time
from concurrent.futures import ThreadPoolExecutor

import rig
from rig import Camera, Run, require

LONGEST_END = 15  # seconds
LOST = 3  # exit code: a camera is missing, was lost or refused to start


def pause(seconds):
    def act(camera, run):
        camera.signal(signal.SIGSTOP)
        time.sleep(seconds)
        camera.signal(signal.SIGCONT)

    return act


def killed(camera, run):
    camera.signal(signal.SIGKILL)


def restarted(camera, run):
    camera.restart()


def tap_killed(camera, run):
    os.kill(run.tap(), signal.SIGKILL)


def tap_held_up(camera, run):
    for _ in range(4):
        os.kill(run.tap(), signal.SIGSTOP)
        time.sleep(0.75)
        os.kill(run.tap(), signal.SIGCONT)
        time.sleep(0.25)


def nothing(camera, run):
    pass


# name: what happens, how long the run is to last, its exit code, what holds of the camera in the summary
WHILE_IT_RUNS = {
    "killed": (killed, 9, LOST, lambda told: told["losses"] == 1 and told["frames"] > 0),
    "stopped for 2 s": (pause(2), 5, 0, lambda told: told["losses"] == 0 and told["longestGapMs"] > 1500),
    "stopped for 8 s": (pause(8), 14, LOST, lambda told: told["losses"] == 1 and told["silentMs"] > 5000),
    "restarted": (restarted, 12, LOST, lambda told: told["losses"] == 1 and told["frames"] > 100),
    "tap killed": (tap_killed, 3, 0, lambda told: told["skippedFrames"] > 50 and told["frames"] > 0),
    "tap held up": (tap_held_up, 6, 0, lambda told: told["lostOnTheWay"] == told["lostNoBuffer"] == 0),
    "nothing": (nothing, 2, 0, lambda told: told["frames"] > 150 and told["skippedFrames"] == 0),
}


def is_whole(report):
    """Whether each line of a CSV file has all its columns; it may have none."""
    if not os.path.exists(report):
        return True
    with open(report, newline="") as lines:
        text = lines.read()
    return text.endswith("\n") and len({len(row) for row in csv.reader(text.splitlines())}) == 1


def during_a_run(number, name, interrupted):
    act, seconds, expected, holds = WHILE_IT_RUNS[name]
    report = rig.file(f"report{number}.csv")
    with Camera(address=f"127.0.0.{number}") as camera:
        run = Run("--camera", camera.name, "--duration", f"{seconds}s", "--csv", report)
        run.tap()  # it has started
        time.sleep(0.7)
        act(camera, run)
        if interrupted:
            run.process.send_signal(signal.SIGINT)
        began = time.monotonic()
        code, told, complaints = run.end()
        ended = time.monotonic() - began
    # What was not there long enough to be missed is no loss.
    if not interrupted:
        require(code == expected and told and holds(told), name, "ended with", code, told, complaints)
    require(told and is_whole(report), name, "left no whole files:", told, complaints)
    limit = LONGEST_END + (0 if interrupted else seconds)
    require(ended < limit, name, "took", ended, "s to end")
    return f"{name}{', Ctrl-C' if interrupted else ''}: exit code {code}, {ended:.1f} s until the end"


def at_the_start(name, address, said, **options):
    began = time.monotonic()
    code, _, complaints = Run("--camera", "gev:" + address, "--duration", "2s", **options).end()
    require(code == LOST and said in complaints, name, "ended with", code, complaints)
    return f"{name}: exit code {code}, {time.monotonic() - began:.1f} s until the end"


def in_use(address):
    with Camera(address=address) as camera:
        owner = Run("--camera", camera.name, "--mode", "counters")
        owner.tap()
        told = at_the_start("in use", address, "another program or computer has control")
        owner.process.send_signal(signal.SIGINT)
        code, measured, complaints = owner.end()
        require(code == 0 and measured["losses"] == 0, "its owner ended with", code, measured, complaints)
        return told


def tap_refused(address):
    with Camera(address=address):
        return at_the_start("tap refused", address, "setcap cap_net_raw=ep", may_capture=False)


def faults():
    with ThreadPoolExecutor(4) as pool:
        cases = [
            pool.submit(during_a_run, number, name, interrupted)
            for number, (name, interrupted) in enumerate(
                ((name, interrupted) for name in WHILE_IT_RUNS for interrupted in (False, True)), start=10
            )
        ]
        cases.append(pool.submit(in_use, "127.0.0.2"))
        cases.append(pool.submit(tap_refused, "127.0.0.3"))
        cases.append(pool.submit(at_the_start, "wrong address", "127.0.0.4", "no answer"))
        cases.append(pool.submit(at_the_start, "unplugged address", "192.0.2.1", "no way to this address"))
        for case in cases:
            print("faults:", case.result())
