// SPDX-License-Identifier: GPL-3.0-or-later
// The camera functions. All but vnCoreVersion() return true on success, false for a camera that is unknown, closed
// or null, and may be called from any thread. None of them emits a signal of CxCameraManager before it returns, so
// they may be called with a lock held that a slot takes too. `reserved` is to be null.
#ifndef VNCORE_VNAPI_H
#define VNCORE_VNAPI_H

#include <vnCore/vnTypes.h>

/// Reads an integer parameter. On false `value` is unchanged.
VNCORE_EXPORT bool vnApi_GetParamInt(VNCORE_HANDLE camera, const char* name, int& value, int* reserved);

/// Writes an integer parameter. A name that ends in ":settable" writes nothing and tells whether the camera would
/// take the value now. A change of "imgdataformat" is announced by a queued CxCameraManager::imageFormatChanged.
VNCORE_EXPORT bool vnApi_SetParamInt(VNCORE_HANDLE camera, const char* name, int value, int* reserved);

/// Waits at most `timeoutMs` for the next image that this side has not had yet. False when none came, the camera is
/// not acquiring or was closed; a lost camera uses up the time limit. `data` of a success may be null when a driver
/// fails to map the memory. `newest` is accepted for the drivers that have it and has no effect here.
VNCORE_EXPORT bool vnApi_GetImage(VNCORE_HANDLE camera, unsigned int timeoutMs, VN_IMG* image, int* reserved,
                                  bool newest);

/// Starts the acquisition for the caller; refused while the host itself or another caller acquires.
VNCORE_EXPORT bool vnApi_StartAcquisition(VNCORE_HANDLE camera);

/// Ends what vnApi_StartAcquisition() began and wakes its waiters; false if there is none or the camera refuses.
VNCORE_EXPORT bool vnApi_StopAcquisition(VNCORE_HANDLE camera);

/// The version of the host's core library.
VNCORE_EXPORT void vnCoreVersion(int& major, int& minor, int& revision);

#endif
