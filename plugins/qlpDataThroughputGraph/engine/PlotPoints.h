// SPDX-License-Identifier: GPL-3.0-or-later
// All that the engine does with the plotting library, so that one file alone has to know it.
#ifndef KESTROVA_PLOTPOINTS_H
#define KESTROVA_PLOTPOINTS_H

#include <QtCore/QtGlobal>

class QCPGraph;
class QCPRange;

/// Microseconds per unit of the plots' time axes.
constexpr double usPerSecond = 1000000.0;

/// Thins points out: of those that come in time order it lets one through only when more than the spacing has passed
/// since the last. The first one only sets the reference.
class PointSpacing
{
public:
    explicit PointSpacing(double minKeySpacingMs) : m_spacingUs(minKeySpacingMs * 1000.0) {}

    void startAt(qint64 relUs)
    {
        if (!m_started)
            m_lastUs = relUs;
        m_started = true;
    }
    bool accepts(qint64 relUs) const { return static_cast<double>(relUs - m_lastUs) > m_spacingUs; }
    void accept(qint64 relUs) { m_lastUs = relUs; }

private:
    double m_spacingUs;
    qint64 m_lastUs = 0;
    bool m_started = false;
};

/// Position on the time axis of a time relative to the end of the visible range.
double plotKey(qint64 relUs, const QCPRange& keyRange);

/// Does nothing without a graph.
void addPoint(QCPGraph* graph, double key, double value);

#endif
