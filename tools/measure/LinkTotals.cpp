// SPDX-License-Identifier: GPL-3.0-or-later
// Adds up cameras.
#include "LinkTotals.h"

#include <algorithm>

void LinkTotals::add(const MeasuredCamera& camera, const Stretch& stretch)
{
    cameras.push_back(&camera);
    endS = std::max(endS, stretch.endS);
    if (stretch.elapsedUs > 0)
        busiest = std::max(busiest, static_cast<double>(stretch.bytes) / static_cast<double>(stretch.elapsedUs));
    bytes += stretch.bytes;
    elapsedUs = std::max(elapsedUs, stretch.elapsedUs);
}

std::optional<double> LinkTotals::delivered() const
{
    if (elapsedUs <= 0)
        return std::nullopt;
    return static_cast<double>(bytes) / static_cast<double>(elapsedUs);
}

std::optional<double> LinkTotals::sharePercent() const
{
    const auto now = delivered();
    if (!now || !rate || *rate <= 0.0)
        return std::nullopt;
    return *now / *rate * 100.0;
}

void LinkTable::add(const MeasuredCamera& camera, const Stretch& stretch)
{
    const CameraLink& link = camera.link();
    all.add(camera, stretch);
    if (link.name.isEmpty())
        return;
    auto found = std::find_if(links.begin(), links.end(),
                              [&link](const LinkTotals& other) { return other.name == link.name; });
    if (found == links.end())
        found = links.insert(found, {link.name, {}, link.rate});
    found->add(camera, stretch);
}

const LinkTotals* LinkTable::find(const CameraLink& link) const
{
    const auto found = std::find_if(links.begin(), links.end(),
                                    [&link](const LinkTotals& other) { return other.name == link.name; });
    return found == links.end() ? nullptr : &*found;
}
