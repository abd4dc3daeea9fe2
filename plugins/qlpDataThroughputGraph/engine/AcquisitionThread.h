// SPDX-License-Identifier: GPL-3.0-or-later
// The worker of one running measurement.
#ifndef KESTROVA_ACQUISITIONTHREAD_H
#define KESTROVA_ACQUISITIONTHREAD_H

#include <QtCore/QThread>

class CxCameraLineData;

/// Runs the record's loop for the mode that the record had when this was created. The record owns, joins and deletes
/// it; it never touches its own object and sends no signal of its own.
class CxAcquisitionThread : public QThread
{
    Q_OBJECT

public:
    CxAcquisitionThread(CxCameraLineData* data, qint32 mode);

protected:
    void run() override;

private:
    CxCameraLineData* lineData;
    qint32 measMode;
};

#endif
