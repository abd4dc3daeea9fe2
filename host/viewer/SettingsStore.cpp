// SPDX-License-Identifier: GPL-3.0-or-later
// Reading, setting aside and writing of the settings file.
#include "SettingsStore.h"

#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

namespace {

/// No file can be there, so a QSettings of this name keeps its values in memory.
const QLatin1String inMemory("/dev/null/settings.ini");

/// Whether the file has a line for every key: QSettings does not tell of a file that a full disk cut short.
bool isWhole(const QSettings& settings)
{
    QFile file(settings.fileName());
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = file.readAll();
    int lines = 0;
    for (const QByteArray& line : text.split('\n'))
        lines += line.contains('=') ? 1 : 0;
    return (text.isEmpty() || text.endsWith('\n')) && lines == settings.allKeys().size();
}

QString defaultFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/kestrova/kestrova.ini");
}

} // namespace

SettingsStore::SettingsStore(const QString& file)
{
    const QString path = file.isEmpty() ? defaultFile() : file;
    store = std::make_unique<QSettings>(path, QSettings::IniFormat);
    store->allKeys(); // reads the file
    if (store->status() == QSettings::FormatError) {
        store.reset();
        asideFile = path + QStringLiteral(".damaged");
        QFile::remove(asideFile);
        QFile::rename(path, asideFile);
        store = std::make_unique<QSettings>(path, QSettings::IniFormat);
    }
}

bool SettingsStore::save(const std::function<void(QSettings&)>& collect)
{
    const bool failedBefore = failed;
    if (failedBefore) {
        // QSettings keeps a status for good. Another one for the same file has what is yet to be written, too.
        store = std::make_unique<QSettings>(store->fileName(), QSettings::IniFormat);
    }
    // Plug-ins write all their values each time. Written to directly, `store` would rewrite its file
    // although nothing has changed.
    QSettings copy(inMemory, QSettings::IniFormat);
    const QStringList before = store->allKeys();
    for (const QString& key : before)
        copy.setValue(key, store->value(key));
    collect(copy);

    bool changed = failedBefore;
    const QStringList after = copy.allKeys();
    for (const QString& key : after) {
        const QVariant value = copy.value(key);
        if (failedBefore || !store->contains(key) || store->value(key) != value) {
            store->setValue(key, value);
            changed = true;
        }
    }
    for (const QString& key : before) {
        if (!copy.contains(key)) {
            store->remove(key);
            changed = true;
        }
    }
    if (changed) {
        store->sync();
        failed = store->status() != QSettings::NoError || !isWhole(*store);
    }
    return !failed;
}
