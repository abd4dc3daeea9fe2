// SPDX-License-Identifier: GPL-3.0-or-later
// The widgets in the cells of the camera table: each is built here and found again here, and nobody else knows how
// they lie in their cell. Connecting them is the form's business.
#ifndef KESTROVA_ROWCELLS_H
#define KESTROVA_ROWCELLS_H

#include <QtWidgets/QTableWidget>

#include <vnCore/vnTypes.h>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QToolButton;

/// The camera that a widget or plot area belongs to, in its dynamic property "hCam" as an unsigned 64-bit integer.
void setCamera(QObject* object, VNCORE_HANDLE hCam);
/// Null for an object that belongs to none.
VNCORE_HANDLE cameraOf(const QObject* object);
/// The same in the item data of a row's first item.
void setCamera(QTableWidgetItem* item, VNCORE_HANDLE hCam);
/// -1 if the camera has no row.
int rowOf(const QTableWidget* table, VNCORE_HANDLE hCam);

/// A centred check box of which the layout needs no more than it is wide, in a container without margins.
struct CheckBoxCell
{
    QWidget* container = nullptr;
    QCheckBox* box = nullptr;

    static CheckBoxCell build();
    static CheckBoxCell at(const QTableWidget* table, int row, int column);
};

/// The table owns what a cell points to, so it is good until events are processed. All is null if the row has no such
/// cell; this one is in both modes.
struct MeasureCell
{
    QToolButton* button = nullptr;

    static MeasureCell build(VNCORE_HANDLE hCam, const QString& text);
    static MeasureCell at(const QTableWidget* table, int row, int mode);
};

/// The button that writes the report; in throughput mode only.
struct ExportCell
{
    QToolButton* button = nullptr;

    static ExportCell build(VNCORE_HANDLE hCam, const QString& text);
    static ExportCell at(const QTableWidget* table, int row);
};

/// The image format that the camera is to have; in standard mode only.
struct FormatCell
{
    QComboBox* formats = nullptr;

    static FormatCell build(VNCORE_HANDLE hCam);
    static FormatCell at(const QTableWidget* table, int row);
    VNCORE_HANDLE camera() const;
};

/// A box, and a number to type while it is not ticked; in throughput mode only.
struct RequiredThroughputCell
{
    QWidget* container = nullptr;
    QCheckBox* automatic = nullptr;
    QLineEdit* value = nullptr; ///< MB/s

    static RequiredThroughputCell build(VNCORE_HANDLE hCam, QObject* validatorOwner);
    static RequiredThroughputCell at(const QTableWidget* table, int row);
    VNCORE_HANDLE camera() const;
};

/// A box, and the ends of the value axis to type while it is not ticked; in throughput mode only.
struct YAxisScalingCell
{
    QWidget* container = nullptr;
    QCheckBox* automatic = nullptr;
    QLineEdit* minimum = nullptr;
    QLineEdit* maximum = nullptr;

    static YAxisScalingCell build(VNCORE_HANDLE hCam, QObject* validatorOwner);
    static YAxisScalingCell at(const QTableWidget* table, int row);
    VNCORE_HANDLE camera() const;
};

/// The camera's cell of a kind; an empty one if it has none.
template<class Cell>
Cell cellOf(const QTableWidget* table, VNCORE_HANDLE hCam)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        const Cell cell = Cell::at(table, row);
        if (hCam && cell.camera() == hCam)
            return cell;
    }
    return {};
}

#endif
