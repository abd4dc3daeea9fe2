// SPDX-License-Identifier: GPL-3.0-or-later
// The viewer as a whole, in this process: order of beginning and end, settings, take-overs, critical lines.
#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include <vnCore/vnCore.h>

#include "CameraRegistry.h"
#include "Files.h"
#include "ItemTexts.h"
#include "MainWindow.h"
#include "PluginManager.h"
#include "Theme.h"
#include "Viewer.h"

class TestViewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qApp->setProperty("diary", {});
        directory = std::make_unique<QTemporaryDir>();
        options = {};
        options.settingsFile = directory->filePath("settings.ini");
        options.pluginDirs = QStringList{MODULES_DIR "/good", MODULES_DIR "/good", "/no/such/directory"};
    }

    void beginsAndEndsInOrder()
    {
        Viewer viewer(options);
        QCOMPARE(viewer.start(), QString());
        viewer.shutDown();
        viewer.shutDown();
        QCOMPARE(diary(), QStringList({"init (4 open)", "load 0 (4 open)", "save (4 open)", "finish (4 open)",
                                       "widget destroyed (4 open)", "plug-in destroyed (0 open)"}));
        QCOMPARE(CameraRegistry::instance().deviceCount(), 0);
        QVERIFY(IxAppDelegate::instance() != nullptr); // plug-ins may ask until they are gone
    }

    void settingsLastFromRunToRun()
    {
        for (const int expected : {3, 5}) {
            Viewer viewer(options);
            viewer.start();
            QCOMPARE(IxAppDelegate::instance()->applicationOptions().detailLevel, expected);
            QCOMPARE(viewer.window().findChild<QActionGroup*>()->checkedAction()->data().toInt(), expected);
            viewer.window().findChild<QActionGroup*>()->actions().constLast()->trigger();
            QCOMPARE(IxAppDelegate::instance()->lastDirectory(),
                     expected == 3 ? QDir::homePath() : directory->path());
            IxAppDelegate::instance()->setLastDirectory(directory->path());
        }
        QVERIFY(diary().contains("load 7 (4 open)"));
    }

    void pictureCanBeHiddenAndTheFirstLayoutComesBack()
    {
        const auto prepare = [this](Viewer& viewer) {
            viewer.start();
            auto* picture = viewer.window().centralWidget();
            return std::make_pair(picture, viewer.window().findChild<QDockWidget*>("dockEvents"));
        };
        {
            Viewer viewer(options);
            const auto [picture, events] = prepare(viewer);
            action(viewer, "&Picture")->trigger();
            QVERIFY(!picture->isVisible());
            viewer.window().addDockWidget(Qt::BottomDockWidgetArea, events);
            events->hide();
        }
        Viewer viewer(options);
        const auto [picture, events] = prepare(viewer);
        QVERIFY(!picture->isVisible() && !events->isVisible()); // as it was left
        action(viewer, "&Reset layout")->trigger();
        QVERIFY(picture->isVisible() && events->isVisible());
        QCOMPARE(viewer.window().dockWidgetArea(events), Qt::RightDockWidgetArea);
    }

    void bottomDockKeepsItsShareOfTheHeight()
    {
        for (const int expected : {630, 450}) { // as first arranged, as it was left
            QSettings(options.settingsFile, QSettings::IniFormat).remove("Viewer/geometry");
            Viewer viewer(options);
            viewer.start();
            MainWindow& window = viewer.window();
            auto* dock = window.findChildren<QDockWidget*>(QRegularExpression("TestWidget")).constFirst();
            QCOMPARE(dock->height(), expected);
            window.resizeDocks({dock}, {450}, Qt::Vertical);
            QTRY_COMPARE(dock->height(), 450);
            for (const int height : {500, 1400, window.height()})
                window.resize(window.width(), height);
            QCOMPARE(dock->height(), 450);
            window.resize(window.width(), 1400); // the next begins smaller, as if this one were maximised
        }
    }

    void menusHaveABorderAndNoBlankEntry()
    {
        const QPalette palette = QApplication::palette();
        applyDarkTheme(*qApp);
        const auto restored = qScopeGuard([&] { QApplication::setPalette(palette); });
        Viewer viewer(options);
        viewer.start();
        auto* menu = viewer.window().menuBar()->actions()[1]->menu()->actions()[0]->menu();
        for (const QAction* level : menu->actions())
            QVERIFY2(level->text().size() > 4, qPrintable(level->text()));
        const QImage image = menu->grab().toImage();
        for (const QPoint& place : {QPoint(0, image.height() / 2), QPoint(image.width() / 2, image.height() - 1)})
            QVERIFY(image.pixelColor(place).lightness() > menu->palette().window().color().lightness() + 50);
    }

    void whatHappensIsAnEvent()
    {
        writeFile(options.settingsFile, "garbage\n");
        options.pluginDirs.append(MODULES_DIR "/throws");
        Viewer viewer(options);
        QCOMPARE(viewer.start(), QString());
        QVERIFY(hasEvent(viewer, "damaged"));
        QVERIFY(hasEvent(viewer, "no luck"));
        qCritical("something failed");
        QTRY_VERIFY(hasEvent(viewer, "something failed"));

        VNCORE_HANDLE camera = CxCameraManager::instance()->openedCameras().constFirst();
        IxAppDelegate::instance()->setCameraControlEnabled(camera, false);
        QVERIFY(hasEvent(viewer, "taken over"));
        delete viewer.window().findChild<QWidget*>("TestWidget");
        QVERIFY(hasEvent(viewer, "given back"));
    }

    void newestEventStaysInView()
    {
        Viewer viewer(options);
        viewer.start();
        auto* dock = viewer.window().findChild<QDockWidget*>("dockEvents");
        const QScrollBar* bar = dock->findChild<QTreeView*>()->verticalScrollBar();
        const auto append = [&viewer] {
            for (int i = 0; i < 100; ++i)
                viewer.events().append(EventLog::Severity::Information, QString::number(i));
        };
        append();
        QTRY_VERIFY(bar->maximum() > 50 && bar->value() == bar->maximum());
        const int before = bar->maximum();
        viewer.window().resize(viewer.window().width(), 500);
        QTRY_VERIFY(bar->maximum() > before);
        QCOMPARE(bar->value(), bar->maximum());
        dock->findChild<QTreeView*>()->scrollToTop();
        append();
        QTRY_VERIFY(bar->maximum() > before + 100);
        QCOMPARE(bar->value(), 0);
    }

private:
    static QStringList diary() { return qApp->property("diary").toStringList(); }

    static QAction* action(Viewer& viewer, const char* text)
    {
        const auto actions = viewer.window().docksMenu().actions();
        return *std::find_if(actions.begin(), actions.end(),
                             [text](const QAction* each) { return each->text() == QLatin1String(text); });
    }

    static bool hasEvent(Viewer& viewer, const char* text)
    {
        return !columnTexts(viewer.events(), EventLog::TextColumn).filter(QLatin1String(text)).isEmpty();
    }

    std::unique_ptr<QTemporaryDir> directory;
    ViewerOptions options;
};

QTEST_MAIN(TestViewer)
#include "tst_viewer.moc"
