// SPDX-License-Identifier: GPL-3.0-or-later
// The palette, and what of the style does not suit it.
#include "Theme.h"

#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyleOption>

namespace {

/// Frames of menus are drawn in a darker colour than the window's: on a dark window nobody sees where a menu ends.
class DarkFusion : public QProxyStyle
{
public:
    DarkFusion() : QProxyStyle(QStringLiteral("Fusion")) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        return metric == PM_MenuPanelWidth ? 1 : QProxyStyle::pixelMetric(metric, option, widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element == PE_FrameMenu) {
            painter->setPen(option->palette.color(QPalette::PlaceholderText));
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        } else {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }
};

} // namespace

void applyDarkTheme(QApplication& application)
{
    QApplication::setStyle(new DarkFusion); // the application's from here on

    const QColor window(44, 48, 54);
    const QColor base(28, 31, 35);
    const QColor text(228, 230, 232);
    const QColor faint(126, 132, 140);
    const QColor accent(0, 150, 125);

    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, base.lighter(120));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Button, window.lighter(112));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, QColor(255, 120, 110));
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Link, accent.lighter(150));
    palette.setColor(QPalette::LinkVisited, accent.lighter(130));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, window.lighter(130));
    application.setPalette(palette);
}
