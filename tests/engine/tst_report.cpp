// SPDX-License-Identifier: GPL-3.0-or-later
// The report: its numbers, its lines, and what happens when writing ends early.
#include <cmath>
#include <cstring>

#include <QtTest/QtTest>
#include <QtWidgets/QProgressDialog>

#include "CsvNumber.h"
#include "LogCapture.h"
#include "NaiveEvaluator.h"
#include "RandomRecord.h"
#include "Table.h"
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
    void numbers_data()
    {
        const Table<double> row("value"); // its text is the row's name
        row("1024", 1024);
        row("33.3333", 33.33333);
        row("1.23457e+06", 1234567.0);
        row("97.6563", 97.65625); // a tie goes away from zero
        row("-97.6563", -97.65625);
        row("1e+06", 999999.5);
        row("999999", 999999.49);
        row("0.0001", 0.0001);
        row("1e-05", 0.00001);
        row("1e+100", 1e100);
        row("0", -0.0);
        row("nan", -std::nan(""));
        row("-inf", -HUGE_VAL);
    }
    void numbers()
    {
        QFETCH(double, value);
        QCOMPARE(number(value), QByteArray(QTest::currentDataTag()));
    }

    void numbersLikeQt()
    {
        Dice dice(1);
        for (int i = testCount(10'000'000); i > 0; --i) {
            const double value = anyDouble(dice);
            const QByteArray text = number(value);
            if (text != QString::number(value, 'g', 6).toLatin1())
                QCOMPARE(text, QString::number(value, 'g', 6).toLatin1());
        }
        QCOMPARE(number(~quint64(0)), QByteArray("18446744073709551615"));
        QCOMPARE(number(std::numeric_limits<qint32>::min()), QByteArray("-2147483648"));
    }

    void lines_data()
    {
        const Table<qint64, qint64, QByteArray> row("fromUs", "toUs", "text");
        const QByteArray first = "7,4,4096,4000,1000,1024,0,0\n";
        const QByteArray second = "7,12,4096,12000,1000,512,1000,100\n";
        row("all", 0, 2000000, first + second);
        row("to the first interval", 0, 1000004, first);
        row("between the intervals", 0, 1000005, first);
        row("from the second interval", 1000012, 1000012, second);
        row("behind", 2000000, 3000000, {});
    }
    void lines()
    {
        QFETCH(qint64, fromUs);
        QFETCH(qint64, toUs);
        QFETCH(QByteArray, text);
        CxCameraLineData data;
        data.requiredThroughput = 1000;
        data.cameraBufferSize = 1000;
        appendFrame(data, 1000000, {0, 1000, 3000}, 7);
        QCOMPARE(writtenReport(data, fromUs, toUs), reportHeader + text);
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
            const qint64 toUs = data.frameList[15]->timestampUs;
            QCOMPARE(writtenReport(data, fromUs, toUs), reportHeader + naiveReport(data, fromUs, toUs));
        }
    }

    void endsEarly()
    {
        CxCameraLineData data;
        Dice dice(3);
        appendRandomMeasurement(data, dice, 2000);
        const qint64 end = std::numeric_limits<qint64>::max();
        const QByteArray whole = writtenReport(data, 0, end);

        QByteArray text;
        const auto append = [&text](const char* piece, std::size_t size) {
            text.append(piece, static_cast<int>(size));
            return true;
        };
        CsvReportWriter cancelled(append, [](qint32 visited) { return visited < 100; });
        QCOMPARE(cancelled.write(data, 0, end), CsvReportResult::Cancelled);
        QVERIFY(text.size() > int(qstrlen(reportHeader)) && text.size() < whole.size());
        QVERIFY(whole.startsWith(text) && text.endsWith('\n'));

        LogCapture log;
        int pieces = 0;
        CsvReportWriter refused([&pieces](const char*, std::size_t) { return ++pieces < 2; });
        QCOMPARE(refused.write(data, 0, end), CsvReportResult::Failed);
        QCOMPARE(pieces, 2);
        QCOMPARE(log.texts(), QStringList("CsvReportWriter::write(): Cannot write the report"));
    }

    void toAFile()
    {
        CxCameraLineData data;
        Dice dice(4);
        appendRandomMeasurement(data, dice, 100);
        const qint64 end = std::numeric_limits<qint64>::max();
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("report.csv"));

        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(10'000'000, 'x')); // longer than the report: contents are replaced
        file.close();
        QCOMPARE(data.exportToCsv(path, nullptr, 0, end), CsvReportResult::Written);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), writtenReport(data, 0, end));

        data.measMode = MeasModeStandardAcq;
        const QString none = folder.filePath(QStringLiteral("none.csv"));
        QCOMPARE(data.exportToCsv(none, nullptr, 0, end), CsvReportResult::NoReport);
        QVERIFY(!QFile::exists(none));
    }
};

QTEST_MAIN(TestReport)
#include "tst_report.moc"
