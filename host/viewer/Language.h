// SPDX-License-Identifier: GPL-3.0-or-later
// The language of viewer, plug-ins and Qt's own dialogs. The texts in the code are English; the others are files.
#ifndef KESTROVA_LANGUAGE_H
#define KESTROVA_LANGUAGE_H

#include <QtCore/QStringList>

/// Where the files <part>_<language>.qm are, in an installation and in a build.
QString translationsDirectory();

/// The first of these ("de", "de-AT", "zh_CN"...) that there are texts for, as it stands in the files' names; "en" is
/// among them. Empty if there is none.
QString chooseLanguage(const QStringList& wanted);

/// The same for a name that a person has typed, such as "zh".
QString chooseLanguage(const QString& name);

/// From now on texts are in this language, in English if it is empty: to be called before the first widget, and on
/// the application's thread.
void installLanguage(const QString& language);

#endif
