// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of a camera: what there is, what it may hold, what depends on what.
#include "ParameterFile.h"

#include <algorithm>

namespace sim {

namespace {

using Items = QList<CxCameraParam::SxEnumItem>;

QString formatName(int format)
{
    switch (format) {
    case VN_FRM_MONO8:
        return QStringLiteral("Mono 8");
    case VN_FRM_MONO16:
        return QStringLiteral("Mono 16");
    default:
        return QStringLiteral("Transport data");
    }
}

const Items offOn{{0, QStringLiteral("Off")}, {1, QStringLiteral("On")}};

} // namespace

ParameterFile::ParameterFile(const CameraScenario& scenario)
{
    const auto add = [this](const char* key, Kind kind, int value, const Items& items = {}) {
        cells.insert(QLatin1String(key), {kind, value, items});
    };

    Items formats;
    for (const int format : scenario.formats)
        formats.append({format, formatName(format)});
    add(VN_PRM_IMAGE_DATA_FORMAT, Kind::Setting, scenario.formats.front(), formats);
    add(VN_PRM_OUTPUT_DATA_BIT_DEPTH, Kind::Setting, scenario.sensor.bitDepth,
        {{8, QStringLiteral("8 bit")},
         {10, QStringLiteral("10 bit")},
         {12, QStringLiteral("12 bit")},
         {16, QStringLiteral("16 bit")}});
    add(VN_PRM_OUTPUT_DATA_PACKING, Kind::Setting, 0, offOn);
    add(VN_PRM_BUFFER_POLICY, Kind::Setting, 1, {{0, QStringLiteral("Direct")}, {1, QStringLiteral("Copy")}});
    add(VN_PRM_COLUMN_FPN_CORRECTION, Kind::Setting, 1, offOn);
    add(VN_PRM_ROW_FPN_CORRECTION, Kind::Setting, 1, offOn);
    add(VN_PRM_LUT_ENABLE, Kind::Setting, 0, offOn);

    add(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, Kind::Setting, 0,
        {{0, QStringLiteral("Sensor")}, {VN_TESTPAT_GEN_FPGA, QStringLiteral("FPGA")}});
    add("test_pattern[0]", Kind::Setting, 0, {{0, QStringLiteral("Off")}, {1, QStringLiteral("Ramp")}});
    add("test_pattern[1]", Kind::Setting, 0,
        {{0, QStringLiteral("Off")},
         {1, QStringLiteral("Ramp")},
         {VN_TESTPAT_DEVICE_SPEC_COUNTER, QStringLiteral("Counter")}});

    add(VN_PRM_DP_UNIT_SELECTOR, Kind::Selector, VN_DP_UNIT_FPGA,
        {{0, QStringLiteral("Sensor")}, {VN_DP_UNIT_FPGA, QStringLiteral("FPGA")}});
    add(VN_PRM_DP_PROC_SELECTOR, Kind::Selector, VN_DP_PROC_FRAME_BUFFER,
        {{0, QStringLiteral("Input")}, {VN_DP_PROC_FRAME_BUFFER, QStringLiteral("Frame buffer")}});
    Items dpParams{{VN_DP_PARAM_FRAMEBUF_SIZE, QStringLiteral("Frame buffer size")}};
    if (scenario.frameBufferControl) {
        dpParams.prepend({VN_DP_PARAM_FRAMEBUF_MODE, QStringLiteral("Frame buffer mode")});
        add("dp_param_value[1/5/6]", Kind::Setting, VN_DP_PARAM_VALUE_FRAMEBUF_MODE_ENABLED,
            {{VN_DP_PARAM_VALUE_FRAMEBUF_MODE_DISABLED, QStringLiteral("Disabled")},
             {VN_DP_PARAM_VALUE_FRAMEBUF_MODE_ENABLED, QStringLiteral("Enabled")}});
    }
    add(VN_PRM_DP_PARAM_SELECTOR, Kind::Selector, VN_DP_PARAM_FRAMEBUF_SIZE, dpParams);
    add("dp_param_value[1/5/7]", Kind::ReadOnly, static_cast<int>(scenario.bufferBytes));

    Items units{{0, QStringLiteral("Device")}, {1, QStringLiteral("FPGA")}};
    add("device_unit_register_value[0/0]", Kind::ReadOnly, 1);
    add("device_unit_register_value[1/55]", Kind::Setting, 1);
    if (scenario.transportSpeed) {
        units.append({8, QStringLiteral("Transport")});
        add("device_unit_register_value[8/4096]", Kind::ReadOnly, *scenario.transportSpeed);
    }
    add(VN_PRM_DEVICE_UNIT_SELECTOR, Kind::Selector, 1, units);
    add(VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, Kind::Selector, 55);

    add(VN_PRM_TS_RST_MODE, Kind::Setting, 0,
        {{0, QStringLiteral("Once")}, {1, QStringLiteral("Every acquisition")}});
    add(VN_PRM_TS_RST_SOURCE, Kind::Setting, 0, {{0, QStringLiteral("None")}, {19, QStringLiteral("Now")}});

    Items counters{{VN_COUNTER_TRANSPORT_SKIP, QStringLiteral("Transport skip")},
                   {VN_COUNTER_API_SKIP, QStringLiteral("API skip")},
                   {VN_COUNTER_TRANSFERRED, QStringLiteral("Transferred")}};
    if (scenario.missedTriggerCounters) {
        counters.append({VN_COUNTER_MISSED_TRG_OVERLAP, QStringLiteral("Missed trigger, overlap")});
        counters.append({VN_COUNTER_MISSED_TRG_OVERFLOW, QStringLiteral("Missed trigger, overflow")});
    }
    counters.append({VN_COUNTER_BUFFER_OVERFLOW, QStringLiteral("Buffer overflow")});
    add(VN_PRM_COUNTER_SELECTOR, Kind::Selector, VN_COUNTER_TRANSFERRED, counters);
    for (const auto& counter : std::as_const(counters))
        add(qPrintable(QStringLiteral("counter_value[%1]").arg(counter.value)), Kind::ReadOnly, 0);
}

bool ParameterFile::has(const QString& name) const
{
    if (cells.contains(name))
        return !name.endsWith(QLatin1Char(']'));
    const auto bank = cells.lowerBound(name + QLatin1Char('['));
    return bank != cells.end() && bank.key().startsWith(name + QLatin1Char('['));
}

QString ParameterFile::key(const QString& name) const
{
    const auto shows = [&name, this](std::initializer_list<const char*> selectors) {
        QStringList path;
        for (const char* selector : selectors)
            path.append(QString::number(value(QLatin1String(selector))));
        return QStringLiteral("%1[%2]").arg(name, path.join(QLatin1Char('/')));
    };
    if (name == QLatin1String(VN_PRM_TEST_PATTERN))
        return shows({VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR});
    if (name == QLatin1String(VN_PRM_DP_PARAM_VALUE))
        return shows({VN_PRM_DP_UNIT_SELECTOR, VN_PRM_DP_PROC_SELECTOR, VN_PRM_DP_PARAM_SELECTOR});
    if (name == QLatin1String(VN_PRM_DEVICE_UNIT_REGISTER_VALUE))
        return shows({VN_PRM_DEVICE_UNIT_SELECTOR, VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR});
    if (name == QLatin1String(VN_PRM_COUNTER_VALUE))
        return shows({VN_PRM_COUNTER_SELECTOR});
    return name;
}

bool ParameterFile::get(const QString& name, int& value) const
{
    const auto cell = cells.constFind(key(name));
    if (cell == cells.constEnd() || !has(name))
        return false;
    value = cell->value;
    return true;
}

bool ParameterFile::canSet(const QString& name, int value) const
{
    const auto cell = cells.constFind(key(name));
    if (cell == cells.constEnd() || !has(name) || cell->kind == Kind::ReadOnly)
        return false;
    const bool inRange = cell->items.isEmpty() ? value >= 0
                                               : std::any_of(cell->items.begin(), cell->items.end(),
                                                             [value](const auto& i) { return i.value == value; });
    return inRange && goesTogether(name, value);
}

/// Eight bit images carry neither a greater depth nor packed pixels: both are set first or last in another format,
/// where they wait until they matter. A unit has only the registers that it has.
bool ParameterFile::goesTogether(const QString& name, int value) const
{
    if (name == QLatin1String(VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR)) {
        const int unit = this->value(QStringLiteral(VN_PRM_DEVICE_UNIT_SELECTOR));
        return cells.contains(QStringLiteral("device_unit_register_value[%1/%2]").arg(unit).arg(value));
    }
    if (this->value(QStringLiteral(VN_PRM_IMAGE_DATA_FORMAT)) != VN_FRM_MONO8)
        return true;
    return (name != QLatin1String(VN_PRM_OUTPUT_DATA_BIT_DEPTH) || value == 8) &&
           (name != QLatin1String(VN_PRM_OUTPUT_DATA_PACKING) || value == 0);
}

bool ParameterFile::set(const QString& name, int value)
{
    if (!canSet(name, value))
        return false;
    cells[key(name)].value = value;
    return true;
}

QList<CxCameraParam::SxEnumItem> ParameterFile::enumeration(const QString& name) const
{
    return cells.value(key(name)).items;
}

int ParameterFile::value(const QString& key) const
{
    const auto cell = cells.constFind(key);
    return cell == cells.constEnd() ? -1 : cell->value;
}

void ParameterFile::poke(const QString& key, int value)
{
    const auto cell = cells.find(key);
    if (cell != cells.end())
        cell->value = value;
}

QMap<QString, int> ParameterFile::writable(bool selectors) const
{
    QMap<QString, int> values;
    for (auto cell = cells.begin(); cell != cells.end(); ++cell) {
        if (cell->kind == Kind::Setting || (selectors && cell->kind == Kind::Selector))
            values.insert(cell.key(), cell->value);
    }
    return values;
}

} // namespace sim
