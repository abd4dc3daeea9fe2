// SPDX-License-Identifier: GPL-3.0-or-later
// Texts as they are shown: those of others, about whose characters nothing is promised, and counts.
#ifndef KESTROVA_PLAINTEXT_H
#define KESTROVA_PLAINTEXT_H

#include <algorithm>

#include <QtCore/QString>

/// For one line of a list, a table or a file: line breaks, tabs and other characters that nobody sees are blanks.
inline QString singleLine(QString text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](QChar c) {
            const auto kind = c.category();
            return kind == QChar::Other_Control || kind == QChar::Other_Format || kind == QChar::Separator_Line ||
                   kind == QChar::Separator_Paragraph;
        },
        QLatin1Char(' '));
    return text;
}

/// "1 line", "3 lines": English, of a regular noun.
inline QString counted(quint64 count, const char* noun)
{
    return QString::number(count) + QLatin1Char(' ') + QLatin1String(noun) + QLatin1String(count == 1 ? "" : "s");
}

#endif
