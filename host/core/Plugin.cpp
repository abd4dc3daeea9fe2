// SPDX-License-Identifier: GPL-3.0-or-later
// What a plug-in inherits: operations that do nothing. And the library's version.
#include <vnCore/CxPlugin.h>
#include <vnCore/vnApi.h>

CxPlugin::~CxPlugin() = default;

void CxPlugin::finish() {}
void CxPlugin::loadSettings(QSettings& /*settings*/) {}
void CxPlugin::saveSettings(QSettings& /*settings*/) {}

QString CxPlugin::copyrightNotice() const
{
    return {};
}

QString CxPlugin::version() const
{
    int major = 0;
    int minor = 0;
    int revision = 0;
    vnCoreVersion(major, minor, revision);
    return QStringLiteral("%1.%2.%3").arg(major).arg(minor).arg(revision);
}

void CxPlugin::activeViewChanged(int /*view*/) {}
void CxPlugin::viewAboutToClose(int /*view*/) {}
void CxPlugin::newCameraConnected(void* /*camera*/) {}
void CxPlugin::cameraDisconnected(void* /*camera*/) {}
void CxPlugin::viewGotNewImage(int /*view*/, const CxImageData* /*image*/) {}

bool CxPlugin::viewMouseBtnPressEvent(int /*view*/, QGraphicsSceneMouseEvent* /*event*/)
{
    return false;
}

bool CxPlugin::viewMouseMoveEvent(int /*view*/, QGraphicsSceneMouseEvent* /*event*/)
{
    return false;
}

bool CxPlugin::viewMouseBtnReleaseEvent(int /*view*/, QGraphicsSceneMouseEvent* /*event*/)
{
    return false;
}

bool CxPlugin::viewMouseDoubleClickEvent(int /*view*/, QGraphicsSceneMouseEvent* /*event*/)
{
    return false;
}

bool CxPlugin::customCommand(const QString& /*command*/, int /*arg1*/, int /*arg2*/, void* /*data1*/, void* /*data2*/)
{
    return false;
}

void vnCoreVersion(int& major, int& minor, int& revision)
{
    major = VNCORE_MAJOR;
    minor = VNCORE_MINOR;
    revision = VNCORE_REVISION;
}
