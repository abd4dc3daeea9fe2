// SPDX-License-Identifier: GPL-3.0-or-later
// Loading in steps, each of which ends with a reason when it fails.
#include "PluginManager.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>
#include <QtCore/QSettings>

#include <vnCore/CxPlugin.h>

#include "FileTrust.h"
#include "PluginDocks.h"

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(PluginManager)
};

} // namespace

PluginManager::PluginManager(PluginDocks& docks) : m_docks(docks) {}

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
        for (const QFileInfo& entry : entries) {
            files.append(entry.canonicalFilePath());
        }
    }
    files.removeDuplicates();
    for (const QString& file : qAsConst(files)) {
        m_infos.push_back(loadFile(file));
        const PluginInfo& info = m_infos.back();
        if (!info.error.isEmpty()) {
            qWarning("Plug-in %s is not used: %s", qPrintable(info.file), qPrintable(info.error));
        }
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
    if (!identifier.startsWith(QLatin1String("example.kestrova.Kestrova."))) {
        info.error = Text::tr("It is a plug-in for another program (%1).").arg(identifier);
        return info;
    }

    const QString writable = writableByOthers(file);
    if (!writable.isEmpty()) {
        info.warning = Text::tr("Others can change what this plug-in does: they can write to %1.").arg(writable);
    }

    QObject* object = loader->instance();
    if (!object) {
        info.error = Text::tr("It cannot be loaded. %1").arg(loader->errorString());
        return info;
    }
    auto* plugin = qobject_cast<CxPlugin*>(object);
    if (!plugin) {
        info.error = Text::tr("It does not have the interface %1.").arg(QLatin1String(VNCORE_PLUGIN_IID));
        loader->unload();
        return info;
    }
    info.name = plugin->name();
    info.description = plugin->description();
    info.version = plugin->version();
    info.author = plugin->author();
    info.website = plugin->website();

    const int widgetsBefore = m_docks.count();
    if (!plugin->init()) {
        info.error = Text::tr("It could not be initialised.");
        m_docks.destroyFrom(widgetsBefore);
        loader->unload();
        return info;
    }
    m_loaded.push_back({std::move(loader), plugin});
    return info;
}

void PluginManager::loadSettings(QSettings& settings)
{
    for (const Loaded& loaded : m_loaded) {
        loaded.plugin->loadSettings(settings);
    }
}

void PluginManager::saveSettings(QSettings& settings)
{
    for (const Loaded& loaded : m_loaded) {
        if (loaded.plugin) {
            loaded.plugin->saveSettings(settings);
        }
    }
}

void PluginManager::finish()
{
    for (Loaded& loaded : m_loaded) {
        if (loaded.plugin) {
            loaded.plugin->finish();
            loaded.plugin = nullptr;
        }
    }
    m_docks.destroyFrom(0);
}

void PluginManager::unload()
{
    for (Loaded& loaded : m_loaded) {
        loaded.loader->unload(); // deletes the plug-in object first
    }
    m_loaded.clear();
}
