// SPDX-License-Identifier: GPL-3.0-or-later
// kestrova-tap as a child of this program.
#ifndef KESTROVA_ARAVIS_PACKETTAP_H
#define KESTROVA_ARAVIS_PACKETTAP_H

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <QtCore/QString>

#include "LossJudgement.h"

namespace aravis {

/// A running tap, and the thread that reads what it writes. Any thread.
class PacketTap
{
public:
    /// The flow of packets that is looked at.
    struct Flow
    {
        std::string camera;
        std::string host;
        unsigned port;
    };

    /// Returns when every packet of the flow is seen from now on. On the tap's thread `onNews` is called, and every few
    /// milliseconds `probe` (which may be empty), for what the host drops. On failure null and the reason, with what
    /// helps against it.
    static std::unique_ptr<PacketTap> start(const Flow& flow, std::function<void()> onNews,
                                            std::function<DropSample()> probe, QString* error);
    ~PacketTap();
    PacketTap(const PacketTap&) = delete;
    PacketTap& operator=(const PacketTap&) = delete;

    /// As the book has it, and Nothing when the tap has ended.
    ArrivalBook::Known find(quint64 id, quint64 bytes, ArrivalCurve& curve) const;
    /// As the book has them: the first frame seen, and the newest one that has come to its end.
    struct Span
    {
        quint64 first;
        quint64 last;
    };
    std::optional<Span> seen() const;
    /// Of the frame with this id, when `next` is the id of the next one that was received whole. None if that is not
    /// known yet, which `atOnce` takes for never.
    std::optional<LossCause> lossOf(quint64 id, quint64 next, bool atOnce) const;

private:
    PacketTap(int process, int pipe, std::function<void()> onNews, std::function<DropSample()> probe);
    void run();
    bool read(std::vector<char>& bytes, std::size_t& held);

    const int process;
    const int pipe;
    const std::function<void()> onNews;
    const std::function<DropSample()> probe;

    /// Guards what follows; nothing is called under it.
    mutable std::mutex mutex;
    ArrivalBook book;
    DropSamples drops;

    std::thread reader;
};

} // namespace aravis

#endif
