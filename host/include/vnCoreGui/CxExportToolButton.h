// SPDX-License-Identifier: GPL-3.0-or-later
// A split tool button that exports something in one of several ways.
#ifndef VNCOREGUI_CXEXPORTTOOLBUTTON_H
#define VNCOREGUI_CXEXPORTTOOLBUTTON_H

#include <QtWidgets/QToolButton>

#define VNCOREGUI_EXPORT Q_DECL_EXPORT

class QActionGroup;

/// The ways of an export. The numbers are stored in settings.
enum ExExportType : int
{
    ExportToClipboard = 1, ///< copy to the clipboard
    ExportToFile = 2,      ///< save to a file
};

/// Pressing the button exports in the selected way, its menu selects another one. What is exported is the business
/// of whoever is connected. User interface thread only.
class VNCOREGUI_EXPORT CxExportToolButton : public QToolButton
{
    Q_OBJECT

public:
    explicit CxExportToolButton(QWidget* parent = nullptr);

    /// Adds the type at the end of the menu, once. The first one added is selected.
    void addSupportedExportType(ExExportType type);

    /// Selects the type and emits nothing. One that is not in the menu (from settings, say) is kept as it is; the
    /// menu then shows no selection, and pressing the button opens it.
    void setExportType(ExExportType type);
    ExExportType exportType() const { return chosenType; }

Q_SIGNALS:
    /// The button was pressed; an ExExportType.
    void exportClicked(int type);

protected:
    void changeEvent(QEvent* event) override;

private:
    void exportOrAsk();
    void updateAppearance();

    QActionGroup* types; ///< one checkable action per supported type, its data the type
    ExExportType chosenType = ExportToClipboard;
};

#endif
