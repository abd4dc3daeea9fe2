// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of the family that need no camera.
#include <QtTest/QtTest>

#include "ArrivalBook.h"
#include "ArrivalGrain.h"
#include "FrameTally.h"
#include "LossJudgement.h"

using aravis::ArrivalBook;
using aravis::ArrivalCurve;
using aravis::DropSamples;
using aravis::FrameTally;
using aravis::TapRecord;

using Numbers = QVector<qint64>;

namespace {

constexpr qint64 wallNs = 1000000000000;
constexpr qint64 leadNs = -wallNs + 5000000;

TapRecord record(TapRecord::Kind kind, quint64 frameId, qint64 stampNs, quint32 packetId = 0, quint16 bytes = 0)
{
    TapRecord made{};
    made.kind = kind;
    made.frameId = frameId;
    made.stampNs = stampNs;
    made.packetId = packetId;
    made.bytes = bytes;
    return made;
}

/// A frame of packets of 80 bytes: `stamps` of leader, packets and trailer, 0 for one that does not come.
void addFrame(ArrivalBook& book, quint64 id, const Numbers& stamps)
{
    for (int i = 0; i < stamps.size(); ++i) {
        const auto kind = i == 0                  ? TapRecord::Leader
                          : i + 1 < stamps.size() ? TapRecord::Payload
                                                  : TapRecord::Trailer;
        if (stamps[i] != 0)
            book.add(record(kind, id, wallNs + stamps[i], quint32(i), kind == TapRecord::Payload ? 80 : 0));
    }
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(ArrivalBook&)>)

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
        using Places = QVector<int>;
        QTest::newRow("begins anywhere") << Ids{7, 8, 10} << Places{0, 1, 3} << 1;
        QTest::newRow("narrow ids leave 0 out") << Ids{65534, 65535, 1, 2} << Places{0, 1, 2, 3} << 0;
        QTest::newRow("gap over the end") << Ids{65533, 3} << Places{0, 5} << 4;
        QTest::newRow("wide ids") << Ids{65534, 65535, 65536, 65538} << Places{0, 1, 2, 4} << 1;
        QTest::newRow("very wide ids") << Ids{1ULL << 40, (1ULL << 40) + 1} << Places{0, 1} << 0;
        QTest::newRow("one that comes too late") << Ids{1, 3, 2, 4} << Places{0, 2, -1, 3} << 1;
        QTest::newRow("twice") << Ids{65536, 65536} << Places{0, -1} << 0;
    }
    void idsBecomeNumbers()
    {
        QFETCH(QVector<quint64>, ids);
        QFETCH(int, lost);
        FrameTally frames;
        QVector<int> numbers;
        for (const quint64 id : ids) {
            const auto number = frames.addComplete(id, 5);
            numbers.append(number ? int(number->number) : -1);
            if (number)
                frames.addLost({number->lost});
        }
        QTEST(numbers, "numbers");
        QCOMPARE(int(frames.lost().beforeHost()), lost);
        QCOMPARE(int(frames.delivered()), int(numbers.size() - numbers.count(-1)));
    }

    void curves_data()
    {
        QTest::addColumn<Numbers>("stamps"); // of packets of 80 bytes
        QTest::addColumn<qint64>("leader");
        QTest::addColumn<Numbers>("points"); // bytes, time
        QTest::newRow("steady") << Numbers{800, 1000, 1200} << 300LL
                                << Numbers{0, 600, 80, 800, 160, 1000, 240, 1200};
        QTest::newRow("not before its leader") << Numbers{800, 1000} << 700LL << Numbers{0, 700, 80, 800, 160, 1000};
        QTest::newRow("two at once") << Numbers{800, 1000, 1000, 1400} << 0LL
                                     << Numbers{0, 700, 80, 800, 240, 1000, 320, 1400};
        QTest::newRow("reversed") << Numbers{800, 1200, 1000, 1400} << 0LL
                                  << Numbers{0, 600, 80, 800, 240, 1200, 320, 1400};
        QTest::newRow("one packet") << Numbers{800} << 500LL << Numbers{0, 500, 80, 800};
        QTest::newRow("all at once") << Numbers{800, 800} << 500LL << Numbers{0, 500, 160, 800};
        QTest::newRow("all with the leader") << Numbers{800, 800} << 800LL << Numbers{};
    }
    void curves()
    {
        QFETCH(Numbers, stamps);
        QFETCH(qint64, leader);
        QFETCH(Numbers, points);
        std::vector<aravis::PacketArrival> packets;
        for (const qint64 stamp : stamps)
            packets.push_back({80, stamp});
        const ArrivalCurve curve(packets, leader, 0);
        Numbers got;
        for (const auto& point : curve.points())
            got << qint64(point.bytes) << point.timeNs;
        QCOMPARE(got, points);

        std::vector<quint64> words(stamps.size() * 10);
        curve.writeTicks(words.data(), words.size() * 8);
        for (int i = 2; i < points.size(); i += 2) {
            for (qint64 byte = points[i - 2] + 8; byte <= points[i]; byte += 8) {
                const qint64 timeNs = points[i - 1] + (points[i + 1] - points[i - 1]) * (byte - points[i - 2]) /
                                                          (points[i] - points[i - 2]);
                QVERIFY(qAbs(qint64(words[size_t(byte / 8 - 1)]) * 4 - timeNs) <= 5);
            }
        }
    }

    void bytesThatComeAtOnce()
    {
        const struct
        {
            Numbers stamps; // of packets of 80 bytes
            double grain;
        } rows[] = {{{1000, 2000, 3000, 4000}, 80.0},
                    {{1000, 1900, 3100, 4000}, 80.0},
                    {{1000, 1001, 1002, 4000, 4001, 4002}, 240.0},
                    {{1000, 1000, 4000, 4000}, 160.0},
                    {{1000, 4000, 4000, 4000}, 200.0}}; // (80 * 80 + 240 * 240) / 320
        for (const auto& row : rows) {
            std::vector<aravis::PacketArrival> packets;
            for (const qint64 stamp : row.stamps)
                packets.push_back({80, stamp});
            aravis::ArrivalGrain grain;
            QVERIFY(!grain.bytes());
            for (int i = 0; i < 2; ++i)
                grain.add(ArrivalCurve(packets, 500, 0));
            QCOMPARE(grain.bytes().value(), row.grain);
        }
    }

    void whatATapHasTold_data()
    {
        using Known = ArrivalBook::Known;
        using Story = std::function<void(ArrivalBook&)>;
        QTest::addColumn<Story>("story");
        QTest::addColumn<int>("known");
        const auto row = [](const char* name, Known known, const Story& story) {
            QTest::newRow(name) << story << int(known);
        };
        const Numbers good{100, 200, 300, 400};
        const auto status = [](quint64 drops, qint64 offsetNs) { return record(TapRecord::Status, drops, offsetNs); };
        row("whole", Known::Whole, [=](ArrivalBook& book) {
            addFrame(book, 7, good);
            book.add(status(0, leadNs));
        });
        row("before the status", Known::NotYet, [=](ArrivalBook& book) { addFrame(book, 7, good); });
        row("a packet is late", Known::NotYet, [=](ArrivalBook& book) {
            addFrame(book, 7, {100, 200, 0, 400});
            book.add(status(0, leadNs));
        });
        row("reversed, twice and sent again", Known::Whole, [=](ArrivalBook& book) {
            addFrame(book, 7, {0, 0, 300, 400});
            addFrame(book, 7, {100, 200, 500, 600});
            book.add(status(0, leadNs));
        });
        row("the tap dropped it", Known::Nothing, [=](ArrivalBook& book) {
            addFrame(book, 7, {100, 200, 0, 400});
            book.add(status(1, leadNs));
        });
        row("the tap dropped others", Known::Whole, [=](ArrivalBook& book) {
            addFrame(book, 7, good);
            addFrame(book, 8, {700, 0, 900, 1000});
            book.add(status(1, leadNs));
        });
        row("the tap dropped it, and its rest comes later", Known::Nothing, [=](ArrivalBook& book) {
            addFrame(book, 6, good);
            book.add(status(1, leadNs));
            addFrame(book, 7, {0, 200, 300, 400});
            book.add(status(0, leadNs));
        });
        row("the tap dropped others long before", Known::NotYet, [=](ArrivalBook& book) {
            book.add(status(1, leadNs));
            addFrame(book, 6, good);
            for (int i = 0; i < 4; ++i)
                book.add(status(0, leadNs));
            addFrame(book, 7, {0, 200, 300, 400});
            book.add(status(0, leadNs));
        });
        row("the wall clock was set", Known::Nothing, [=](ArrivalBook& book) {
            addFrame(book, 7, good);
            book.add(status(0, leadNs + 1000000));
        });
        row("the wall clock was set before", Known::Whole, [=](ArrivalBook& book) {
            book.add(status(0, leadNs + 1000000));
            book.add(status(0, leadNs));
            addFrame(book, 6, good);
            for (int i = 0; i < 4; ++i)
                book.add(status(0, leadNs));
            addFrame(book, 7, good);
            book.add(status(0, leadNs));
        });
        row("the tap is gone", Known::Nothing, [](ArrivalBook& book) { book.end(); });
        row("no sense", Known::NotYet, [=](ArrivalBook& book) {
            book.add(record(TapRecord::Payload, 7, wallNs, 0xffffffff, 80));
            book.add(status(0, leadNs));
        });
    }
    void whatATapHasTold()
    {
        QFETCH(std::function<void(ArrivalBook&)>, story);
        ArrivalBook book;
        book.add(record(TapRecord::Status, 0, leadNs));
        story(book);
        ArrivalCurve curve;
        const auto known = book.find(7, 160, curve);
        QTEST(int(known), "known");
        if (known == ArrivalBook::Known::Whole) {
            QCOMPARE(curve.points().size(), size_t(3));
            QCOMPARE(curve.points().back().timeNs, 300 + wallNs + leadNs);
        }
    }

    void framesWithoutBuffer()
    {
        FrameTally frames(10);                                  // each of ten packets looks for one
        frames.addComplete(1, 2);                               // those two were before
        QCOMPARE(frames.addComplete(6, 29)->withoutBuffer, 3U); // two frames and a part of another
        QCOMPARE(frames.addComplete(8, 29)->withoutBuffer, 0U);
        QCOMPARE(frames.addComplete(10, 49)->withoutBuffer, 1U);
        QCOMPARE(frames.addComplete(13, 49)->withoutBuffer, 1U); // one of the others
        QCOMPARE(frames.idBefore(2, 3), 65534ULL);
        frames.addComplete(65536, 5);
        QCOMPARE(frames.idBefore(65537, 3), 65534ULL);
    }

    /// Frame 8 is the next whole one after frame 7. Times are of the steady clock, in ms.
    void whereAFrameWasLost()
    {
        struct Look
        {
            qint64 ms;
            quint32 drops;
            quint64 underruns;
            quint32 queued;
        };
        using Looks = std::vector<Look>;
        const Numbers good{20, 21, 22, 23};
        const Numbers later{30, 31, 32, 33};
        const Numbers broken{20, 21, 0, 23};
        const Looks quiet{{0, 5, 7, 0}, {18, 5, 7, 0}, {24, 5, 7, 900}, {27, 5, 7, 0}, {30, 5, 7, 0}, {200, 5, 7, 0}};
        const auto with = [&quiet](size_t from, quint32 drops, quint64 underruns) {
            Looks looks = quiet;
            for (; from < looks.size(); ++from) {
                looks[from].drops += drops;
                looks[from].underruns += underruns;
            }
            return looks;
        };
        const LossCause notYet = nullptr;
        const struct
        {
            const char* name;
            Numbers lost; ///< none: nothing came of it
            Numbers next;
            quint64 tapDrops;
            Looks looks;
            LossCause cause;
        } rows[] = {{"nothing of it came", {}, later, 0, quiet, &LostFrames::onTheWay},
                    {"a packet is missing", broken, later, 0, with(2, 1, 1), &LostFrames::onTheWay},
                    {"the tap may have missed it", broken, later, 1, quiet, &LostFrames::unknown},
                    {"or all of it", {}, later, 1, quiet, &LostFrames::unknown},
                    {"the next one is not whole yet", broken, {}, 0, quiet, notYet},
                    {"socket", good, later, 1, with(2, 3, 1), &LostFrames::socket},
                    {"socket before", good, later, 0, with(1, 3, 0), &LostFrames::notAttributable},
                    {"socket after", good, later, 0, with(3, 3, 0), &LostFrames::notAttributable},
                    {"counter wraps", good, later, 0, with(2, 0xfffffffe, 0), &LostFrames::socket},
                    {"buffer", good, later, 0, with(2, 0, 1), &LostFrames::noBuffer},
                    {"buffer, when it was read", good, later, 0, with(3, 0, 1), &LostFrames::noBuffer},
                    {"buffer, when it had been read", good, later, 0, with(5, 0, 1), &LostFrames::notAttributable},
                    {"paused", {20, 21, 122, 123}, {130, 131, 132, 133}, 0, quiet, &LostFrames::late},
                    {"not long", {20, 21, 120, 121}, {130, 131, 132, 133}, 0, quiet, &LostFrames::notAttributable},
                    {"reversed", {23, 22, 21, 20}, later, 0, quiet, &LostFrames::notAttributable},
                    {"overtaken", {20, 21, 22, 33}, {30, 31, 32, 34}, 0, quiet, &LostFrames::late},
                    {"nobody looked then", good, later, 0, {quiet[2], quiet[3], quiet[4]}, &LostFrames::unknown},
                    {"always something waits",
                     good,
                     later,
                     0,
                     {{0, 5, 7, 9}, {26, 5, 8, 9}, {80, 5, 8, 9}},
                     &LostFrames::noBuffer},
                    {"nobody has looked yet", good, later, 0, {quiet[0], quiet[1], quiet[2]}, notYet}};
        for (const auto& row : rows) {
            ArrivalBook book;
            book.add(record(TapRecord::Status, 0, leadNs));
            const auto stamps = [](Numbers times) {
                for (qint64& time : times)
                    time = time == 0 ? 0 : time * 1000000 - leadNs - wallNs;
                return times;
            };
            addFrame(book, 7, stamps(row.lost));
            addFrame(book, 8, stamps(row.next));
            book.add(record(TapRecord::Status, row.tapDrops, leadNs));
            DropSamples drops;
            for (const Look& look : row.looks)
                drops.add({look.ms * 1000000, look.ms * 1000000 + 1000, look.drops, look.underruns, look.queued});
            const auto cause = aravis::lossCause(book.passage(7, 8), drops, false);
            QVERIFY2(cause.value_or(notYet) == row.cause, row.name);
            QVERIFY(cause || aravis::lossCause(book.passage(7, 8), drops, true));
        }
    }

    void aLongGapIsNotTakenForALossOnTheWay()
    {
        using Fate = ArrivalBook::Fate;
        ArrivalBook book;
        book.add(record(TapRecord::Status, 0, leadNs));
        for (qint64 i = 0; i < 6000; ++i)
            addFrame(book, quint64((63000 + i) % 65535 + 1), {i * 100 + 1, i * 100 + 2, i * 100 + 3, i * 100 + 4});
        book.add(record(TapRecord::Status, 0, leadNs));
        const quint64 next = (63000 + 5999) % 65535 + 1;
        QCOMPARE(int(book.passage(next - 1000, next).fate), int(Fate::Arrived));
        QCOMPARE(int(book.passage(63001 + 500, next).fate), int(Fate::Unknown)); // too long ago
    }
};

QTEST_GUILESS_MAIN(TestFramePieces)
#include "tst_framepieces.moc"
