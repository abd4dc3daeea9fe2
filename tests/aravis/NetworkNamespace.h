// SPDX-License-Identifier: GPL-3.0-or-later
// A network of the test's own: loopback with four addresses, nothing else.
#ifndef KESTROVA_TESTS_NETWORKNAMESPACE_H
#define KESTROVA_TESTS_NETWORKNAMESPACE_H

/// Takes the process there, which must have no other thread yet: for the initialisation of a static object. Where the
/// system refuses it says why and ends the process with 77, which means skipped.
bool enterNetworkNamespace();

#endif
