// SPDX-License-Identifier: GPL-3.0-or-later
// The built module as a host loads it: metadata, instance, interface, form and settings.
#include <QtCore/QJsonObject>
#include <QtCore/QLibrary>
#include <QtCore/QPluginLoader>
#include <QtCore/QPointer>
#include <QtCore/QProcess>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <vnCore/CxPlugin.h>

#include "FormBench.h"

class PluginModuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void metaData();
    void exportsTwoFunctions();
    void instances();
    void identity();
    void formBelongsToTheHost();
    void settingsGroup();
};

static const QString module = QStringLiteral(PLUGIN_FILE);

void PluginModuleTest::metaData()
{
    const QPluginLoader loader(module);
    const QJsonObject expected{{"IID", "example.kestrova.Kestrova.CxDataThroughputGraphPlugin"},
                               {"className", "CxDataThroughputGraphPlugin"},
                               {"version", 329217},
                               {"debug", false},
                               {"MetaData", QJsonObject()}};
    QCOMPARE(loader.metaData(), expected);

    using Query = const char* (*)();
    QLibrary library(module);
    const auto query = reinterpret_cast<Query>(library.resolve("qt_plugin_query_metadata"));
    QVERIFY(query);
    QCOMPARE(QByteArray(query(), 20), QByteArray("QTMETADATA  qbjs\1\0\0\0", 20));
    QVERIFY(library.unload());
}

void PluginModuleTest::exportsTwoFunctions()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"), {"-D", "--defined-only", "--format=just-symbols", module});
    if (!nm.waitForFinished() || nm.exitCode() != 0)
        QSKIP("nm is not there");
    QCOMPARE(nm.readAll().simplified(), QByteArray("qt_plugin_instance qt_plugin_query_metadata"));
}

void PluginModuleTest::instances()
{
    using Instance = QObject* (*)();
    QLibrary library(module);
    const auto instance = reinterpret_cast<Instance>(library.resolve("qt_plugin_instance"));
    const QPointer<QObject> first = instance();
    QVERIFY(first && !first->parent());
    QCOMPARE(instance(), first.data());
    delete first;
    const QPointer<QObject> second = instance();
    QVERIFY(second);
    QCOMPARE(second->qt_metacast("CxDataThroughputGraphPlugin"), static_cast<void*>(second.data()));
    void* const part = second->qt_metacast("CxPlugin");
    QVERIFY(part && part != static_cast<void*>(second.data()));
    QCOMPARE(second->qt_metacast("example.kestrova.CxPlugin"), part);
    QVERIFY(!second->qt_metacast("example.kestrova.Other"));
    delete second;
    QVERIFY(library.unload());
}

void PluginModuleTest::identity()
{
    QPluginLoader loader(module);
    auto* plugin = qobject_cast<CxPlugin*>(loader.instance());
    QVERIFY2(plugin, qPrintable(loader.errorString()));
    QCOMPARE(plugin->name(), QStringLiteral("Data Throughput Graph Tool"));
    QCOMPARE(plugin->author(), QStringLiteral("Kestrova Imaging"));
    QCOMPARE(plugin->website(), QStringLiteral("https://kestrova.example"));
    QCOMPARE(plugin->description(),
             QStringLiteral("Measures the available bandwidth during time and shows results in graph."));
    QVERIFY(!plugin->init()); // without a host
    QVERIFY(loader.unload());
}

void PluginModuleTest::formBelongsToTheHost()
{
    FakeHost host;
    QPluginLoader loader(module);
    auto* plugin = qobject_cast<CxPlugin*>(loader.instance());
    QVERIFY(plugin->init());
    QCOMPARE(host.widgets, QStringList{"8 12 0"});
    const QPointer<QWidget> form = host.widget.get();
    delete loader.instance();
    QVERIFY(form);
    auto* second = qobject_cast<CxPlugin*>(loader.instance());
    QVERIFY(second->init());
    QVERIFY(!form); // the host had one place only
    host.widget.reset();
    const QTemporaryDir dir;
    QSettings settings(dir.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
    second->saveSettings(settings); // after the form's end
    QVERIFY(settings.allKeys().isEmpty());
    QVERIFY(loader.unload());
}

void PluginModuleTest::settingsGroup()
{
    FakeHost host;
    const QTemporaryDir dir;
    QSettings settings(dir.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
    QPluginLoader loader(module);
    auto* plugin = qobject_cast<CxPlugin*>(loader.instance());
    plugin->loadSettings(settings); // before init
    plugin->saveSettings(settings);
    QVERIFY(settings.allKeys().isEmpty());

    settings.setValue(QStringLiteral("DataThroughputGraphPlugin/DTGTSamplePeriod"), 5120);
    QVERIFY(plugin->init());
    plugin->loadSettings(settings);
    settings.clear();
    plugin->saveSettings(settings);
    QCOMPARE(settings.group(), QString());
    QCOMPARE(settings.value(QStringLiteral("DataThroughputGraphPlugin/DTGTSamplePeriod")).toInt(), 5120);
    QCOMPARE(settings.childGroups(), QStringList{"DataThroughputGraphPlugin"});
    host.widget.reset();
    QVERIFY(loader.unload());
}

QTEST_MAIN(PluginModuleTest)
#include "tst_pluginmodule.moc"
