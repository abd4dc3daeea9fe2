// SPDX-License-Identifier: GPL-3.0-or-later
// The integer parameters of a simulated camera: names, ranges, enumerations, which values go together, and the
// parameters that show one register of a bank.
#ifndef KESTROVA_SIM_PARAMETERFILE_H
#define KESTROVA_SIM_PARAMETERFILE_H

#include <QtCore/QMap>

#include <vnCore/CxCameraParameters.h>

#include "Scenario.h"

namespace sim {

/// Not thread-safe. A cell of a bank is known by its parameter and the selectors that lead to it, for example
/// "dp_param_value[1/5/6]"; `name` is what the host uses, `key` what identifies a cell.
class ParameterFile
{
public:
    /// Everything has its power-up value.
    explicit ParameterFile(const CameraScenario& scenario);

    bool has(const QString& name) const;
    bool get(const QString& name, int& value) const;
    bool canSet(const QString& name, int value) const;
    bool set(const QString& name, int value);
    QList<CxCameraParam::SxEnumItem> enumeration(const QString& name) const;

    /// Past all rules, by key; -1 if there is no such cell.
    int value(const QString& key) const;
    void poke(const QString& key, int value);
    /// What writes can change, by key. Selectors and what follows from them are left out unless asked for.
    QMap<QString, int> writable(bool selectors) const;

private:
    enum class Kind
    {
        Setting,
        Selector,
        ReadOnly
    };
    struct Cell
    {
        Kind kind = Kind::Setting;
        int value = 0;
        QList<CxCameraParam::SxEnumItem> items; ///< empty: a number from 0 on
    };

    QString key(const QString& name) const;
    bool goesTogether(const QString& name, int value) const;

    QMap<QString, Cell> cells;
};

} // namespace sim

#endif
