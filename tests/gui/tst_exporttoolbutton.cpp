// SPDX-License-Identifier: GPL-3.0-or-later
// The export button as a user handles it: menu entries, selection, press.
#include <QtTest/QtTest>
#include <QtWidgets/QMenu>

#include <vnCoreGui/CxExportToolButton.h>

class TestExportToolButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_button = std::make_unique<CxExportToolButton>();
        m_button->addSupportedExportType(ExportToClipboard);
        m_button->addSupportedExportType(ExportToFile);
        m_button->addSupportedExportType(ExportToFile);
    }

    void choosingSelectsAndPressingEmits()
    {
        QSignalSpy spy(m_button.get(), &CxExportToolButton::exportClicked);
        const auto entries = m_button->menu()->actions();
        QCOMPARE(entries.size(), 2);
        QVERIFY(entries[0]->isChecked() && entries[0]->text() != entries[1]->text());
        entries[1]->trigger();
        QCOMPARE(m_button->exportType(), ExportToFile);
        QVERIFY(entries[1]->isChecked() && !entries[0]->isChecked());
        QVERIFY2(spy.isEmpty(), "choosing does not export yet");

        QTest::keyClick(m_button.get(), Qt::Key_Space);
        m_button->setExportType(ExportToClipboard);
        QTest::mouseClick(m_button.get(), Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(spy.size(), 2);
        QCOMPARE(spy[0][0].toInt(), 2);
        QCOMPARE(spy[1][0].toInt(), 1);
    }

    void foreignTypeIsKeptAndLeftByTheMenu()
    {
        m_button->setExportType(ExExportType(77));
        QCOMPARE(int(m_button->exportType()), 77);
        QSignalSpy spy(m_button.get(), &CxExportToolButton::exportClicked);
        m_button->click();
        QVERIFY2(spy.isEmpty() && m_button->menu()->isVisible(), "nobody can carry it out, so the user chooses");
        m_button->menu()->actions()[0]->trigger();
        QCOMPARE(m_button->exportType(), ExportToClipboard);
    }

private:
    std::unique_ptr<CxExportToolButton> m_button;
};

QTEST_MAIN(TestExportToolButton)
#include "tst_exporttoolbutton.moc"
