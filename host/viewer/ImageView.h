// SPDX-License-Identifier: GPL-3.0-or-later
// The picture in the middle of the window: what the selected camera sees.
#ifndef KESTROVA_IMAGEVIEW_H
#define KESTROVA_IMAGEVIEW_H

#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>

#include "CameraDevice.h"
#include "FrameRate.h"

/// Shows the newest image that anybody has received from the camera, at most 30 times a second and not while hidden.
/// It never waits for an image itself, so it takes none from a measurement.
class ImageView : public QWidget
{
    Q_OBJECT

public:
    explicit ImageView(QWidget* parent = nullptr);

    /// Null shows no camera.
    void setCamera(VNCORE_HANDLE camera);
    VNCORE_HANDLE camera() const { return shownCamera; }

    /// Format, size, frame number and rate as the view shows them; empty without an image.
    QString caption() const { return captionText; }

    QSize sizeHint() const override { return {480, 320}; }
    QSize minimumSizeHint() const override { return {160, 120}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void refresh();
    void showImage(const DeviceImage& image);
    void showCaption(const VN_IMG& descriptor);

    QTimer timer;
    VNCORE_HANDLE shownCamera = nullptr;
    std::weak_ptr<const void> shown; ///< memory of the shown image: holding it would keep it from its driver
    quint32 shownNumber = 0;
    FrameRate frameRate;
    QImage picture;
    QString captionText;
};

#endif
