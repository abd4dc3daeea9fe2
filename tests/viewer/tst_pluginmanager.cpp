// SPDX-License-Identifier: GPL-3.0-or-later
// Right and wrong plug-ins: what is refused, why, and where it shows.
#include <sys/stat.h>

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include "Files.h"
#include "LogCapture.h"
#include "PluginDocks.h"
#include "PluginManager.h"
#include "PluginsDialog.h"
#include "Table.h"
#include "TakeOvers.h"
#include "ViewerDelegate.h"

namespace {

/// What a plug-in comes into.
struct Host
{
    QMainWindow window;
    QMenu menu;
    PluginDocks docks{window, menu};
    TakeOvers takeOvers;
    ViewerDelegate delegate{docks, takeOvers};
    PluginManager manager{docks};
};

QString module(const char* name)
{
    return QStringLiteral(MODULES_DIR "/") + name;
}

} // namespace

class TestPluginManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrongFilesAreRefusedWithAReason()
    {
        const QStringList begun{"init", "widget destroyed", "plug-in destroyed"};
        const Rows<QString, QString, QStringList> rows{
            {module("otherprogram"), "another program", {}},
            {module("nointerface"), "CxPlugin", {}},
            {module("initfails"), "initialised", begun},
            {module("throws"), "no luck", begun},
            {fileWith("text.so", "no library"), "no plug-in", {}},
            {fileWith("torn.so", readFile(module("good") + "/good.so").left(30'000)), ".", {}}};
        for (const auto& [place, reason, expectedDiary] : rows) {
            qApp->setProperty("diary", {});
            Host host;
            host.manager.load({place, module("good")});
            const auto& plugins = host.manager.plugins();
            QCOMPARE(plugins.size(), size_t(2));
            QVERIFY2(plugins[0].error.contains(reason), qPrintable(plugins[0].error));
            QCOMPARE(plugins[1].name + plugins[1].error, QString("Test plug-in")); // the good one is not held up
            // Without the number of open cameras.
            QStringList diary =
                qApp->property("diary").toStringList().replaceInStrings(QRegularExpression(" \\(.*"), {});
            QCOMPARE(diary.takeLast(), QString("init"));
            QCOMPARE(diary, expectedDiary);
            QCOMPARE(host.docks.widgets().size(), 1);
        }
    }

    void exceptionInUseIsTold()
    {
        Host host;
        host.manager.load({module("good")});
        QSettings settings(directory.filePath("settings.ini"), QSettings::IniFormat);
        qApp->setProperty("loadThrows", true);
        const LogCapture log;
        host.manager.loadSettings(settings);
        qApp->setProperty("loadThrows", {});
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(settings.group(), QString()); // which the next plug-in would write into
    }

    void whatOthersCanChangeIsTold()
    {
        // Modes of the directory above, the plug-in's directory and its file.
        const Rows<std::array<mode_t, 3>, QString> rows{
            {{0755, 0755, 0644}, ""},
            {{0755, 0755, 0664}, "/safe/plugins/good.so"},
            {{0755, 0757, 0644}, "/safe/plugins"},
            {{0755, 01757, 0644}, "/safe/plugins"}, // others can add to it
            {{0757, 0755, 0644}, "/safe"},          // all can replace the directory
            {{01777, 0755, 0644}, ""}};             // only their own, as in /tmp
        for (const auto& [modes, told] : rows) {
            const QTemporaryDir place;
            const QString top = QFileInfo(place.path()).canonicalFilePath();
            const QString plugins = top + "/safe/plugins";
            QVERIFY(QDir().mkpath(plugins));
            QVERIFY(QFile::copy(module("good") + "/good.so", plugins + "/good.so"));
            const QString changed[] = {top + "/safe", plugins, plugins + "/good.so"};
            for (size_t i = 0; i < modes.size(); ++i)
                QCOMPARE(::chmod(qPrintable(changed[i]), modes[i]), 0);
            Host host;
            host.manager.load({plugins});
            QCOMPARE(host.manager.plugins()[0].error, QString()); // it is used all the same
            const QString warning = host.manager.plugins()[0].warning;
            QVERIFY2(told.isEmpty() ? warning.isEmpty() : warning.contains(' ' + top + told + '.'),
                     qPrintable(warning));
        }
    }

    void allThatIsKnownIsShown()
    {
        const PluginInfo info{"/f.so", "N", "D & D", "V", "A", "W", "E<1>", "C"};
        const PluginsDialog dialog({info});
        QCOMPARE(dialog.findChild<QTextBrowser*>()->toPlainText().simplified(),
                 QStringLiteral(
                     "Not used E<1> Caution C Name N Description D & D Version V Author A Website W File /f.so"));
        QCOMPARE(dialog.findChild<QListWidget*>()->item(0)->text(), QStringLiteral("N (not used)"));
    }

    void dockIsReopenedFromTheMenuAndScrolls()
    {
        Host host;
        auto* tall = new QWidget;
        tall->setMinimumHeight(3000);
        tall->setWindowTitle("Tall");
        host.delegate.addPluginWidget(tall, 8, 12, false);
        host.window.resize(600, 400);
        host.window.show();
        auto* dock = host.window.findChild<QDockWidget*>();
        QCOMPARE(host.window.dockWidgetArea(dock), Qt::BottomDockWidgetArea);
        QCOMPARE(dock->allowedAreas(), Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
        QVERIFY(tall->height() >= 3000);
        dock->close();
        QVERIFY(!tall->isVisible());
        QCOMPARE(host.menu.actions().size(), 1);
        host.menu.actions()[0]->trigger();
        QVERIFY(tall->isVisible());
    }

private:
    QString fileWith(const QString& name, const QByteArray& content)
    {
        QString place = directory.filePath(name + ".d");
        QDir().mkpath(place);
        writeFile(place + '/' + name, content);
        return place;
    }

    QTemporaryDir directory;
};

QTEST_MAIN(TestPluginManager)
#include "tst_pluginmanager.moc"
