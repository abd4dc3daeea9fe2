// SPDX-License-Identifier: GPL-3.0-or-later
// The file that keeps the viewer's and the plug-ins' settings. What is kept is the business of those who collect.
#ifndef KESTROVA_SETTINGSSTORE_H
#define KESTROVA_SETTINGSSTORE_H

#include <functional>
#include <memory>

#include <QtCore/QSettings>
#include <QtCore/QString>

/// A save touches the disk only when a value has changed, so that a viewer that runs for weeks does not wear it. User
/// interface thread only.
class SettingsStore
{
public:
    /// Opens the file, by default the user's. One that cannot be parsed is renamed to "<file>.damaged" and the
    /// viewer begins with defaults.
    explicit SettingsStore(const QString& file = {});

    /// Where a damaged file went, empty if all was well.
    QString damagedFile() const { return asideFile; }

    /// For reading, until the next save().
    QSettings& settings() { return *store; }

    /// Lets `collect` write into a copy of the settings and puts what differs into the file. False if the file
    /// could not be written; the next call tries again.
    bool save(const std::function<void(QSettings&)>& collect);

private:
    std::unique_ptr<QSettings> store;
    QString asideFile;
    bool failed = false; ///< the last write
};

#endif
