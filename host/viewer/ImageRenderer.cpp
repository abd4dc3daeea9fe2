// SPDX-License-Identifier: GPL-3.0-or-later
// Nearest-neighbour scaling of 8 and 16 bit data.
#include "ImageRenderer.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include <QtCore/QCoreApplication>

namespace {

constexpr quint32 rgb8 = 0x02180014; ///< codes of the industry's naming convention, as a camera's own formats are
constexpr quint32 bgr8 = 0x02180015;

/// 0 if such pixels cannot be shown.
quint64 bytesPerPixel(const VN_IMG& image)
{
    const quint32 bits = image.dataFormat >> 16 & 0xff;
    switch (image.dataFormat >> 24) {
    case 0: // the host's own numbers
        return image.dataFormat == VN_FRM_MONO8 ? 1 : 2;
    case 1: // grey, or what is behind one of a pattern of colour filters
        return bits == 8 || bits == 16 ? bits / 8 : 0;
    default:
        return image.dataFormat == rgb8 || image.dataFormat == bgr8 ? 3 : 0;
    }
}

/// How far a two-byte pixel is shifted right to become a grey level.
int greyShift(const VN_IMG& image)
{
    if (image.dataFormat == VN_FRM_TRANSPORT_DATA || image.bitDepth == 0)
        return 8;
    return std::clamp(int(image.bitDepth), 8, 16) - 8;
}

} // namespace

QImage renderImage(const VN_IMG& image, QSize size)
{
    const quint64 pixelBytes = bytesPerPixel(image);
    if (image.data == nullptr || image.width == 0 || image.height == 0 || size.isEmpty() || pixelBytes == 0)
        return {};
    constexpr quint32 longestSide = 1U << 30; // what a QSize can be scaled with
    const QSize source(int(std::min(image.width, longestSide)), int(std::min(image.height, longestSide)));
    const QSize target = source.scaled(size, Qt::KeepAspectRatio).expandedTo({1, 1});
    QImage result(target, pixelBytes == 3 ? QImage::Format_RGB888 : QImage::Format_Grayscale8);
    if (result.isNull())
        return {};
    result.fill(0);

    const int shift = greyShift(image);
    const auto* data = static_cast<const uchar*>(image.data);
    std::vector<quint64> columns(size_t(target.width())); // byte offsets within a row
    for (int x = 0; x < target.width(); ++x)
        columns[size_t(x)] = quint64(x) * image.width / quint64(target.width()) * pixelBytes;
    for (int y = 0; y < target.height(); ++y) {
        const quint64 row = quint64(y) * image.height / quint64(target.height()) * image.width * pixelBytes;
        uchar* line = result.scanLine(y);
        for (const quint64 column : columns) {
            const quint64 offset = row + column;
            if (offset + pixelBytes > image.dataBytes)
                break;
            if (pixelBytes == 1) {
                *line++ = data[offset];
            } else if (pixelBytes == 3) {
                const bool blueFirst = image.dataFormat == bgr8;
                *line++ = data[offset + (blueFirst ? 2 : 0)];
                *line++ = data[offset + 1];
                *line++ = data[offset + (blueFirst ? 0 : 2)];
            } else {
                quint16 value = 0;
                std::memcpy(&value, data + offset, sizeof value);
                *line++ = uchar(std::min(value >> shift, 255));
            }
        }
    }
    return result;
}

QString imageFormatText(const VN_IMG& image)
{
    switch (image.dataFormat) {
    case VN_FRM_MONO8:
        return QCoreApplication::translate("ImageView", "Mono 8");
    case VN_FRM_MONO16:
        return QCoreApplication::translate("ImageView", "Mono 16 (%1 bit)").arg(image.bitDepth);
    case VN_FRM_TRANSPORT_DATA:
        return QCoreApplication::translate("ImageView", "Transport data");
    default:
        return QCoreApplication::translate("ImageView", "Format %1")
            .arg(image.dataFormat >> 24 == 0 ? QString::number(image.dataFormat)
                                             : QStringLiteral("0x%1").arg(image.dataFormat, 8, 16, QLatin1Char('0')));
    }
}
