// SPDX-License-Identifier: GPL-3.0-or-later
// The export button as a user handles it: menu entries, selection, press.
#include <QtTest/QtTest>
#include <QtWidgets/QMenu>

#include <vnCoreGui/CxExportToolButton.h>

class TestExportToolButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choosingSelectsAndPressingEmits()
    {
        CxExportToolButton button;
        for (const auto type : {ExportToClipboard, ExportToFile, ExportToFile})
            button.addSupportedExportType(type);
        QSignalSpy spy(&button, &CxExportToolButton::exportClicked);
        const auto entries = button.menu()->actions();
        QCOMPARE(entries.size(), 2);
        QVERIFY(entries[0]->isChecked() && entries[0]->text() != entries[1]->text());
        entries[1]->trigger();
        QVERIFY(entries[1]->isChecked() && !entries[0]->isChecked());
        QVERIFY2(spy.isEmpty(), "choosing does not export yet");
        QTest::keyClick(&button, Qt::Key_Space);
        button.setExportType(ExportToClipboard);
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(spy.value(0).value(0).toInt(), int(ExportToFile));
        QCOMPARE(spy.value(1).value(0).toInt(), int(ExportToClipboard));

        button.setExportType(ExExportType(77)); // is kept, and left by the menu
        QCOMPARE(int(button.exportType()), 77);
        button.click();
        QVERIFY2(spy.size() == 2 && button.menu()->isVisible(), "nobody can carry it out, so the user chooses");
        entries[0]->trigger();
        QCOMPARE(button.exportType(), ExportToClipboard);
    }
};

QTEST_MAIN(TestExportToolButton)
#include "tst_exporttoolbutton.moc"
