// SPDX-License-Identifier: GPL-3.0-or-later
// Fonts and colours.
#include "Look.h"

#include <algorithm>
#include <cmath>

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableWidget>

namespace {

constexpr auto headingSheet = "QHeaderView { background: %1; border: none; }"
                              "QHeaderView::section { background: %1; color: white; border: none;"
                              " border-right: 1px solid %2; padding: 0px 4px; }";
constexpr auto scrollBarSheet = "QScrollBar { background: %1; border: none; }"
                                "QScrollBar:horizontal { height: %2px; } QScrollBar:vertical { width: %2px; }"
                                "QScrollBar::handle { background: #8a9099; min-width: 30px; min-height: 15px; }"
                                "QScrollBar::add-line, QScrollBar::sub-line { width: 0px; height: 0px; }";
constexpr int largestPixels = 12;
constexpr int tableBarPixels = 5;
constexpr int headingPixels = 11; ///< two lines must fit beside one row

constexpr double leastContrast = 4.5; ///< of text of this size, as WCAG 2 computes it

double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// 1 for equal colours to 21 for black and white.
double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QPalette darkPalette()
{
    const QColor button(52, 56, 62);
    QPalette palette(button, look::background);
    palette.setColor(QPalette::Base, look::background);
    palette.setColor(QPalette::AlternateBase, look::heading);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::BrightText}) {
        palette.setColor(role, look::text);
        palette.setColor(QPalette::Disabled, role, look::disabledText);
    }
    return palette;
}

} // namespace

QColor look::groundFor(const QColor& textColour)
{
    return contrast(textColour, background) >= leastContrast ? background : QColor(Qt::white);
}

void look::limitFont(QWidget* form)
{
    QFont font = form->font();
    if (QFontInfo(font).pixelSize() <= largestPixels)
        return;
    font.setPixelSize(largestPixels);
    form->setFont(font);
}

void look::makeDark(QTableWidget* table)
{
    table->setPalette(darkPalette());
    table->setFrameShape(QFrame::NoFrame);
    table->setCornerButtonEnabled(false);
    table->setStyleSheet(QStringLiteral("QTableView { gridline-color: %1; } QTableCornerButton::section {"
                                        " background: %2; border: none; }")
                             .arg(grid.name(), heading.name()));
    for (QHeaderView* header : {table->horizontalHeader(), table->verticalHeader()}) {
        header->setStyleSheet(QString(QLatin1String(headingSheet)).arg(heading.name(), grid.name()));
        QFont font = header->font();
        font.setPixelSize(headingPixels);
        header->setFont(font);
    }
    for (QScrollBar* bar : {table->horizontalScrollBar(), table->verticalScrollBar()})
        makeDark(bar, tableBarPixels);
}

void look::makeDark(QScrollBar* bar, int pixels)
{
    bar->setStyleSheet(QString(QLatin1String(scrollBarSheet)).arg(background.name()).arg(pixels));
}
