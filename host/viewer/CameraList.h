// SPDX-License-Identifier: GPL-3.0-or-later
// The list of the cameras of this machine: how each is and what it delivers.
#ifndef KESTROVA_CAMERALIST_H
#define KESTROVA_CAMERALIST_H

#include <chrono>
#include <vector>

#include <QtWidgets/QTreeWidget>

#include "Deliveries.h"

class TakeOvers;

/// Shows the registry's state when it is told to; keeps none but the selection and what rates are counted from.
class CameraList : public QTreeWidget
{
    Q_OBJECT

public:
    explicit CameraList(const TakeOvers& takeOvers, QWidget* parent = nullptr);

    /// The selected camera's index in the registry, -1 without a selection.
    int selectedDevice() const;

    /// Selects the camera that was opened last, unless an open one is selected.
    void selectNewest();

    /// Shows which cameras there are.
    void refresh();
    /// Shows how each camera is at that time. To be called every second: silence is shown in seconds.
    void refreshStates(std::chrono::steady_clock::time_point now);

    /// From column to column, for who has no mouse.
    void sortByNext();
    void keyboardSearch(const QString& typed) override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitNameColumn();
    /// Makes the column as wide as the text needs; it never becomes narrower.
    void setText(int device, int column, const QVariant& text);
    void refreshDeliveries(int device, std::chrono::steady_clock::time_point now);

    /// From when on a camera's rates are counted, and what it had delivered by then.
    struct Meter
    {
        std::chrono::steady_clock::time_point since;
        Deliveries total;
    };

    const TakeOvers& takenOver;
    std::vector<QTreeWidgetItem*> items; ///< of the devices, in the order of the registry, however the list is sorted
    std::vector<Meter> meters;           ///< as well
};

#endif
