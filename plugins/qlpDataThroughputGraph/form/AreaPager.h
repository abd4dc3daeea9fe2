// SPDX-License-Identifier: GPL-3.0-or-later
// Which of the plot's areas are in view: as many whole ones as its height has room for, or one alone.
#ifndef KESTROVA_AREAPAGER_H
#define KESTROVA_AREAPAGER_H

#include <QtCore/QList>
#include <QtCore/QObject>

#include <vnCore/vnTypes.h>

class QScrollBar;
class QWheelEvent;
class QWidget;

/// Keeps the first camera in view, not its place, so that cameras which come and go elsewhere move nothing. Its scroll
/// bar at the plot's right edge is there while an area is out of view. User interface thread only.
class AreaPager : public QObject
{
    Q_OBJECT

public:
    static constexpr int leastAreaPixels = 110; ///< height of an area, its title included

    explicit AreaPager(QWidget* plot);

    /// Of the plotted cameras, in their order, those in view at the plot's present size. Adjusts the scroll bar.
    QList<VNCORE_HANDLE> inView(const QList<VNCORE_HANDLE>& plotted);
    /// Pixels of the plot's width that the scroll bar takes now.
    int barWidth() const;

    /// One camera alone; null: all. Another one is alone when it is scrolled to.
    void showAlone(VNCORE_HANDLE hCam);
    bool isAlone() const { return alone != nullptr; }

    void scrollAreas(int areas);
    void scrollPages(int pages);
    /// By an area for each notch.
    void scroll(const QWheelEvent& wheel);

Q_SIGNALS:
    /// inView() has another answer now.
    void moved();

private:
    void moveTo(int position);

    QWidget* plot;
    QScrollBar* bar;
    QList<VNCORE_HANDLE> cameras; ///< plotted when inView() was asked last
    VNCORE_HANDLE first = nullptr;
    VNCORE_HANDLE alone = nullptr;
    int wheelAngle = 0; ///< less than a notch
};

#endif
