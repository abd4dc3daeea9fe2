#!/usr/bin/env -S python3 -B
# SPDX-License-Identifier: GPL-3.0-or-later
"""Real protocol, real programs: kestrova-measure against Aravis' fake camera in a network of its own.

  gige.py BINARIES [STEP...]    steps: truth beside faults load; all without arguments

truth: stamps and figures against those of tcpdump. beside: bytes, frames and losses against arv-camera-test. faults:
a camera, a tap or a user that does what it should not. load: 100 MB/s for KESTROVA_GIGE_SECONDS (600).
"""

import os
import sys

import rig
from beside import beside
from faults import faults
from load import load
from truth import truth

STEPS = {"truth": truth, "beside": beside, "faults": faults, "load": load}

if __name__ == "__main__":
    rig.enter_own_network()
    rig.binaries = os.path.abspath(sys.argv[1])
    for step in sys.argv[2:] or STEPS:
        STEPS[step]()
