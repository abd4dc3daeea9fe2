// SPDX-License-Identifier: GPL-3.0-or-later
// The dock with the cameras: their list and what can be done with the selected one.
#ifndef KESTROVA_CAMERADOCK_H
#define KESTROVA_CAMERADOCK_H

#include <chrono>
#include <vector>

#include <QtCore/QTimer>
#include <QtWidgets/QDockWidget>

#include <vnCore/vnTypes.h>

#include "Deliveries.h"

class EventLog;
class QComboBox;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class TakeOvers;

/// Shows the registry's state and changes it; keeps none of its own but the selection. While a plug-in has taken a
/// camera over, it can be closed but neither viewed nor switched to another format.
class CameraDock : public QDockWidget
{
    Q_OBJECT

public:
    CameraDock(const TakeOvers& takeOvers, EventLog& log, QWidget* parent = nullptr);

    /// The selected camera's handle, null if it is not open.
    VNCORE_HANDLE selectedCamera() const;

    /// Shows how each camera is at that time. Called every second.
    void refreshStates(std::chrono::steady_clock::time_point now);

Q_SIGNALS:
    /// Another camera is selected, or the selected one was opened or closed.
    void selectedCameraChanged(VNCORE_HANDLE camera);

private:
    int selectedDevice() const; ///< its index in the registry, -1 without a selection
    void buildWidgets();
    void connectToCameras();
    void refresh();
    void refreshList();
    /// Makes the column as wide as the text needs; it never becomes narrower.
    void setText(int device, int column, const QVariant& text);
    void refreshDeliveries(int device, std::chrono::steady_clock::time_point now);
    void refreshControls();
    void refreshFormats(VNCORE_HANDLE camera);
    void openOrClose();
    void startOrStopView();
    void applyFormat();

    /// From when on a camera's rates are counted, and what it had delivered by then.
    struct Meter
    {
        std::chrono::steady_clock::time_point since;
        Deliveries total;
    };

    const TakeOvers& takenOver;
    EventLog& eventLog;
    QTreeWidget* list = nullptr;
    std::vector<QTreeWidgetItem*> items; ///< of the devices, in the order of the registry, however the list is sorted
    std::vector<Meter> meters;           ///< as well
    QPushButton* openButton = nullptr;
    QPushButton* viewButton = nullptr;
    QComboBox* formatBox = nullptr;
    QTimer statesTimer;
    VNCORE_HANDLE announced = nullptr; ///< what selectedCameraChanged() said last
};

#endif
