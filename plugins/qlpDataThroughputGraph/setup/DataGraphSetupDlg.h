// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog behind "Setup...": measurement mode, sample period, capacity and refresh period of the form. What an
// accepted change means for cameras and table is the form's business.
#ifndef KESTROVA_DATAGRAPHSETUPDLG_H
#define KESTROVA_DATAGRAPHSETUPDLG_H

#include <memory>

#include <QtWidgets/QDialog>

class CxDataGraphForm;
namespace Ui {
class CxDataGraphSetupDlg;
}

/// Accepting writes the values into the form, cancelling writes nothing.
class CxDataGraphSetupDlg : public QDialog
{
    Q_OBJECT

public:
    CxDataGraphSetupDlg(CxDataGraphForm* form, QWidget* parent);
    ~CxDataGraphSetupDlg() override;

public Q_SLOTS:
    void accept() override;

private Q_SLOTS:
    void onComboboxCurrentModeChanged(int newMode);

private:
    void load();
    void enableSamplePeriod(bool enabled);
    void tellCapacity();

    std::unique_ptr<Ui::CxDataGraphSetupDlg> ui;
    CxDataGraphForm* form; ///< not owned
};

#endif
