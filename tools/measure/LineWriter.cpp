// SPDX-License-Identifier: GPL-3.0-or-later
// The descriptor, not a stream: only so does each write tell by itself whether and why it failed.
#include "LineWriter.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

LineWriter::LineWriter(int file, QString fileName, Until end)
    : descriptor(file), name(std::move(fileName)), until(end)
{
}

bool LineWriter::write(const QByteArray& lines)
{
    const int error = tryToWrite(lines);
    if (error == 0)
        return true;
    reason = QStringLiteral("%1: %2").arg(name, qt_error_string(error));
    lost += static_cast<quint64>(lines.count('\n'));
    gone = error == EPIPE;
    return false;
}

/// The system's error number, or 0.
int LineWriter::tryToWrite(const QByteArray& lines) const
{
    qint64 done = 0;
    while (done < lines.size()) {
        // After a part the rest is tried again: that tells the reason.
        const auto written = ::write(descriptor, lines.constData() + done, static_cast<size_t>(lines.size() - done));
        if (written < 0 && errno != EINTR) {
            const int error = errno;
            takeBack(done);
            return error;
        }
        done += std::max<qint64>(written, 0);
    }
    // Pipes and devices have no disk to wait for.
    if (until == Until::OnDisk && ::fdatasync(descriptor) != 0 && errno != EINVAL && errno != EROFS) {
        const int error = errno;
        takeBack(done);
        return error;
    }
    return 0;
}

/// Cuts off what has just been written, if it is the end of a file.
void LineWriter::takeBack(qint64 bytes) const
{
    struct stat status = {};
    const off_t end = ::lseek(descriptor, 0, SEEK_CUR);
    if (bytes == 0 || ::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size != end)
        return;
    if (::ftruncate(descriptor, end - bytes) == 0)
        ::lseek(descriptor, end - bytes, SEEK_SET);
}
