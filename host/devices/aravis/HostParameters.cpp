// SPDX-License-Identifier: GPL-3.0-or-later
// Which there are and what they may be.
#include "HostParameters.h"

#include <algorithm>

#include <vnCore/vnTypes.h>

namespace aravis {

namespace {

constexpr int speedUnit = 8;
constexpr int speedRegister = 4096;

/// The values that each may have, the one that it begins with first. None: it can only be read.
const std::map<std::string, std::vector<int>>& choices()
{
    static const std::map<std::string, std::vector<int>> all = {
        {VN_PRM_BUFFER_POLICY, {VN_BP_UNSAFE}},
        {VN_PRM_OUTPUT_DATA_BIT_DEPTH, {16}},
        {VN_PRM_OUTPUT_DATA_PACKING, {0}},
        {VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, {0, VN_TESTPAT_GEN_FPGA}},
        {VN_PRM_TEST_PATTERN, {0, VN_TESTPAT_DEVICE_SPEC_COUNTER}},
        {VN_PRM_COUNTER_SELECTOR, {VN_COUNTER_TRANSPORT_SKIP, VN_COUNTER_API_SKIP, VN_COUNTER_TRANSFERRED}},
        {VN_PRM_COUNTER_VALUE, {}},
        {VN_PRM_DEVICE_UNIT_SELECTOR, {0, speedUnit}},
        {VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, {0, speedRegister}},
        {VN_PRM_DEVICE_UNIT_REGISTER_VALUE, {}},
    };
    return all;
}

} // namespace

bool HostParameters::has(const std::string& name)
{
    return choices().count(name) > 0;
}

bool HostParameters::canSet(const std::string& name, int value) const
{
    if (name == VN_PRM_COUNTER_SELECTOR && value == VN_COUNTER_MISSED_TRG_OVERLAP)
        return missedTriggers.has_value();
    const auto found = choices().find(name);
    return found != choices().end() &&
           std::find(found->second.begin(), found->second.end(), value) != found->second.end();
}

bool HostParameters::set(const std::string& name, int value)
{
    if (!canSet(name, value))
        return false;
    values[name] = value;
    return true;
}

std::optional<int> HostParameters::get(const std::string& name, const FrameTally& frames) const
{
    const auto value = [this](const char* parameter) {
        const auto found = values.find(parameter);
        return found != values.end() ? found->second : choices().at(parameter).front();
    };
    if (name == VN_PRM_COUNTER_VALUE) {
        const int selected = value(VN_PRM_COUNTER_SELECTOR);
        if (selected == VN_COUNTER_MISSED_TRG_OVERLAP)
            return missedTriggers;
        const quint64 counts[] = {frames.lost().beforeHost(), frames.lost().onHost(), frames.delivered()};
        return static_cast<int>(counts[selected]);
    }
    if (name == VN_PRM_DEVICE_UNIT_REGISTER_VALUE) {
        const bool speed = value(VN_PRM_DEVICE_UNIT_SELECTOR) == speedUnit &&
                           value(VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR) == speedRegister;
        return speed && requiredThroughput > 0 ? std::optional<int>(requiredThroughput) : std::nullopt;
    }
    return has(name) ? std::optional<int>(value(name.c_str())) : std::nullopt;
}

} // namespace aravis
