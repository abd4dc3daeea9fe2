// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that a plug-in may use of the host's core library.
#ifndef VNCORE_VNCORE_H
#define VNCORE_VNCORE_H

#include <vnCore/CxCameraManager.h>
#include <vnCore/CxCameraParameters.h>
#include <vnCore/CxPlugin.h>
#include <vnCore/IxAppDelegate.h>
#include <vnCore/vnApi.h>
#include <vnCore/vnTypes.h>

#endif
