// SPDX-License-Identifier: GPL-3.0-or-later
// The built module as a host loads it: metadata, instance, interface, form and settings.
#include <vnCore/CxPlugin.h>

#include "FormBench.h"

class PluginModuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void metaData();
    void exportsTwoFunctions();
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
}

void PluginModuleTest::exportsTwoFunctions()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"), {"-D", "--defined-only", "--format=just-symbols", module});
    if (!nm.waitForFinished() || nm.exitCode() != 0)
        QSKIP("nm is not there");
    QCOMPARE(nm.readAll().simplified(), QByteArray("qt_plugin_instance qt_plugin_query_metadata"));
}

void PluginModuleTest::formBelongsToTheHost()
{
    QPluginLoader loader(module);
    auto* plugin = qobject_cast<CxPlugin*>(loader.instance());
    QVERIFY2(plugin, qPrintable(loader.errorString()));
    QVERIFY(!plugin->init()); // without a host
    FakeHost host;
    QVERIFY(plugin->init());
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
