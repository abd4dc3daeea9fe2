// SPDX-License-Identifier: GPL-3.0-or-later
// From a camera's image data to something that can be painted.
#ifndef KESTROVA_IMAGERENDERER_H
#define KESTROVA_IMAGERENDERER_H

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <vnCore/vnTypes.h>

/// The image as grey levels, scaled to fit into `size` pixels. Every target pixel is read straight out of the data:
/// the price depends on the size on the screen, not on the sensor's. More than 8 bits are scaled to 8 by their
/// significant ones. Null for an image without pixels; where the data end early, pixels stay black.
QImage renderImage(const VN_IMG& image, QSize size);

/// "Mono 8", "Mono 16 (12 bit)", "Transport data".
QString imageFormatText(const VN_IMG& image);

#endif
