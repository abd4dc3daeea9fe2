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
    const std::lock_guard lock(m_mutex);
    m_cameras.emplace(handle, std::move(camera));
}

void CameraTable::remove(VNCORE_HANDLE handle)
{
    // The camera's end, if this is its last owner, comes after the lock.
    std::shared_ptr<OpenedCamera> removed;
    const std::lock_guard lock(m_mutex);
    const auto found = m_cameras.find(handle);
    if (found != m_cameras.end()) {
        removed = std::move(found->second);
        m_cameras.erase(found);
    }
}

std::shared_ptr<OpenedCamera> CameraTable::find(VNCORE_HANDLE handle) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_cameras.find(handle);
    return found == m_cameras.end() ? nullptr : found->second;
}
