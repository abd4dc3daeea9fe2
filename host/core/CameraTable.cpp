// SPDX-License-Identifier: GPL-3.0-or-later
// The table of opened cameras.
#include "CameraTable.h"

#include "OpenedCamera.h"

CameraTable& CameraTable::instance()
{
    static CameraTable table;
    return table;
}

void CameraTable::insert(VNCORE_HANDLE handle, std::shared_ptr<OpenedCamera> camera)
{
    const std::lock_guard lock(mutex);
    cameras.emplace(handle, std::move(camera));
}

void CameraTable::remove(VNCORE_HANDLE handle)
{
    // The camera's end, if this is its last owner, comes after the lock.
    std::shared_ptr<OpenedCamera> removed;
    const std::lock_guard lock(mutex);
    const auto found = cameras.find(handle);
    if (found != cameras.end()) {
        removed = std::move(found->second);
        cameras.erase(found);
    }
}

std::shared_ptr<OpenedCamera> CameraTable::find(VNCORE_HANDLE handle) const
{
    const std::lock_guard lock(mutex);
    const auto found = cameras.find(handle);
    return found == cameras.end() ? nullptr : found->second;
}
