// SPDX-License-Identifier: GPL-3.0-or-later
// kestrova-tap as a child of this program.
#ifndef KESTROVA_ARAVIS_PACKETTAP_H
#define KESTROVA_ARAVIS_PACKETTAP_H

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include <QtCore/QString>

#include "ArrivalBook.h"

namespace aravis {

/// A running tap, and the thread that reads what it writes. Any thread.
class PacketTap
{
public:
    /// Returns when every packet from `camera` to this port of `host` is seen from now on. `onNews` is called on the
    /// tap's thread. On failure null and the reason, with what helps against it.
    static std::unique_ptr<PacketTap> start(const std::string& camera, const std::string& host, unsigned port,
                                            std::function<void()> onNews, QString* error);
    ~PacketTap();
    PacketTap(const PacketTap&) = delete;
    PacketTap& operator=(const PacketTap&) = delete;

    /// As the book has it, and Nothing when the tap has ended.
    ArrivalBook::Known find(quint64 id, quint64 bytes, ArrivalCurve& curve) const;
    ArrivalBook::Fate fate(quint64 id, quint64 next) const;

private:
    PacketTap(int process, int pipe, std::function<void()> onNews);
    void read();

    const int process;
    const int pipe;
    const std::function<void()> onNews;

    /// Guards `book`; nothing is called under it.
    mutable std::mutex mutex;
    ArrivalBook book;

    std::thread reader;
};

} // namespace aravis

#endif
