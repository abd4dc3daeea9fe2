// SPDX-License-Identifier: GPL-3.0-or-later
// Loading in steps, each of which ends with a reason when it fails.
#include "PluginManager.h"

#include <exception>
#include <new>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>
#include <QtCore/QSettings>

#include <vnCore/CxPlugin.h>

#include "FileTrust.h"
#include "PluginDocks.h"

namespace {

/// The context of this file's texts in translations.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(PluginManager)
};

bool isForThisProgram(const QString& identifier)
{
    return identifier == QLatin1String(VNCORE_PLUGIN_IID) ||
           identifier.startsWith(QLatin1String(VNCORE_PLUGIN_IID_PREFIX));
}

/// What the call throws, as text; empty if nothing. Whatever was thrown is gone when this returns: its code may be
/// the plug-in's and be unloaded next.
template<typename Call>
QString thrownBy(Call call)
{
    try {
        call();
        return {};
    } catch (const std::bad_alloc&) {
        return Text::tr("It ran out of memory.");
    } catch (const std::exception& exception) {
        return Text::tr("It failed: %1").arg(QString::fromLocal8Bit(exception.what()));
    } catch (...) {
        return Text::tr("It failed without a reason.");
    }
}

/// Calls a plug-in that is in use: what it throws is told, and the plug-in stays.
template<typename Call>
void callInUse(const QPluginLoader& loader, Call call)
{
    const QString thrown = thrownBy(call);
    if (!thrown.isEmpty())
        qCritical("Plug-in %s: %s", qPrintable(loader.fileName()), qPrintable(thrown));
}

/// A plug-in that threw may have left its group open.
void leaveGroups(QSettings& settings)
{
    while (!settings.group().isEmpty())
        settings.endGroup();
}

/// Why the plug-in cannot be used, empty if it can; `plugin` is then its object, and initialised.
QString initialise(QPluginLoader& loader, PluginInfo& info, CxPlugin*& plugin)
{
    QObject* object = loader.instance();
    if (!object)
        return Text::tr("It cannot be loaded. %1").arg(loader.errorString());
    plugin = qobject_cast<CxPlugin*>(object);
    if (!plugin)
        return Text::tr("It does not have the interface %1.").arg(QLatin1String(VNCORE_PLUGIN_IID));
    info.name = plugin->name();
    info.description = plugin->description();
    info.version = plugin->version();
    info.author = plugin->author();
    info.website = plugin->website();
    return plugin->init() ? QString() : Text::tr("It could not be initialised.");
}

} // namespace

PluginManager::PluginManager(PluginDocks& docks) : pluginDocks(docks) {}

PluginManager::~PluginManager()
{
    finish();
    unload();
}

QString PluginManager::installedDirectory()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString installed = programs.filePath(QStringLiteral("../" KESTROVA_LIBDIR "/kestrova/plugins"));
    const QString built = programs.filePath(QStringLiteral("../lib/kestrova/plugins"));
    return QDir::cleanPath(QDir(installed).exists() ? installed : built);
}

void PluginManager::load(const QStringList& directories)
{
    QStringList files;
    for (const QString& directory : directories) {
        const auto entries = QDir(directory).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo& entry : entries)
            files.append(entry.canonicalFilePath());
    }
    files.removeDuplicates();
    for (const QString& file : qAsConst(files)) {
        infos.push_back(loadFile(file));
        const PluginInfo& info = infos.back();
        if (!info.error.isEmpty())
            qWarning("Plug-in %s is not used: %s", qPrintable(info.file), qPrintable(info.error));
    }
}

PluginInfo PluginManager::loadFile(const QString& file)
{
    PluginInfo info;
    info.file = file;

    // The metadata is read without running any of the file's code.
    auto loader = std::make_unique<QPluginLoader>(file);
    const QString identifier = loader->metaData().value(QLatin1String("IID")).toString();
    if (identifier.isEmpty()) {
        info.error = Text::tr("It is no plug-in. %1").arg(loader->errorString());
        return info;
    }
    if (!isForThisProgram(identifier)) {
        info.error = Text::tr("It is a plug-in for another program (%1).").arg(identifier);
        return info;
    }

    const QString writable = writableByOthers(file);
    if (!writable.isEmpty())
        info.warning = Text::tr("Others can change what this plug-in does: they can write to %1.").arg(writable);

    const int widgetsBefore = pluginDocks.count();
    CxPlugin* plugin = nullptr;
    const QString thrown = thrownBy([&] { info.error = initialise(*loader, info, plugin); });
    if (!thrown.isEmpty())
        info.error = thrown;
    if (info.error.isEmpty()) {
        loadedPlugins.push_back({std::move(loader), plugin});
    } else {
        pluginDocks.destroyFrom(widgetsBefore);
        loader->unload();
    }
    return info;
}

void PluginManager::loadSettings(QSettings& settings)
{
    for (const Loaded& loaded : loadedPlugins) {
        callInUse(*loaded.loader, [&] { loaded.plugin->loadSettings(settings); });
        leaveGroups(settings);
    }
}

void PluginManager::saveSettings(QSettings& settings)
{
    for (const Loaded& loaded : loadedPlugins) {
        if (loaded.plugin) {
            callInUse(*loaded.loader, [&] { loaded.plugin->saveSettings(settings); });
            leaveGroups(settings);
        }
    }
}

void PluginManager::finish()
{
    for (Loaded& loaded : loadedPlugins) {
        if (loaded.plugin) {
            callInUse(*loaded.loader, [&] { loaded.plugin->finish(); });
            loaded.plugin = nullptr;
        }
    }
    pluginDocks.destroyFrom(0);
}

void PluginManager::unload()
{
    for (Loaded& loaded : loadedPlugins)
        loaded.loader->unload(); // deletes the plug-in object first
    loadedPlugins.clear();
}
