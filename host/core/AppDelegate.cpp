// SPDX-License-Identifier: GPL-3.0-or-later
// The application delegate's one instance.
#include "AppDelegate.h"

namespace {
IxAppDelegate* theDelegate = nullptr;
}

IxAppDelegate::~IxAppDelegate() = default;

IxAppDelegate* IxAppDelegate::instance()
{
    return theDelegate;
}

void setAppDelegate(IxAppDelegate* delegate)
{
    theDelegate = delegate;
}
