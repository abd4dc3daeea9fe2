// SPDX-License-Identifier: GPL-3.0-or-later
// What the plot shows where the mouse is: time of day, seconds from now, the value of each curve, the marks there.
#ifndef KESTROVA_TRACER_H
#define KESTROVA_TRACER_H

#include <functional>
#include <optional>

#include <QtCore/QObject>
#include <QtCore/QPoint>

class AreaMarks;
class QCPAxisRect;
class QCPPainter;
class QCustomPlot;

/// Drawn on a layer of its own, so that following the mouse draws no curve. User interface thread only.
class Tracer : public QObject
{
    Q_OBJECT

public:
    /// The plot owns it. `now` tells the time at 0 of the time axes, microseconds on the measurement clock's scale.
    Tracer(QCustomPlot* plot, const AreaMarks* marks, std::function<qint64()> now);

    /// What the box says: a line each. Empty without a mouse in an area.
    QStringList lines() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void moveTo(std::optional<QPoint> place);
    const QCPAxisRect* area() const;
    void draw(QCPPainter& painter) const;

    QCustomPlot* plot;
    const AreaMarks* marks;
    std::function<qint64()> nowUs;
    std::optional<QPoint> mouse; ///< in the plot
};

#endif
