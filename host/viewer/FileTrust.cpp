// SPDX-License-Identifier: GPL-3.0-or-later
// Looks at owner and permission bits; access control lists show in the group's bits.
#include "FileTrust.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QFileInfo>

QString writableByOthers(const QString& canonicalFile)
{
    bool stickyHelps = false;
    const QString directory = QFileInfo(canonicalFile).path();
    for (QString path = canonicalFile;; path = QFileInfo(path).path()) {
        struct stat status = {};
        if (::stat(QFile::encodeName(path).constData(), &status) != 0)
            return path;
        const bool ofOthers = status.st_uid != 0 && status.st_uid != ::geteuid();
        const bool open = (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
        if (ofOthers || (open && !(stickyHelps && (status.st_mode & S_ISVTX) != 0)))
            return path;
        if (path == QFileInfo(path).path())
            return {};
        stickyHelps = path == directory || stickyHelps;
    }
}
