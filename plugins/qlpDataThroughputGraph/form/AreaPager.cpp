// SPDX-License-Identifier: GPL-3.0-or-later
// Paging and the scroll bar.
#include "AreaPager.h"

#include <algorithm>

#include <QtCore/QSignalBlocker>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QScrollBar>

#include "Look.h"

static constexpr int barPixels = 9;

AreaPager::AreaPager(QWidget* plotWidget)
    : QObject(plotWidget), plot(plotWidget), bar(new QScrollBar(Qt::Vertical, plotWidget))
{
    bar->setObjectName(QStringLiteral("areaBar"));
    bar->setAccessibleName(tr("Plot areas"));
    look::makeDark(bar, barPixels);
    bar->hide();
    connect(bar, &QScrollBar::valueChanged, this, &AreaPager::moveTo);
}

QList<VNCORE_HANDLE> AreaPager::inView(const QList<VNCORE_HANDLE>& plotted)
{
    cameras = plotted;
    const int count = cameras.size();
    if (!cameras.contains(alone))
        alone = nullptr;
    const int fitting = alone ? 1 : std::clamp(plot->height() / leastAreaPixels, 1, std::max(1, count));
    const int found = cameras.indexOf(alone ? alone : first);
    const int position = std::clamp(found < 0 ? bar->value() : found, 0, std::max(0, count - fitting));
    if (!alone)
        first = cameras.value(position);

    const QSignalBlocker ours(bar);
    bar->setRange(0, std::max(0, count - fitting));
    bar->setPageStep(fitting);
    bar->setValue(position);
    bar->setVisible(count > fitting);
    bar->setGeometry(plot->width() - bar->sizeHint().width(), 0, bar->sizeHint().width(), plot->height());
    return cameras.mid(position, fitting);
}

int AreaPager::barWidth() const
{
    return bar->isHidden() ? 0 : bar->width();
}

void AreaPager::showAlone(VNCORE_HANDLE hCam)
{
    if (alone == hCam)
        return;
    if (!hCam) { // what was alone stays in view
        const int fitting = std::max(1, plot->height() / leastAreaPixels);
        const int was = cameras.indexOf(alone);
        first = cameras.value(std::clamp(cameras.indexOf(first), was - fitting + 1, was));
    }
    alone = hCam;
    Q_EMIT moved();
}

void AreaPager::scrollAreas(int areas)
{
    bar->setValue(bar->value() + areas);
}

void AreaPager::scrollPages(int pages)
{
    scrollAreas(pages * bar->pageStep());
}

void AreaPager::scroll(const QWheelEvent& wheel)
{
    wheelAngle += wheel.angleDelta().y();
    scrollAreas(-wheelAngle / QWheelEvent::DefaultDeltasPerStep);
    wheelAngle %= QWheelEvent::DefaultDeltasPerStep;
}

void AreaPager::moveTo(int position)
{
    (alone ? alone : first) = cameras.value(position);
    Q_EMIT moved();
}
