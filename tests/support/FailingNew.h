// SPDX-License-Identifier: GPL-3.0-or-later
// Makes an allocation fail, in programs that link FailingNew.cpp: it replaces operator new, so that all of C++ and of
// the project is covered; what Qt keeps in containers of its own is not. Not under valgrind, which has its own.
#ifndef KESTROVA_FAILINGNEW_H
#define KESTROVA_FAILINGNEW_H

/// The n-th allocation of this thread from now on fails; 0: none does. Returns whether the one asked for before did.
bool failAllocation(int nth);

#endif
