// SPDX-License-Identifier: GPL-3.0-or-later
// The report: its numbers and its lines.
#include <cmath>
#include <cstring>

#include <QtTest/QtTest>

#include "CsvNumber.h"
#include "NaiveEvaluator.h"
#include "RandomRecord.h"
#include "TestScale.h"

namespace {

template<typename T>
QByteArray number(T value)
{
    char text[csvNumberRoom];
    return QByteArray(text, static_cast<int>(writeCsvNumber(text, value) - text));
}

/// Seven digits of which the last is a five, behind whatever the point stands: halfway between two texts.
double tie(Dice& dice)
{
    const auto eighths = static_cast<int>(dice.between(0, 6)); // digits after the point: multiples of 2^-n end in 5
    const double odd = static_cast<double>(dice.between(0, (10'000'000LL << eighths) / 2) * 2 + 1);
    const double fraction = std::ldexp(odd, -eighths);
    return eighths == 0 ? std::floor(fraction / 10) * 10 + 5 : fraction;
}

double anyDouble(Dice& dice)
{
    switch (dice.between(0, 5)) {
    case 0: { // every bit pattern
        const quint64 bits = dice.bits();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    case 1:
        return tie(dice);
    case 2: // the closest neighbours of a tie
        return std::nextafter(tie(dice), dice.oneIn(2) ? 0.0 : HUGE_VAL);
    case 3: // as speeds are made
        return 4096.0 / (static_cast<double>(dice.between(1, 100000)) / 250.0);
    case 4: // few digits, any magnitude that the fast path takes
        return static_cast<double>(dice.between(-2'000'000, 2'000'000)) *
               std::pow(10.0, static_cast<double>(dice.between(-24, 24)));
    default:
        return std::ldexp(static_cast<double>(dice.bits()), static_cast<int>(dice.between(-130, 30)));
    }
}

} // namespace

class TestReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersLikeQt()
    {
        const auto compare = [](double value) {
            const QByteArray text = number(value);
            if (text != QString::number(value, 'g', 6).toLatin1())
                QCOMPARE(text, QString::number(value, 'g', 6).toLatin1());
        };
        for (double value : {1024.0, -97.65625, 999999.49, 1e-4, 1e100, -0.0, -std::nan(""), -HUGE_VAL})
            compare(value);
        QCOMPARE(number(97.65625), QByteArray("97.6563")); // a tie goes away from zero
        Dice dice(1);
        for (int i = testCount(10'000'000); i > 0; --i)
            compare(anyDouble(dice));
        QCOMPARE(number(~quint64(0)), QByteArray("18446744073709551615"));
        QCOMPARE(number(std::numeric_limits<qint32>::min()), QByteArray("-2147483648"));
    }

    void equalToTheFormulas()
    {
        for (int seed = 0; seed < testCount(200); ++seed) {
            Dice dice(static_cast<quint64>(seed));
            CxCameraLineData data;
            data.requiredThroughput = static_cast<qint32>(dice.between(0, 3000));
            data.cameraBufferSize = dice.oneIn(5) ? 0 : 32768;
            appendRandomMeasurement(data, dice, 20);
            const qint64 fromUs = data.frameList[5]->timestampUs;
            const FrameRecord& last = *data.frameList[15];
            const qint64 toUs = dice.oneIn(2) && last.blockCount > 1 ? intervalTimeUs(last, 0) : last.timestampUs;
            QCOMPARE(writtenReport(data, fromUs, toUs), reportHeader + naiveReport(data, fromUs, toUs));
        }
    }
};

QTEST_GUILESS_MAIN(TestReport)
#include "tst_report.moc"
