// SPDX-License-Identifier: GPL-3.0-or-later
// The settings file: kept, not touched without need, set aside when damaged.
#include <filesystem>

#include <QtTest/QtTest>

#include "SettingsStore.h"
#include "Table.h"

class TestSettingsStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_file = m_directory->filePath("kestrova.ini");
    }

    void foreignGroupsSurviveAndRemovedKeysGo()
    {
        write("[PluginThatIsNotLoaded]\nkey=5\n[Viewer]\nold=1\n");
        SettingsStore store(m_file);
        QVERIFY(store.save([](QSettings& settings) {
            settings.remove("Viewer/old");
            settings.setValue("Viewer/geometry", QByteArray("\0\1\2", 3));
        }));
        const QSettings read(m_file, QSettings::IniFormat);
        QCOMPARE(read.value("PluginThatIsNotLoaded/key").toInt(), 5);
        QVERIFY(!read.contains("Viewer/old"));
        QCOMPARE(read.value("Viewer/geometry").toByteArray(), QByteArray("\0\1\2", 3));
    }

    void writesOnlyChanges()
    {
        // What is made and removed in a directory, temporary files included, shows in its time.
        const std::filesystem::path directory = qPrintable(m_directory->path());
        const auto longAgo = std::filesystem::last_write_time(directory) - std::chrono::hours(1);
        qputenv("TMPDIR", qPrintable(m_directory->path()));
        const auto restored = qScopeGuard([] { qunsetenv("TMPDIR"); });
        int value = 1;
        const auto collect = [&](QSettings& settings) { settings.setValue("Viewer/value", value); };
        SettingsStore store(m_file);
        QVERIFY(store.save(collect));
        QVERIFY(QFile::remove(m_file)); // would come back if it were written
        std::filesystem::last_write_time(directory, longAgo);
        QVERIFY(store.save(collect));
        QCoreApplication::processEvents();
        QVERIFY(!QFile::exists(m_file));
        QVERIFY(std::filesystem::last_write_time(directory) == longAgo);
        value = 2;
        QVERIFY(store.save(collect));
        QVERIFY(QFile::exists(m_file));
    }

    void damagedFileIsSetAside_data()
    {
        const Table<QByteArray> row("content");
        row("text", "this is not\nan ini file\n");
        row("zeros, as after a power cut", QByteArray(4096, '\0'));
        row("half a section", "[Viewer]\ndetailLevel=4\n[Data");
    }
    void damagedFileIsSetAside()
    {
        QFETCH(QByteArray, content);
        write(content);
        write("older", m_file + ".damaged");
        SettingsStore store(m_file);
        QCOMPARE(store.damagedFile(), m_file + ".damaged");
        QVERIFY(store.settings().allKeys().isEmpty());
        QFile aside(store.damagedFile());
        QVERIFY(aside.open(QIODevice::ReadOnly));
        QCOMPARE(aside.readAll(), content);
        QVERIFY(store.save([](QSettings& settings) { settings.setValue("a", 1); }));
        QVERIFY(SettingsStore(m_file).damagedFile().isEmpty());
    }

    void unwritablePlaceIsReportedAsLongAsItIs()
    {
        const auto collect = [](QSettings& settings) { settings.setValue("a", 1); };
        write("in the way");
        SettingsStore store(m_file + "/kestrova.ini");
        QVERIFY(!store.save(collect));
        QVERIFY(!store.save(collect));
        QVERIFY(QFile::remove(m_file));
        QVERIFY(store.save(collect));
        QVERIFY(QFile::exists(m_file + "/kestrova.ini"));
    }

private:
    void write(const QByteArray& content, const QString& file = {})
    {
        QFile device(file.isEmpty() ? m_file : file);
        QVERIFY(device.open(QIODevice::WriteOnly));
        device.write(content);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_file;
};

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_settingsstore.moc"
