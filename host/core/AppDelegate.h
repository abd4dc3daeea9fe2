// SPDX-License-Identifier: GPL-3.0-or-later
// The application's side of IxAppDelegate: who the delegate is.
#ifndef KESTROVA_APPDELEGATE_H
#define KESTROVA_APPDELEGATE_H

#include <vnCore/IxAppDelegate.h>

/// Sets what IxAppDelegate::instance() returns; null before the delegate is destroyed. Not owned. User interface
/// thread only.
VNCORE_EXPORT void setAppDelegate(IxAppDelegate* delegate);

#endif
