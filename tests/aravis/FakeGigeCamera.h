// SPDX-License-Identifier: GPL-3.0-or-later
// A fake GigE Vision camera in a process of its own.
#ifndef KESTROVA_TESTS_FAKEGIGECAMERA_H
#define KESTROVA_TESTS_FAKEGIGECAMERA_H

#include <QtCore/QStringList>

/// 100 frames a second of 256 x 256 Mono8 in packets of 1400 bytes, unless told otherwise. Any one thread at a time:
/// the process is not watched by an event loop.
class FakeGigeCamera
{
public:
    explicit FakeGigeCamera(QString address = QStringLiteral("127.0.0.1"));
    ~FakeGigeCamera();

    QString name() const { return QStringLiteral("gev:") + ownAddress; }
    /// For the next power-up.
    void setFrames(int size, int periodUs, double loss);
    bool powerUp();
    void powerDown();
    void signal(int number) const;
    void tell(const char* command);
    /// By its own count since it was powered up.
    unsigned framesSent();

private:
    const QString ownAddress;
    QStringList frames{QStringLiteral("256"), QStringLiteral("10000"), QStringLiteral("0")};
    int input = -1;
    int output = -1;
    int process = -1;
};

#endif
