// SPDX-License-Identifier: GPL-3.0-or-later
// Asks the system.
#include "Machine.h"

#include <unistd.h>

#include <cstdlib>

#include <QtCore/QFile>
#include <QtCore/QSysInfo>
#include <QtCore/QThread>

namespace {

QString firstLine(const char* fileName)
{
    QFile file(QString::fromLatin1(fileName));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readLine()).trimmed() : QString();
}

/// Of the first processor; some architectures do not tell.
QString processorModel()
{
    QFile file(QStringLiteral("/proc/cpuinfo"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        if (line.startsWith("model name"))
            return QString::fromUtf8(line.mid(line.indexOf(':') + 1)).simplified();
    }
    return {};
}

QString memory()
{
    const double bytes =
        static_cast<double>(::sysconf(_SC_PHYS_PAGES)) * static_cast<double>(::sysconf(_SC_PAGESIZE));
    return bytes > 0.0 ? QStringLiteral("%1 GiB").arg(bytes / (1 << 30), 0, 'f', 1) : QString();
}

QString load()
{
    double loads[3] = {};
    if (::getloadavg(loads, 3) != 3)
        return {};
    return QStringLiteral("%1, %2, %3 (last 1, 5, 15 min)")
        .arg(loads[0], 0, 'f', 2)
        .arg(loads[1], 0, 'f', 2)
        .arg(loads[2], 0, 'f', 2);
}

} // namespace

std::vector<ReportFact> machineFacts()
{
    QString processors = QString::number(QThread::idealThreadCount());
    const QString model = processorModel();
    if (!model.isEmpty())
        processors += QStringLiteral(" \u00d7 ") + model;
    const ReportFact all[] = {
        {QStringLiteral("Name"), QSysInfo::machineHostName()},
        {QStringLiteral("System"), QSysInfo::prettyProductName()},
        {QStringLiteral("Kernel"), QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion()},
        {QStringLiteral("Architecture"), QSysInfo::currentCpuArchitecture()},
        {QStringLiteral("Processors"), processors},
        {QStringLiteral("Frequency governor"), firstLine("/sys/devices/system/cpu/cpu0/cpufreq/scaling_governor")},
        {QStringLiteral("Memory"), memory()},
        {QStringLiteral("Load at the end"), load()},
        {QStringLiteral("Qt"), QString::fromLatin1(qVersion())},
    };
    std::vector<ReportFact> known;
    for (const ReportFact& fact : all) {
        if (!fact.value.isEmpty())
            known.push_back(fact);
    }
    return known;
}
