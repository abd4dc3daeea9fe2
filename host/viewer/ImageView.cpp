// SPDX-License-Identifier: GPL-3.0-or-later
// Polling, scaling and painting of the newest image.
#include "ImageView.h"

#include <QtGui/QPainter>

#include <vnCoreGui/PlotColours.h>

#include "CameraRegistry.h"
#include "ImageRenderer.h"

namespace {

constexpr int refreshIntervalMs = 34; // just below 30 times a second
constexpr int margin = 6;             // pixels around a text

} // namespace

ImageView::ImageView(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(tr("Image of the selected camera"));
    setToolTip(tr("The newest image of the camera that is selected in the list"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    timer.setInterval(refreshIntervalMs);
    connect(&timer, &QTimer::timeout, this, &ImageView::refresh);
}

void ImageView::setCamera(VNCORE_HANDLE camera)
{
    if (camera == shownCamera)
        return;
    shownCamera = camera;
    frameRate.reset();
    shown.reset();
    picture = {};
    captionText.clear();
    update();
}

void ImageView::refresh()
{
    if (shownCamera == nullptr || visibleRegion().isEmpty())
        return;
    const DeviceImage image = CameraRegistry::instance().latestImage(shownCamera);
    if (!image.memory)
        return; // none yet, or closed: the last picture stays
    const bool sameMemory = !shown.owner_before(image.memory) && !image.memory.owner_before(shown);
    if (picture.isNull() || !sameMemory || image.descriptor.frameNumber != shownNumber)
        showImage(image);
    else if (frameRate.expire(std::chrono::steady_clock::now()))
        showCaption(image.descriptor);
}

void ImageView::showImage(const DeviceImage& image)
{
    const VN_IMG& descriptor = image.descriptor;
    shown = image.memory;
    shownNumber = descriptor.frameNumber;
    frameRate.frameSeen(descriptor.frameNumber, std::chrono::steady_clock::now());

    const qreal ratio = devicePixelRatioF();
    picture = renderImage(descriptor, size() * ratio);
    picture.setDevicePixelRatio(ratio);
    showCaption(descriptor);
}

void ImageView::showCaption(const VN_IMG& descriptor)
{
    captionText = tr("%1   %2 × %3   frame %4")
                      .arg(imageFormatText(descriptor))
                      .arg(descriptor.width)
                      .arg(descriptor.height)
                      .arg(descriptor.frameNumber);
    if (const auto rate = frameRate.rate())
        captionText += tr("   %1 frames/s").arg(*rate, 0, 'f', 1);
    setAccessibleDescription(captionText);
    update();
}

void ImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), plotColours::background);
    if (picture.isNull()) {
        painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
        painter.drawText(rect().adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
                         shownCamera ? tr("No image yet. Press \"Start view\", or start a measurement.")
                                     : tr("No open camera is selected."));
        return;
    }
    QRect place({0, 0}, picture.size() / picture.devicePixelRatio());
    place.moveCenter(rect().center());
    painter.drawImage(place, picture);

    const QRect text = fontMetrics().boundingRect(captionText).adjusted(-margin, -margin / 2, margin, margin / 2);
    QRect label({0, 0}, text.size());
    label.moveBottomLeft(rect().bottomLeft());
    painter.fillRect(label, QColor(0, 0, 0, 170));
    painter.setPen(Qt::white);
    painter.drawText(label, Qt::AlignCenter, captionText);
}

void ImageView::showEvent(QShowEvent*)
{
    timer.start();
}

void ImageView::hideEvent(QHideEvent*)
{
    timer.stop();
}

void ImageView::resizeEvent(QResizeEvent*)
{
    shown.reset(); // scaled anew at the next refresh
}
