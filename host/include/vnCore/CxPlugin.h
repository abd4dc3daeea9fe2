// SPDX-License-Identifier: GPL-3.0-or-later
// What a plug-in implements. All operations are called on the user interface thread; none should throw. A plug-in
// that throws while it is loaded, its init() included, is refused with what was thrown as the reason; later
// exceptions are told in the event list.
#ifndef VNCORE_CXPLUGIN_H
#define VNCORE_CXPLUGIN_H

#include <QtCore/QString>
#include <QtCore/QtPlugin>

#include <vnCore/vnTypes.h>

class CxImageData;
class QGraphicsSceneMouseEvent;
class QSettings;

/// The interface behind a plug-in's QObject. The order of the virtual operations is part of the interface; those
/// with a body here need not be overridden.
class VNCORE_EXPORT CxPlugin
{
public:
    virtual ~CxPlugin();

    /// Called once after loading. False: the plug-in cannot work and is unloaded.
    virtual bool init() = 0;
    /// Called once before the plug-in's widgets are destroyed.
    virtual void finish();
    /// The plug-in opens and closes a group of its own in the host's settings.
    virtual void loadSettings(QSettings& settings);
    virtual void saveSettings(QSettings& settings);
    virtual QString copyrightNotice() const;
    virtual QString name() = 0;
    virtual QString author() = 0;
    virtual QString description() = 0;
    virtual QString version() const;
    /// The version of the core library that the plug-in uses.
    virtual void coreVersion(int& major, int& minor, int& revision) = 0;
    virtual QString website() = 0;
    virtual void activeViewChanged(int view);
    virtual void viewAboutToClose(int view);
    virtual void newCameraConnected(void* camera);
    virtual void cameraDisconnected(void* camera);
    virtual void viewGotNewImage(int view, const CxImageData* image);
    /// True if the plug-in has used the event up.
    virtual bool viewMouseBtnPressEvent(int view, QGraphicsSceneMouseEvent* event);
    virtual bool viewMouseMoveEvent(int view, QGraphicsSceneMouseEvent* event);
    virtual bool viewMouseBtnReleaseEvent(int view, QGraphicsSceneMouseEvent* event);
    virtual bool viewMouseDoubleClickEvent(int view, QGraphicsSceneMouseEvent* event);
    virtual bool customCommand(const QString& command, int arg1, int arg2, void* data1, void* data2);
};

/// The interface's identifier, and what a plug-in writes as its own:
///     Q_PLUGIN_METADATA(IID VNCORE_PLUGIN_IID)
///     Q_INTERFACES(CxPlugin)
/// A file with another identifier is refused without running any of its code, unless it is VNCORE_PLUGIN_IID_PREFIX
/// followed by a name of the plug-in's own.
#define VNCORE_PLUGIN_IID "example.kestrova.CxPlugin"
#define VNCORE_PLUGIN_IID_PREFIX "example.kestrova.Kestrova."
Q_DECLARE_INTERFACE(CxPlugin, VNCORE_PLUGIN_IID)

#endif
