// SPDX-License-Identifier: GPL-3.0-or-later
// Which handle is which opened camera: the one thing that the threads share to find one.
#ifndef KESTROVA_CAMERATABLE_H
#define KESTROVA_CAMERATABLE_H

#include <map>
#include <memory>
#include <mutex>

#include <vnCore/vnTypes.h>

class OpenedCamera;

/// Any thread. Who has found a camera keeps it alive, and calls it after the table's lock is released.
class CameraTable
{
public:
    static CameraTable& instance();

    void insert(VNCORE_HANDLE handle, std::shared_ptr<OpenedCamera> camera);
    void remove(VNCORE_HANDLE handle);
    /// Null for a handle of no opened camera. A camera stays here until its closing has been announced.
    std::shared_ptr<OpenedCamera> find(VNCORE_HANDLE handle) const;

private:
    /// Guards `cameras`; nothing is called under it.
    mutable std::mutex mutex;
    std::map<VNCORE_HANDLE, std::shared_ptr<OpenedCamera>> cameras;
};

#endif
