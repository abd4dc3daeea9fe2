// SPDX-License-Identifier: GPL-3.0-or-later
// Which camera a thread has to do with: what it logs is probably about that one.
#ifndef KESTROVA_LASTCAMERACALL_H
#define KESTROVA_LASTCAMERACALL_H

#include <vnCore/vnTypes.h>

struct CameraCall
{
    VNCORE_HANDLE camera = nullptr;
    bool succeeded = true;
};

/// The calling thread's last call of a camera function; may be overwritten to forget it. Any thread.
VNCORE_EXPORT CameraCall& lastCameraCall();

#endif
