// SPDX-License-Identifier: GPL-3.0-or-later
// Counts with their causes.
#include "LostFramesText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

namespace {

/// The context of this file's texts in translations.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(LostFrames)
};

} // namespace

QString lostFramesText(const LostFrames& lost)
{
    const struct
    {
        LossCause cause;
        QString text;
    } causes[] = {{&LostFrames::onTheWay, Text::tr("%1 on the way")},
                  {&LostFrames::socket, Text::tr("%1 in the socket")},
                  {&LostFrames::noBuffer, Text::tr("%1 for want of a buffer")},
                  {&LostFrames::late, Text::tr("%1 too late")},
                  {&LostFrames::notAttributable, Text::tr("%1 on this host, nothing tells why")},
                  {&LostFrames::unknown, Text::tr("%1 nobody knows where")}};
    QStringList texts;
    for (const auto& cause : causes) {
        if (lost.*cause.cause > 0)
            texts.append(cause.text.arg(lost.*cause.cause));
    }
    return texts.join(QStringLiteral(", "));
}
