// SPDX-License-Identifier: GPL-3.0-or-later
// The viewer as a whole, in this process: order of beginning and end, settings, take-overs, critical lines.
#include <QtTest/QtTest>
#include <QtWidgets/QActionGroup>

#include <vnCore/vnCore.h>

#include "CameraRegistry.h"
#include "MainWindow.h"
#include "PluginManager.h"
#include "Viewer.h"

class TestViewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qApp->setProperty("diary", {});
        m_directory = std::make_unique<QTemporaryDir>();
        m_options = {};
        m_options.settingsFile = m_directory->filePath("settings.ini");
        m_options.pluginDirs = QStringList{MODULES_DIR "/good", MODULES_DIR "/good", "/no/such/directory"};
    }

    void beginsAndEndsInOrder()
    {
        Viewer viewer(m_options);
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
            Viewer viewer(m_options);
            viewer.start();
            QCOMPARE(IxAppDelegate::instance()->applicationOptions().detailLevel, expected);
            QCOMPARE(viewer.window().findChild<QActionGroup*>()->checkedAction()->data().toInt(), expected);
            viewer.window().findChild<QActionGroup*>()->actions().constLast()->trigger();
            QCOMPARE(IxAppDelegate::instance()->lastDirectory(),
                     expected == 3 ? QDir::homePath() : m_directory->path());
            IxAppDelegate::instance()->setLastDirectory(m_directory->path());
        }
        QVERIFY(diary().contains("load 7 (4 open)"));
    }

    void whatHappensIsAnEvent()
    {
        QFile file(m_options.settingsFile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("garbage\n");
        file.close();
        m_options.pluginDirs.append(MODULES_DIR "/throws");
        Viewer viewer(m_options);
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

private:
    static QStringList diary() { return qApp->property("diary").toStringList(); }

    static bool hasEvent(Viewer& viewer, const char* text)
    {
        const auto start = viewer.events().index(0, EventLog::TextColumn);
        return !viewer.events()
                    .match(start, Qt::DisplayRole, QString::fromLatin1(text), 1, Qt::MatchContains)
                    .isEmpty();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    ViewerOptions m_options;
};

QTEST_MAIN(TestViewer)
#include "tst_viewer.moc"
