// SPDX-License-Identifier: GPL-3.0-or-later
// The built module as a host loads it: metadata, instance, interface, form and settings.
// Qt's own writer of the format is deprecated.
#undef QT_DISABLE_DEPRECATED_BEFORE
#define QT_DISABLE_DEPRECATED_BEFORE 0

#include <vnCore/CxPlugin.h>

#include "FailingNew.h"
#include "FormBench.h"

static const QString module = QStringLiteral(PLUGIN_FILE);

class PluginModuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void metaData()
    {
        const QJsonObject expected{{"IID", "example.kestrova.Kestrova.CxDataThroughputGraphPlugin"},
                                   {"className", "CxDataThroughputGraphPlugin"},
                                   {"version", 329217},
                                   {"debug", false},
                                   {"MetaData", QJsonObject()}};
        // Byte for byte what Qt's own writer of the format makes of it.
        QT_WARNING_PUSH
        QT_WARNING_DISABLE_DEPRECATED
        const QByteArray written = "QTMETADATA  " + QJsonDocument(expected).toBinaryData();
        QT_WARNING_POP
        QLibrary library(module);
        const auto block = reinterpret_cast<const char* (*)()>(library.resolve("qt_plugin_query_metadata"));
        QCOMPARE(QByteArray(block(), written.size()), written);
        library.unload();
    }

    void exportsTwoFunctions()
    {
        QProcess nm;
        nm.start(QStringLiteral("nm"), {"-D", "--defined-only", "--format=just-symbols", module});
        if (!nm.waitForFinished() || nm.exitCode() != 0)
            QSKIP("nm is not there");
        QCOMPARE(nm.readAll().simplified(), QByteArray("qt_plugin_instance qt_plugin_query_metadata"));
    }

    void lifeWithAHost()
    {
        QPluginLoader loader(module);
        auto* plugin = qobject_cast<CxPlugin*>(loader.instance());
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        const QTemporaryDir dir;
        QSettings settings(dir.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
        plugin->loadSettings(settings); // before init
        plugin->saveSettings(settings);
        QVERIFY(settings.allKeys().isEmpty());
        QVERIFY(!plugin->init()); // without a host
        FakeHost host;
        failAllocation(1); // of the form
        QVERIFY(!plugin->init());
        QVERIFY(failAllocation(0) && !host.widget);
        QVERIFY(plugin->init());
        const QPointer<QWidget> form = host.widget.get();

        const QString key = QStringLiteral("DataThroughputGraphPlugin/DTGTSamplePeriod");
        settings.setValue(key, 5120);
        plugin->loadSettings(settings);
        settings.clear();
        plugin->saveSettings(settings);
        QCOMPARE(settings.group(), QString());
        QCOMPARE(settings.value(key).toInt(), 5120);
        QCOMPARE(settings.childGroups(), QStringList{"DataThroughputGraphPlugin"});

        delete loader.instance();
        QVERIFY(form);
        auto* again = qobject_cast<CxPlugin*>(loader.instance());
        QVERIFY(again->init());
        QVERIFY(!form); // the host had one place only
        host.widget.reset();
        settings.clear();
        again->saveSettings(settings); // after the form's end
        QVERIFY(settings.allKeys().isEmpty());
        QVERIFY(loader.unload());
    }
};

QTEST_MAIN(PluginModuleTest)
#include "tst_pluginmodule.moc"
