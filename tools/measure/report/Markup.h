// SPDX-License-Identifier: GPL-3.0-or-later
// HTML that cannot forget to escape: a text becomes markup only by plain(), tags come from literals.
#ifndef KESTROVA_MEASURE_MARKUP_H
#define KESTROVA_MEASURE_MARKUP_H

#include "PlainText.h"

struct Markup
{
    QString html;

    Markup& operator+=(const Markup& more)
    {
        html += more.html;
        return *this;
    }
    bool isEmpty() const { return html.isEmpty(); }
};

inline Markup operator+(Markup first, const Markup& second)
{
    return first += second;
}

/// Any text, shown as it is on one line.
inline Markup plain(const QString& text)
{
    return {singleLine(text).toHtmlEscaped()};
}

/// Markup written by hand.
inline Markup literal(const char* html)
{
    return {QString::fromUtf8(html)};
}

/// `tag` with its attributes as in HTML, "td class=\"n\"".
inline Markup element(const char* tag, const Markup& content)
{
    const QString start = QString::fromUtf8(tag);
    return {QLatin1Char('<') + start + QLatin1Char('>') + content.html + QStringLiteral("</") +
            start.section(QLatin1Char(' '), 0, 0) + QLatin1Char('>')};
}

inline Markup element(const char* tag, const QString& text)
{
    return element(tag, plain(text));
}

/// Markup of numbers: an attribute or a coordinate that a program computed.
template<typename... Numbers>
Markup numbered(const char* html, Numbers... numbers)
{
    QString text = QString::fromUtf8(html);
    ((text = text.arg(numbers)), ...);
    return {text};
}

#endif
