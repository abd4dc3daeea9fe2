// SPDX-License-Identifier: GPL-3.0-or-later
// Image data as pixels, and the rate of what is seen of them.
#include <QtTest/QtTest>

#include "FrameRate.h"
#include "ImageRenderer.h"
#include "Table.h"

class TestImageRenderer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void greyLevels()
    {
        const Rows<int, int, QByteArray, int> rows{
            {VN_FRM_MONO8, 8, QByteArray("\x9a", 1), 0x9a},
            {VN_FRM_MONO16, 16, QByteArray("\x34\x12", 2), 0x12},
            {VN_FRM_MONO16, 12, QByteArray("\x34\x0a", 2), 0xa3},
            {VN_FRM_MONO16, 12, QByteArray("\x34\x1a", 2), 255}, // more than its 12 bits
            {VN_FRM_MONO16, 0, QByteArray("\x34\x12", 2), 0x12}, // depth not given
            {0x01100005, 12, QByteArray("\x34\x0a", 2), 0xa3},   // Mono12
            {0x0108000b, 8, QByteArray("\x9a", 1), 0x9a},        // a Bayer pattern
            {0x02180014, 8, QByteArray("\x10\x20\x40", 3), qGray(0x10, 0x20, 0x40)},
            {0x02180015, 8, QByteArray("\x10\x20\x40", 3), qGray(0x40, 0x20, 0x10)},
            {VN_FRM_TRANSPORT_DATA, 8, QByteArray("\x34\x12", 2), 0x12}};
        for (const auto& [format, bitDepth, data, grey] : rows)
            QCOMPARE(qGray(renderImage(describe(1, 1, format, data, bitDepth), {1, 1}).pixel(0, 0)), grey);
    }

    void scalesKeepingTheAspect()
    {
        const QByteArray data("\0\x40\x80\xc0\x01\x41\x81\xc1", 8); // 4 x 2
        const QImage picture = renderImage(describe(4, 2, VN_FRM_MONO8, data), {8, 100});
        QCOMPARE(picture.size(), QSize(8, 4));
        QCOMPARE(qGray(picture.pixel(7, 0)), 0xc0);
        QCOMPARE(qGray(picture.pixel(3, 3)), 0x41);
    }

    void oddImagesAreSafe()
    {
        const Rows<quint32, quint32, int, bool> rows{{0U, 4U, 16, false},
                                                     {65535U, 65535U, 16, true},
                                                     {0xffffffffU, 0xffffffffU, 16, true},
                                                     {4U, 4U, 0, true},
                                                     {4U, 4U, -1, false}}; // null data
        for (const auto& [width, height, bytes, hasPixels] : rows) {
            const std::vector<char> data(size_t(std::max(bytes, 0)), '\x7f'); // on the heap: asan sees an overrun
            VN_IMG image = describe(width, height, VN_FRM_MONO16, QByteArray());
            static const char end = 0;
            image.data = bytes < 0 ? nullptr : data.empty() ? &end : data.data();
            image.dataBytes = data.size();
            QCOMPARE(!renderImage(image, {64, 48}).isNull(), hasPixels);
        }
    }

    void rateCountsFramesNotLooks()
    {
        using namespace std::chrono_literals;
        FrameRate rate;
        const FrameRate::TimePoint begin{};
        for (int i = 0; i <= 30; ++i) { // sees every fourth of 120 frames a second
            rate.frameSeen(quint32(1000 + i * 4), begin + i * 33333334ns);
        }
        QVERIFY(rate.rate().has_value());
        QVERIFY(std::abs(*rate.rate() - 120.0) < 0.1);
        QVERIFY(!rate.expire(begin + 3s) && rate.rate().has_value());
        QVERIFY(rate.expire(begin + 9s) && !rate.rate().has_value()); // nothing has come for long
        rate.frameSeen(1, begin + 10s);
        rate.frameSeen(500, begin + 11s);
        rate.frameSeen(1, begin + 12s); // acquisition begun anew
        QVERIFY(!rate.rate().has_value());
    }

private:
    static VN_IMG describe(quint32 width, quint32 height, int format, const QByteArray& data, int bitDepth = 8)
    {
        VN_IMG image{};
        image.width = width;
        image.height = height;
        image.dataFormat = quint32(format);
        image.bitDepth = quint32(bitDepth);
        image.data = data.constData();
        image.dataBytes = quint64(data.size());
        return image;
    }
};

QTEST_GUILESS_MAIN(TestImageRenderer)
#include "tst_imagerenderer.moc"
