// SPDX-License-Identifier: GPL-3.0-or-later
// A plug-in that keeps a diary in the application object's property "diary". Definitions make it a wrong one.
#include <cstdio>
#include <stdexcept>

#include <QtCore/QSettings>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <vnCore/CxCameraManager.h>
#include <vnCore/CxPlugin.h>
#include <vnCore/IxAppDelegate.h>

namespace {

enum Init
{
    Works,
    Fails,
    Throws
};

void note(const QString& line)
{
    const int open = CxCameraManager::instance()->openedCameras().size();
    qApp->setProperty("diary", qApp->property("diary").toStringList()
                                   << QStringLiteral("%1 (%2 open)").arg(line).arg(open));
}

/// With a button that opens a modal box, as the start of a measurement that fails does.
class TestWidget : public QWidget
{
public:
    TestWidget()
    {
        setObjectName(QStringLiteral("TestWidget"));
        setWindowTitle(QStringLiteral("Test tool"));
        connect(CxCameraManager::instance(), &CxCameraManager::cameraClosed, this,
                [] { std::fputs("camera closed\n", stderr); });
        auto* button = new QPushButton(QStringLiteral("Start All"), this);
        button->setObjectName(QStringLiteral("btnStartAll"));
        connect(button, &QPushButton::clicked, this, [this] {
            qCritical("box opens");
            QMessageBox::critical(this, QStringLiteral("Test tool"), QStringLiteral("Failed"));
            qCritical("box closed");
        });
    }
    ~TestWidget() override { note(QStringLiteral("widget destroyed")); }
};

} // namespace

/// Its loader owns it.
class TestPlugin : public QObject, public CxPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TEST_IID)
    Q_INTERFACES(CxPlugin)

public:
    ~TestPlugin() override { note(QStringLiteral("plug-in destroyed")); }

    bool init() override
    {
        note(QStringLiteral("init"));
        IxAppDelegate::instance()->addPluginWidget(new TestWidget, 8, 12, false);
        constexpr Init result = TEST_INIT;
        if (result == Throws)
            throw std::runtime_error("no luck");
        return result == Works;
    }
    void finish() override { note(QStringLiteral("finish")); }
    void loadSettings(QSettings& settings) override
    {
        settings.beginGroup(QStringLiteral("TestPlugin"));
        note(QStringLiteral("load %1").arg(settings.value(QStringLiteral("number")).toInt()));
        if (qApp->property("loadThrows").toBool())
            throw 1;
        settings.endGroup();
    }
    void saveSettings(QSettings& settings) override
    {
        note(QStringLiteral("save"));
        settings.setValue(QStringLiteral("TestPlugin/number"), 7);
    }
    QString name() override { return QStringLiteral("Test plug-in"); }
    QString author() override { return QStringLiteral("A. Tester"); }
    QString description() override { return QStringLiteral("Tests <plug-ins>"); }
    QString website() override { return QStringLiteral("https://kestrova.example/test"); }
    void coreVersion(int& major, int& minor, int& revision) override { major = minor = revision = 0; }
};

#include "TestPlugin.moc"
