// SPDX-License-Identifier: GPL-3.0-or-later
// Values into the controls and back, each within its range.
#include "DataGraphSetupDlg.h"

#include <algorithm>

#include <QtWidgets/QLineEdit>

#include "../engine/CameraLineData.h"
#include "../form/DataGraphForm.h"
#include "CapacityHint.h"
#include "ui_DataGraphSetupDlg.h"

namespace {

constexpr int million = 1000000;
constexpr int msPerSecond = 1000;

} // namespace

CxDataGraphSetupDlg::CxDataGraphSetupDlg(CxDataGraphForm* graphForm, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::CxDataGraphSetupDlg>()), form(graphForm)
{
    ui->setupUi(this);
    Qt::WindowFlags flags = windowFlags();
    flags &= ~(Qt::WindowMaximizeButtonHint | Qt::WindowContextHelpButtonHint);
    flags |= Qt::CustomizeWindowHint | Qt::MSWindowsFixedSizeDialogHint;
    setWindowFlags(flags);

    // The period changes by steps only: by arrows, keys and wheel.
    ui->spinSamplePeriod->findChild<QLineEdit*>()->setReadOnly(true);
    load();
    connect(ui->measureMode, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &CxDataGraphSetupDlg::onComboboxCurrentModeChanged);
    for (QSpinBox* box : {ui->spinCapacity, ui->spinSamplePeriod})
        connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] { tellCapacity(); });

    adjustSize();
    setFixedSize(size());
    onComboboxCurrentModeChanged(ui->measureMode->currentIndex());
}

CxDataGraphSetupDlg::~CxDataGraphSetupDlg() = default;

/// What the form holds may come from damaged settings: the boxes clamp, and an unknown mode shows as the first one.
void CxDataGraphSetupDlg::load()
{
    const qint64 millions = (qint64(form->maxSamples) + million / 2) / million;
    ui->spinSamplePeriod->setValue(form->samplePeriod);
    ui->spinCapacity->setValue(static_cast<int>(millions));
    ui->graphRefreshPeriod->setValue(form->refreshTimer.interval() / msPerSecond);
    const bool known = form->measMode >= 0 && form->measMode < ui->measureMode->count();
    ui->measureMode->setCurrentIndex(known ? form->measMode : MeasModeDataThroughput);
}

void CxDataGraphSetupDlg::accept()
{
    form->samplePeriod = ui->spinSamplePeriod->value();
    form->maxSamples = ui->spinCapacity->value() * million;
    form->measMode = ui->measureMode->currentIndex();
    form->refreshTimer.setInterval(ui->graphRefreshPeriod->value() * msPerSecond);
    QDialog::accept();
}

void CxDataGraphSetupDlg::onComboboxCurrentModeChanged(int newMode)
{
    switch (newMode) {
    case MeasModeDataThroughput:
        enableSamplePeriod(true);
        break;
    case MeasModeStandardAcq:
        enableSamplePeriod(false);
        break;
    default:
        return;
    }
    tellCapacity();
}

void CxDataGraphSetupDlg::enableSamplePeriod(bool enabled)
{
    for (QWidget* widget : {static_cast<QWidget*>(ui->spinSamplePeriod),
                            static_cast<QWidget*>(ui->label_samplePeriod), static_cast<QWidget*>(ui->label_bytes)})
        widget->setEnabled(enabled);
}

void CxDataGraphSetupDlg::tellCapacity()
{
    const CapacityPlan plan{ui->measureMode->currentIndex(), qint64(ui->spinCapacity->value()) * million,
                            ui->spinSamplePeriod->value()};
    ui->spinCapacity->setToolTip(capacityHint(plan, form->lineDataMap.values()));
}
