# SPDX-License-Identifier: GPL-3.0-or-later
"""A network of one's own with a fake camera in it, and runs of kestrova-measure."""

import ctypes
import fcntl
import json
import os
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import time

SIOCSIFFLAGS = 0x8914
SIOCSIFADDR = 0x8916
IFF_UP = 1
PR_CAPBSET_DROP = 24
CAP_NET_RAW = 13

binaries = ""  # the directory of the programs
scratch = tempfile.TemporaryDirectory()


def enter_own_network():
    """Starts this program anew in a network of its own, once."""
    if os.environ.get("KESTROVA_OWN_NETWORK") != "1":
        os.environ["KESTROVA_OWN_NETWORK"] = "1"
        unshare = ["unshare", "-n"] if os.geteuid() == 0 else ["unshare", "-rn"]
        if subprocess.run(unshare + ["true"], stderr=subprocess.DEVNULL).returncode != 0:
            print("gige: skipped: the system refuses a network of its own (" + " ".join(unshare) + ")")
            sys.exit(0)
        os.execvp(unshare[0], unshare + [sys.executable] + sys.argv)
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as control:
        fcntl.ioctl(control, SIOCSIFFLAGS, struct.pack("16sH14x", b"lo", IFF_UP))
        for last in range(2, 30):  # a fake camera wants an address that an interface has
            name, address = b"lo:%d" % last, socket.inet_aton(f"127.0.0.{last}")
            fcntl.ioctl(control, SIOCSIFADDR, struct.pack("16sHH4s8x", name, socket.AF_INET, 0, address))


def file(name):
    return os.path.join(scratch.name, name)


class Camera:
    """The fake camera; a context. SIZE pixels wide and high, a frame every PERIOD_US."""

    def __init__(self, size=256, period_us=10000, loss=0.0, packet_bytes=1400, address="127.0.0.1"):
        self.name = "gev:" + address
        self.command = [binaries + "/fakeGigeCamera", address] + [str(x) for x in (size, period_us, loss, packet_bytes)]

    def __enter__(self):
        self.process = subprocess.Popen(self.command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        require(self.process.stdout.readline(), "no fake camera at", self.name)  # "ready"
        return self

    def __exit__(self, *_):
        self.signal(signal.SIGKILL)
        self.process.wait()
        self.process.stdin.close()
        self.process.stdout.close()

    def sent(self):
        """How many frames it has sent."""
        self.process.stdin.write(b"count\n")
        self.process.stdin.flush()
        return int(self.process.stdout.readline())

    def signal(self, number):
        self.process.send_signal(number)

    def restart(self):
        self.__exit__()
        self.__enter__()


class Run:
    """kestrova-measure, as it runs."""

    def __init__(self, *options, may_capture=True):
        command = [binaries + "/kestrova-measure", "--json"] + list(options)
        prepare = None if may_capture else lambda: ctypes.CDLL(None).prctl(PR_CAPBSET_DROP, CAP_NET_RAW, 0, 0, 0)
        self.errors = tempfile.TemporaryFile("w+")
        self.process = subprocess.Popen(
            command, stdout=subprocess.PIPE, stderr=self.errors, text=True, preexec_fn=prepare
        )

    def tap(self):
        """The process of its tap, when it has one."""
        return wait_until(self._find_tap)

    def _find_tap(self):
        try:
            for task in os.listdir(f"/proc/{self.process.pid}/task"):
                for child in open(f"/proc/{self.process.pid}/task/{task}/children").read().split():
                    command = open(f"/proc/{child}/cmdline").read().split("\0")
                    # One for port 1 only tries whether it may.
                    if command[0].endswith("kestrova-tap") and command[3] != "1":
                        return int(child)
        except OSError:  # it has ended meanwhile
            pass
        return 0

    def end(self):
        """The exit code, the camera in the summary (None if there is none) and what it complained about."""
        lines = self.process.communicate()[0].splitlines()
        self.errors.seek(0)
        camera = None
        if lines:
            last = json.loads(lines[-1])
            camera = last["cameras"][0] if last["type"] == "summary" and last["cameras"] else None
        return self.process.returncode, camera, self.errors.read()


def wait_until(happened, seconds=10):
    """What `happened` returns when that is no longer false."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        found = happened()
        if found:
            return found
        time.sleep(0.01)
    raise AssertionError("it did not happen in time")


def processor_seconds(process):
    return int(open(f"/proc/{process}/schedstat").read().split()[0]) * 1e-9


def require(holds, *what):
    if not holds:
        raise AssertionError(" ".join(str(x) for x in what))
