// SPDX-License-Identifier: GPL-3.0-or-later
// Right and wrong plug-ins: what is refused, why, and where it shows.
#include <sys/stat.h>

#include <QtTest/QtTest>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollArea>

#include "LogCapture.h"
#include "PluginDocks.h"
#include "PluginManager.h"
#include "Table.h"
#include "TakeOvers.h"
#include "ViewerDelegate.h"

class TestPluginManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qApp->setProperty("diary", {});
        m_window = std::make_unique<QMainWindow>();
        m_menu = std::make_unique<QMenu>();
        m_docks = std::make_unique<PluginDocks>(*m_window, *m_menu);
        m_takeOvers = std::make_unique<TakeOvers>();
        m_delegate = std::make_unique<ViewerDelegate>(*m_docks, *m_takeOvers);
        m_manager = std::make_unique<PluginManager>(*m_docks);
    }
    void cleanup()
    {
        m_manager.reset();
        m_delegate.reset();
        m_docks.reset();
        m_window.reset();
    }

    void wrongFilesAreRefusedWithAReason_data()
    {
        const Table<QString, QString, QStringList> row("directory", "reason", "expectedDiary");
        row("another program's", module("otherprogram"), "another program", {});
        row("without the interface", module("nointerface"), "CxPlugin", {});
        row("init fails", module("initfails"), "initialised", {"init", "widget destroyed", "plug-in destroyed"});
        row("init throws", module("throws"), "no luck", {"init", "widget destroyed", "plug-in destroyed"});
        row("text", fileWith("text.so", "no library"), "no plug-in", {});
        row("torn off", fileWith("torn.so", contents(module("good") + "/good.so").left(30'000)), ".", {});
    }
    void wrongFilesAreRefusedWithAReason()
    {
        QFETCH(QString, directory);
        QFETCH(QString, reason);
        m_manager->load({directory, module("good")});
        QCOMPARE(m_manager->plugins().size(), size_t(2));
        const QString error = m_manager->plugins()[0].error;
        QVERIFY2(error.contains(reason), qPrintable(error));
        QCOMPARE(m_manager->plugins()[1].error, QString()); // the good one is not held up
        QCOMPARE(m_manager->plugins()[1].name, QStringLiteral("Test plug-in"));
        QStringList entries = diary();
        QCOMPARE(entries.takeLast(), QStringLiteral("init"));
        QTEST(entries, "expectedDiary");
        QCOMPARE(m_docks->widgets().size(), 1);
    }

    void exceptionInUseIsTold()
    {
        m_manager->load({module("good")});
        QSettings settings(m_directory.filePath("settings.ini"), QSettings::IniFormat);
        qApp->setProperty("loadThrows", true);
        const LogCapture log;
        m_manager->loadSettings(settings);
        qApp->setProperty("loadThrows", {});
        QCOMPARE(log.lines().size(), 1);
        QCOMPARE(settings.group(), QString()); // which the next plug-in would write into
    }

    void whatOthersCanChangeIsTold_data()
    {
        // of the directory above, the plug-in's directory and its file
        const Table<int, int, int, QString> row("above", "directory", "file", "told");
        row("the user's own", 0755, 0755, 0644, {});
        row("file of a group", 0755, 0755, 0664, "/safe/plugins/good.so");
        row("directory of all", 0755, 0757, 0644, "/safe/plugins");
        row("others can add to it", 0755, 01757, 0644, "/safe/plugins");
        row("all can replace the directory", 0757, 0755, 0644, "/safe");
        row("only their own, as in /tmp", 01777, 0755, 0644, {});
    }
    void whatOthersCanChangeIsTold()
    {
        QFETCH(QString, told);
        const QTemporaryDir place;
        const QString top = QFileInfo(place.path()).canonicalFilePath();
        const QString plugins = top + "/safe/plugins";
        QVERIFY(QDir().mkpath(plugins));
        QVERIFY(QFile::copy(module("good") + "/good.so", plugins + "/good.so"));
        QFETCH(int, above);
        QFETCH(int, directory);
        QFETCH(int, file);
        QCOMPARE(::chmod(qPrintable(plugins + "/good.so"), mode_t(file)), 0);
        QCOMPARE(::chmod(qPrintable(plugins), mode_t(directory)), 0);
        QCOMPARE(::chmod(qPrintable(top + "/safe"), mode_t(above)), 0);
        m_manager->load({plugins});
        QCOMPARE(m_manager->plugins()[0].error, QString()); // it is used all the same
        const QString warning = m_manager->plugins()[0].warning;
        QVERIFY2(told.isEmpty() ? warning.isEmpty() : warning.contains(' ' + top + told + '.'), qPrintable(warning));
    }

    void dockIsReopenedFromTheMenuAndScrolls()
    {
        auto* tall = new QWidget;
        tall->setMinimumHeight(3000);
        tall->setWindowTitle("Tall");
        m_delegate->addPluginWidget(tall, 8, 12, false);
        m_window->resize(600, 400);
        m_window->show();
        auto* dock = m_window->findChild<QDockWidget*>();
        QCOMPARE(m_window->dockWidgetArea(dock), Qt::BottomDockWidgetArea);
        QCOMPARE(dock->allowedAreas(), Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
        QVERIFY(tall->height() >= 3000);
        dock->close();
        QVERIFY(!tall->isVisible());
        QCOMPARE(m_menu->actions().size(), 1);
        m_menu->actions()[0]->trigger();
        QVERIFY(tall->isVisible());
    }

private:
    static QString module(const char* name) { return QStringLiteral(MODULES_DIR "/") + name; }

    /// The diary without the number of open cameras.
    static QStringList diary()
    {
        return qApp->property("diary").toStringList().replaceInStrings(QRegularExpression(" \\(.*"), {});
    }

    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString fileWith(const QString& name, const QByteArray& content)
    {
        QString directory = m_directory.filePath(name + ".d");
        QDir().mkpath(directory);
        QFile file(directory + "/" + name);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(content);
        }
        return directory;
    }

    QTemporaryDir m_directory;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<PluginDocks> m_docks;
    std::unique_ptr<TakeOvers> m_takeOvers;
    std::unique_ptr<ViewerDelegate> m_delegate;
    std::unique_ptr<PluginManager> m_manager;
};

QTEST_MAIN(TestPluginManager)
#include "tst_pluginmanager.moc"
