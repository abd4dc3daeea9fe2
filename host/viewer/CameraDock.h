// SPDX-License-Identifier: GPL-3.0-or-later
// The dock with the cameras: their list and what can be done with the selected one.
#ifndef KESTROVA_CAMERADOCK_H
#define KESTROVA_CAMERADOCK_H

#include <QtCore/QTimer>
#include <QtWidgets/QDockWidget>

#include <vnCore/vnTypes.h>

class CameraList;
class EventLog;
class QComboBox;
class QPushButton;
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

Q_SIGNALS:
    /// Another camera is selected, or the selected one was opened or closed.
    void selectedCameraChanged(VNCORE_HANDLE camera);

private:
    void buildWidgets();
    void connectToCameras();
    void refresh();
    void refreshControls();
    void refreshFormats(VNCORE_HANDLE camera);
    void openOrClose();
    void startOrStopView();
    void applyFormat();

    const TakeOvers& takenOver;
    EventLog& eventLog;
    CameraList* list = nullptr;
    QPushButton* openButton = nullptr;
    QPushButton* viewButton = nullptr;
    QComboBox* formatBox = nullptr;
    QTimer statesTimer;
    VNCORE_HANDLE announced = nullptr; ///< what selectedCameraChanged() said last
};

#endif
