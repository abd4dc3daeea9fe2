// SPDX-License-Identifier: GPL-3.0-or-later
// What the programs tell the script that ran them.
#ifndef KESTROVA_EXITCODE_H
#define KESTROVA_EXITCODE_H

/// Scripts rely on the numbers; docs/kestrova-measure.md has them.
enum ExitCode
{
    ExitSuccess = 0,
    ExitFailure = 1,       ///< kestrova: no display or no picture; kestrova-measure: a limit was broken
    ExitWrongUsage = 2,    ///< also a file that cannot be read or written
    ExitCameraFailure = 3, ///< kestrova-measure: a camera gave nothing to judge
};

#endif
