// SPDX-License-Identifier: GPL-3.0-or-later
// Who can decide what a file contains.
#ifndef KESTROVA_FILETRUST_H
#define KESTROVA_FILETRUST_H

#include <QtCore/QString>

/// The first of file, its directory and the directories above that others than the user and root can change; empty if
/// there is none. Above the file's own directory the sticky bit keeps them from replacing what is not theirs.
QString writableByOthers(const QString& canonicalFile);

#endif
