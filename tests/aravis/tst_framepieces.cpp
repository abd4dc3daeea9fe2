// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of the family that need no camera.
#include <QtTest/QtTest>

#include "CameraAddress.h"
#include "FrameTally.h"

using aravis::FrameTally;

class TestFramePieces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void idsBecomeNumbers_data()
    {
        QTest::addColumn<QVector<quint64>>("ids");
        QTest::addColumn<QVector<int>>("numbers"); // -1: nobody gets it
        QTest::addColumn<int>("lost");
        using Ids = QVector<quint64>;
        using Numbers = QVector<int>;
        QTest::newRow("begins anywhere") << Ids{7, 8, 10} << Numbers{0, 1, 3} << 1;
        QTest::newRow("narrow ids leave 0 out") << Ids{65534, 65535, 1, 2} << Numbers{0, 1, 2, 3} << 0;
        QTest::newRow("gap over the end") << Ids{65533, 3} << Numbers{0, 5} << 4;
        QTest::newRow("wide ids") << Ids{65534, 65535, 65536, 65538} << Numbers{0, 1, 2, 4} << 1;
        QTest::newRow("very wide ids") << Ids{1ULL << 40, (1ULL << 40) + 1} << Numbers{0, 1} << 0;
        QTest::newRow("one that comes too late") << Ids{1, 3, 2, 4} << Numbers{0, 2, -1, 3} << 1;
        QTest::newRow("twice") << Ids{65536, 65536} << Numbers{0, -1} << 0;
    }
    void idsBecomeNumbers()
    {
        QFETCH(QVector<quint64>, ids);
        QFETCH(int, lost);
        FrameTally frames;
        QVector<int> numbers;
        for (const quint64 id : ids) {
            const auto number = frames.addComplete(id, 5);
            numbers.append(number ? int(*number) : -1);
        }
        QTEST(numbers, "numbers");
        QCOMPARE(int(frames.lostBefore()), lost);
        QCOMPARE(int(frames.delivered()), int(numbers.size() - numbers.count(-1)));
    }

    void framesWithoutBufferAreTheHosts()
    {
        FrameTally frames;
        frames.addComplete(1, 2); // those two were before
        frames.addComplete(6, 5);
        QCOMPARE(frames.lostHere(), 3U);
        QCOMPARE(frames.lostBefore(), 1U);
        frames.addComplete(8, 5);
        QCOMPARE(frames.lostBefore(), 2U);
    }
};

QTEST_GUILESS_MAIN(TestFramePieces)
#include "tst_framepieces.moc"
