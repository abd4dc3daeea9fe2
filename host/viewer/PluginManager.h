// SPDX-License-Identifier: GPL-3.0-or-later
// Finds plug-ins, looks at them before it loads them, and takes them through their life.
#ifndef KESTROVA_PLUGINMANAGER_H
#define KESTROVA_PLUGINMANAGER_H

#include <memory>
#include <vector>

#include <QtCore/QStringList>

class CxPlugin;
class PluginDocks;
class QPluginLoader;
class QSettings;

/// What the user can read about one file of a plug-in directory.
struct PluginInfo
{
    QString file;
    QString name;
    QString description;
    QString version;
    QString author;
    QString website;
    QString error;   ///< why it is not used; empty if it is
    QString warning; ///< others can change what it does; it is used all the same
};

/// The order of its calls is the life of a plug-in: load(), loadSettings(), any number of saveSettings(), finish(),
/// then the cameras may be closed, then unload(). Nothing a file contains or throws here stops the
/// viewer, short of code that crashes. User interface thread only.
class PluginManager
{
public:
    /// `docks` is where the plug-ins' widgets end up; it must outlive the manager.
    explicit PluginManager(PluginDocks& docks);
    ~PluginManager();

    /// Where plug-ins are installed, relative to the program.
    static QString installedDirectory();

    /// Loads and initialises what the directories hold, in the order of the file names. Missing directories are
    /// passed over.
    void load(const QStringList& directories);
    /// The settings have no group open, here and below.
    void loadSettings(QSettings& settings);
    void saveSettings(QSettings& settings);
    /// Ends the plug-ins and destroys their widgets.
    void finish();
    void unload();

    /// Every file that was found, used or not.
    const std::vector<PluginInfo>& plugins() const { return infos; }

private:
    PluginInfo loadFile(const QString& file);

    /// The loader keeps the module in memory until unload().
    struct Loaded
    {
        std::unique_ptr<QPluginLoader> loader;
        CxPlugin* plugin; ///< null after finish()
    };

    PluginDocks& pluginDocks;
    std::vector<Loaded> loadedPlugins;
    std::vector<PluginInfo> infos;
};

#endif
