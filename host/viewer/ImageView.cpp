// SPDX-License-Identifier: GPL-3.0-or-later
// Polling, scaling and painting of the newest image.
#include "ImageView.h"

#include <QtGui/QPainter>

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
    m_timer.setInterval(refreshIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &ImageView::refresh);
}

void ImageView::setCamera(VNCORE_HANDLE camera)
{
    if (camera == m_camera) {
        return;
    }
    m_camera = camera;
    m_rate.reset();
    m_shown.reset();
    m_picture = {};
    m_caption.clear();
    update();
}

void ImageView::refresh()
{
    if (m_camera == nullptr || visibleRegion().isEmpty()) {
        return;
    }
    const DeviceImage image = CameraRegistry::instance().latestImage(m_camera);
    if (!image.memory) {
        return; // none yet, or closed: the last picture stays
    }
    const bool sameMemory = !m_shown.owner_before(image.memory) && !image.memory.owner_before(m_shown);
    if (m_picture.isNull() || !sameMemory || image.descriptor.frameNumber != m_shownNumber) {
        showImage(image);
    } else if (m_rate.expire(std::chrono::steady_clock::now())) {
        showCaption(image.descriptor);
    }
}

void ImageView::showImage(const DeviceImage& image)
{
    const VN_IMG& descriptor = image.descriptor;
    m_shown = image.memory;
    m_shownNumber = descriptor.frameNumber;
    m_rate.frameSeen(descriptor.frameNumber, std::chrono::steady_clock::now());

    const qreal ratio = devicePixelRatioF();
    m_picture = renderImage(descriptor, size() * ratio);
    m_picture.setDevicePixelRatio(ratio);
    showCaption(descriptor);
}

void ImageView::showCaption(const VN_IMG& descriptor)
{
    m_caption = tr("%1   %2 × %3   frame %4")
                    .arg(imageFormatText(descriptor))
                    .arg(descriptor.width)
                    .arg(descriptor.height)
                    .arg(descriptor.frameNumber);
    if (const auto rate = m_rate.rate()) {
        m_caption += tr("   %1 frames/s").arg(*rate, 0, 'f', 1);
    }
    setAccessibleDescription(m_caption);
    update();
}

void ImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(16, 18, 21));
    if (m_picture.isNull()) {
        painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
        painter.drawText(rect().adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
                         m_camera ? tr("No image yet. Press \"Start view\", or start a measurement.")
                                  : tr("No open camera is selected."));
        return;
    }
    QRect place({0, 0}, m_picture.size() / m_picture.devicePixelRatio());
    place.moveCenter(rect().center());
    painter.drawImage(place, m_picture);

    const QRect text = fontMetrics().boundingRect(m_caption).adjusted(-margin, -margin / 2, margin, margin / 2);
    QRect label({0, 0}, text.size());
    label.moveBottomLeft(rect().bottomLeft());
    painter.fillRect(label, QColor(0, 0, 0, 170));
    painter.setPen(Qt::white);
    painter.drawText(label, Qt::AlignCenter, m_caption);
}

void ImageView::showEvent(QShowEvent*)
{
    m_timer.start();
}

void ImageView::hideEvent(QHideEvent*)
{
    m_timer.stop();
}

void ImageView::resizeEvent(QResizeEvent*)
{
    m_shown.reset(); // scaled anew at the next refresh
}
