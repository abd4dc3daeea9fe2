// SPDX-License-Identifier: GPL-3.0-or-later
// Sits in front of the dialogs that block a test: answers them as a person would, and does what the test wants done
// while they are open.
#ifndef KESTROVA_TESTS_DIALOGROBOT_H
#define KESTROVA_TESTS_DIALOGROBOT_H

#include <functional>

#include <QtCore/QObject>
#include <QtCore/QStringList>

class QDialog;
class QFileDialog;
class QMessageBox;
class QProgressDialog;

/// Sees every dialog of the program while it lives. User interface thread.
class DialogRobot : public QObject
{
public:
    DialogRobot();

    bool agrees = true;                   ///< with questions
    QString fileName;                     ///< typed into file dialogs; empty cancels them
    std::function<void(QDialog*)> inside; ///< in every dialog, before it is answered
    /// In every dialog that is none of those below: has to close it.
    std::function<void(QDialog*)> answer;
    /// At a report's first frame: from inside the writing, as an event that is processed there.
    std::function<void(QProgressDialog*)> duringReport;
    QStringList seen; ///< "caption|directory|filters" of file dialogs, "title|text" of message boxes and progress

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void attend(QDialog* dialog);
    void watchReport(QProgressDialog* dialog);
    void answerFile(QFileDialog* dialog);
    void answerBox(QMessageBox* box);
};

#endif
