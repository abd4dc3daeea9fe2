// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-in object: tells the host who the tool is, creates its form and hands it over, passes the settings on.
#ifndef KESTROVA_DATATHROUGHPUTGRAPHPLUGIN_H
#define KESTROVA_DATATHROUGHPUTGRAPHPLUGIN_H

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <vnCore/CxPlugin.h>

class CxDataGraphForm;

/// Owns nothing: the form belongs to the host from init() on and may be destroyed before or after this object.
class CxDataThroughputGraphPlugin : public QObject, public CxPlugin
{
    Q_OBJECT
    Q_INTERFACES(CxPlugin)

public:
    bool init() override;
    void loadSettings(QSettings& settings) override;
    void saveSettings(QSettings& settings) override;
    QString name() override;
    QString author() override;
    QString description() override;
    void coreVersion(int& major, int& minor, int& revision) override;
    QString website() override;

private:
    QPointer<CxDataGraphForm> form;
};

#endif
