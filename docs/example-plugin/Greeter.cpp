// SPDX-License-Identifier: GPL-3.0-or-later
// The smallest plug-in: says that it is there.
#include <vnCore/CxCameraManager.h>
#include <vnCore/CxPlugin.h>
#include <vnCore/IxAppDelegate.h>
#include <vnCore/vnCore.h>
#include <vnCoreGui/CxExportToolButton.h>

/// The host owns it and calls it on the user interface thread.
class Greeter : public QObject, public CxPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VNCORE_PLUGIN_IID)
    Q_INTERFACES(CxPlugin)

public:
    bool init() override
    {
        IxAppDelegate::instance()->addPluginWidget(new CxExportToolButton, 8, 12, false);
        qCritical("greeter: %d cameras", CxCameraManager::instance()->openedCameras().size());
        return true;
    }
    QString name() override { return QStringLiteral("Greeter"); }
    QString author() override { return QStringLiteral("Somebody else"); }
    QString description() override { return QStringLiteral("Says hello."); }
    QString website() override { return {}; }
    void coreVersion(int& major, int& minor, int& revision) override { vnCoreVersion(major, minor, revision); }
};

#include "Greeter.moc"
