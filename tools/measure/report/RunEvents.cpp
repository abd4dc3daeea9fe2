// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps events.
#include "RunEvents.h"

#include <utility>

#include "PlainText.h"

void RunEvents::add(RunEvent event)
{
    if (first.size() < mostFirst) {
        first.push_back(std::move(event));
        return;
    }
    latest.push_back(std::move(event));
    if (latest.size() > mostLatest) {
        latest.pop_front();
        ++dropped;
    }
}

std::vector<RunEvent> RunEvents::list() const
{
    std::vector<RunEvent> all = first;
    if (dropped > 0)
        all.push_back(
            {latest.front().time, {}, counted(dropped, "event") + QStringLiteral(" before this time not kept")});
    all.insert(all.end(), latest.begin(), latest.end());
    return all;
}
