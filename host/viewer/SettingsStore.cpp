// SPDX-License-Identifier: GPL-3.0-or-later
// Reading, setting aside and writing of the settings file.
#include "SettingsStore.h"

#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

namespace {

/// No file can be there, so a QSettings of this name keeps its values in memory.
const QLatin1String inMemory("/dev/null/settings.ini");

QString defaultFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/kestrova/kestrova.ini");
}

} // namespace

SettingsStore::SettingsStore(const QString& file)
{
    const QString path = file.isEmpty() ? defaultFile() : file;
    m_settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    m_settings->allKeys(); // reads the file
    if (m_settings->status() == QSettings::FormatError) {
        m_settings.reset();
        m_damagedFile = path + QStringLiteral(".damaged");
        QFile::remove(m_damagedFile);
        QFile::rename(path, m_damagedFile);
        m_settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    }
}

bool SettingsStore::save(const std::function<void(QSettings&)>& collect)
{
    const bool failedBefore = m_settings->status() != QSettings::NoError;
    if (failedBefore) {
        // QSettings keeps a status for good. Another one for the same file has what is yet to be written, too.
        m_settings = std::make_unique<QSettings>(m_settings->fileName(), QSettings::IniFormat);
    }
    // Plug-ins write all their values each time. Written to directly, m_settings would rewrite its file although
    // nothing has changed.
    QSettings copy(inMemory, QSettings::IniFormat);
    const QStringList before = m_settings->allKeys();
    for (const QString& key : before) {
        copy.setValue(key, m_settings->value(key));
    }
    collect(copy);

    bool changed = failedBefore;
    const QStringList after = copy.allKeys();
    for (const QString& key : after) {
        const QVariant value = copy.value(key);
        if (!m_settings->contains(key) || m_settings->value(key) != value) {
            m_settings->setValue(key, value);
            changed = true;
        }
    }
    for (const QString& key : before) {
        if (!copy.contains(key)) {
            m_settings->remove(key);
            changed = true;
        }
    }
    if (changed) {
        m_settings->sync();
    }
    return m_settings->status() == QSettings::NoError;
}
