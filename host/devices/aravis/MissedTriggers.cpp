// SPDX-License-Identifier: GPL-3.0-or-later
// A selector that is put back.
#include "MissedTriggers.h"

#include <cstring>

namespace aravis {

namespace {

constexpr const char* selectorName = "CounterSelector";
constexpr const char* sourceName = "CounterEventSource";
constexpr const char* wantedSource = "FrameTriggerMissed";

/// Selects counters, and in the end the one that was selected before.
class Selection
{
public:
    explicit Selection(ArvCamera* ownCamera) : camera(ownCamera)
    {
        CallError fault;
        const char* const now = arv_camera_get_string(camera, selectorName, fault.out());
        before = !fault && now ? now : "";
        selected = before;
    }
    ~Selection() { select(before); }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

    bool select(const std::string& counter)
    {
        if (counter == selected)
            return true;
        CallError fault;
        arv_camera_set_string(camera, selectorName, counter.c_str(), fault.out());
        if (!fault)
            selected = counter;
        return !fault;
    }
    bool isKnown() const { return !before.empty(); }

private:
    ArvCamera* camera;
    std::string before;
    std::string selected;
};

} // namespace

MissedTriggers::MissedTriggers(ArvCamera* ownCamera) : camera(ownCamera)
{
    CallError fault;
    for (const char* feature : {selectorName, sourceName, "CounterValue"}) {
        if (!arv_camera_is_feature_available(camera, feature, fault.out()) || fault)
            return;
    }
    guint count = 0;
    const OwnedArray<const char*> counters(
        arv_camera_dup_available_enumerations_as_strings(camera, selectorName, &count, fault.out()));
    Selection selection(camera);
    for (guint i = 0; selection.isKnown() && !fault && counter.empty() && i < count; ++i) {
        if (!selection.select(counters[i]))
            continue;
        const char* const source = arv_camera_get_string(camera, sourceName, fault.out());
        if (!fault && source && std::strcmp(source, wantedSource) == 0)
            counter = counters[i];
    }
}

std::optional<int> MissedTriggers::read() const
{
    if (counter.empty())
        return std::nullopt;
    Selection selection(camera);
    if (!selection.isKnown() || !selection.select(counter))
        return std::nullopt;
    CallError fault;
    const gint64 value = arv_camera_get_integer(camera, "CounterValue", fault.out());
    return fault ? std::nullopt : std::optional<int>(static_cast<int>(value));
}

} // namespace aravis
