// SPDX-License-Identifier: GPL-3.0-or-later
// The settings file: kept, not touched without need, set aside when damaged.

#include <filesystem>

#include <QtTest/QtTest>

#include "Files.h"
#include "SettingsStore.h"

class TestSettingsStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        file = directory->filePath("kestrova.ini");
    }

    void foreignGroupsSurviveAndRemovedKeysGo()
    {
        SettingsStore store(writeFile(file, "[PluginThatIsNotLoaded]\nkey=5\n[Viewer]\nold=1\n"));
        QVERIFY(store.save([](QSettings& settings) {
            settings.remove("Viewer/old");
            settings.setValue("Viewer/geometry", QByteArray("\0\1\2", 3));
        }));
        const QSettings read(file, QSettings::IniFormat);
        QCOMPARE(read.value("PluginThatIsNotLoaded/key").toInt(), 5);
        QVERIFY(!read.contains("Viewer/old"));
        QCOMPARE(read.value("Viewer/geometry").toByteArray(), QByteArray("\0\1\2", 3));
        QVERIFY(store.save([](QSettings& settings) { settings.remove("Viewer/geometry"); })); // and at once
        QVERIFY(!readFile(file).contains("geometry"));
    }

    void writesOnlyChanges()
    {
        // What is made and removed in a directory, temporary files included, shows in its time.
        const std::filesystem::path place = qPrintable(directory->path());
        const auto longAgo = std::filesystem::last_write_time(place) - std::chrono::hours(1);
        qputenv("TMPDIR", qPrintable(directory->path()));
        const auto restored = qScopeGuard([] { qunsetenv("TMPDIR"); });
        int value = 1;
        const auto collect = [&](QSettings& settings) { settings.setValue("Viewer/value", value); };
        SettingsStore store(file);
        QVERIFY(store.save(collect));
        QVERIFY(QFile::remove(file)); // would come back if it were written
        std::filesystem::last_write_time(place, longAgo);
        QVERIFY(store.save(collect));
        QCoreApplication::processEvents();
        QVERIFY(!QFile::exists(file));
        QVERIFY(std::filesystem::last_write_time(place) == longAgo);
        value = 2;
        QVERIFY(store.save(collect));
        QVERIFY(QFile::exists(file));
    }

    void damagedFileIsSetAside()
    {
        // No settings at all, zeros as after a power cut, half a section.
        for (const QByteArray& content : {QByteArray("this is not\nan ini file\n"), QByteArray(4096, '\0'),
                                          QByteArray("[Viewer]\ndetailLevel=4\n[Data")}) {
            writeFile(file + ".damaged", "older");
            SettingsStore store(writeFile(file, content));
            QCOMPARE(store.damagedFile(), file + ".damaged");
            QVERIFY(store.settings().allKeys().isEmpty());
            QCOMPARE(readFile(store.damagedFile()), content);
            QVERIFY(store.save([](QSettings& settings) { settings.setValue("a", 1); }));
            QVERIFY(SettingsStore(file).damagedFile().isEmpty());
        }
    }

    void unwritablePlaceIsReportedAsLongAsItIs()
    {
        const auto collect = [](QSettings& settings) { settings.setValue("a", 1); };
        writeFile(file, "in the way");
        SettingsStore store(file + "/kestrova.ini");
        QVERIFY(!store.save(collect));
        QVERIFY(!store.save(collect));
        QVERIFY(QFile::remove(file));
        QVERIFY(store.save(collect));
        QVERIFY(QFile::exists(file + "/kestrova.ini"));
    }

    void fileCutShortIsReportedAndWrittenAgain()
    {
        const auto collect = [](QSettings& settings) {
            for (const char* key : {"a", "b/c", "d"})
                settings.setValue(key, QString(100, 'x'));
        };
        SettingsStore store(file);
        for (const rlim_t fits : {rlim_t(0), rlim_t(110), rlim_t(200), RLIM_INFINITY}) {
            const FullDisk disk(fits);
            QCOMPARE(store.save(collect), fits == RLIM_INFINITY);
        }
        QCOMPARE(readFile(file).count('x'), 300);
    }

private:
    std::unique_ptr<QTemporaryDir> directory;
    QString file;
};

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_settingsstore.moc"
