// SPDX-License-Identifier: GPL-3.0-or-later
// A module that names the program's identifier, but has not its plug-in interface.
#include <QtCore/QObject>

class NoInterface : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TEST_IID)
};

#include "NoInterface.moc"
