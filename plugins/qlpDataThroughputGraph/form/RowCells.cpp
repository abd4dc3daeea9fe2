// SPDX-License-Identifier: GPL-3.0-or-later
// Building and finding the widgets of a row. Positions among a container's children: the layout comes first, then the
// widgets in the order of their creation.
#include "RowCells.h"

#include <QtCore/QLocale>
#include <QtGui/QIntValidator>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolButton>

#include "Columns.h"

namespace {

constexpr auto cameraProperty = "hCam";
constexpr QSize measureButtonSize(64, 23);
constexpr QSize scaleEditSize(50, 23);
constexpr int editMaximum = 10000; // MB/s

quint64 number(VNCORE_HANDLE hCam)
{
    return quint64(reinterpret_cast<quintptr>(hCam));
}

VNCORE_HANDLE handle(const QVariant& number)
{
    return reinterpret_cast<VNCORE_HANDLE>(quintptr(number.toULongLong())); // NOLINT(performance-no-int-to-ptr)
}

template<class Widget>
Widget* childAt(const QWidget* container, int position)
{
    return container ? qobject_cast<Widget*>(container->children().value(position)) : nullptr;
}

QHBoxLayout* layOut(QWidget* container)
{
    auto* layout = new QHBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

QToolButton* toolButton(VNCORE_HANDLE hCam, const QString& text)
{
    auto* button = new QToolButton;
    button->setText(text);
    setCamera(button, hCam);
    return button;
}

template<class Widget>
Widget* add(QWidget* container, VNCORE_HANDLE hCam)
{
    auto* widget = new Widget(container);
    setCamera(widget, hCam);
    container->layout()->addWidget(widget);
    return widget;
}

/// The owner of a validator lives longer than the edit box, so the validator goes with the box.
QLineEdit* addEdit(QWidget* container, VNCORE_HANDLE hCam, QObject* validatorOwner)
{
    auto* edit = add<QLineEdit>(container, hCam);
    auto* validator = new QIntValidator(0, editMaximum, validatorOwner);
    QLocale plain = QLocale::c(); // what the box takes is what QString::toInt() reads
    plain.setNumberOptions(QLocale::RejectGroupSeparator);
    validator->setLocale(plain);
    QObject::connect(edit, &QObject::destroyed, validator, &QObject::deleteLater);
    edit->setValidator(validator);
    edit->setAlignment(Qt::AlignCenter);
    return edit;
}

} // namespace

void setCamera(QObject* object, VNCORE_HANDLE hCam)
{
    object->setProperty(cameraProperty, QVariant::fromValue(number(hCam)));
}

VNCORE_HANDLE cameraOf(const QObject* object)
{
    return handle(object->property(cameraProperty));
}

void setCamera(QTableWidgetItem* item, VNCORE_HANDLE hCam)
{
    item->setData(Qt::UserRole, QVariant::fromValue(number(hCam)));
}

int rowOf(const QTableWidget* table, VNCORE_HANDLE hCam)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto* item = table->item(row, cameraColumn);
        if (item && handle(item->data(Qt::UserRole)) == hCam)
            return row;
    }
    return -1;
}

CheckBoxCell CheckBoxCell::build()
{
    auto* container = new QWidget;
    auto* layout = layOut(container);
    layout->setAlignment(Qt::AlignCenter);
    auto* box = new QCheckBox(container);
    box->setChecked(true);
    box->setMaximumWidth(box->sizeHint().width());
    layout->addWidget(box);
    return {container, box};
}

CheckBoxCell CheckBoxCell::at(const QTableWidget* table, int row, int column)
{
    auto* container = table->cellWidget(row, column);
    auto* box = childAt<QCheckBox>(container, 1);
    return box ? CheckBoxCell{container, box} : CheckBoxCell{};
}

MeasureCell MeasureCell::build(VNCORE_HANDLE hCam, const QString& text)
{
    auto* button = toolButton(hCam, text);
    button->setFixedSize(measureButtonSize);
    button->setMaximumWidth(button->sizeHint().width());
    return {button};
}

MeasureCell MeasureCell::at(const QTableWidget* table, int row, int mode)
{
    return {qobject_cast<QToolButton*>(table->cellWidget(row, measureColumn(mode)))};
}

ExportCell ExportCell::build(VNCORE_HANDLE hCam, const QString& text)
{
    auto* button = toolButton(hCam, text);
    button->setMaximumWidth(button->sizeHint().width());
    return {button};
}

ExportCell ExportCell::at(const QTableWidget* table, int row)
{
    return {qobject_cast<QToolButton*>(table->cellWidget(row, ThroughputColumn::ExportData))};
}

FormatCell FormatCell::build(VNCORE_HANDLE hCam)
{
    auto* formats = new QComboBox;
    setCamera(formats, hCam);
    return {formats};
}

FormatCell FormatCell::at(const QTableWidget* table, int row)
{
    return {qobject_cast<QComboBox*>(table->cellWidget(row, StandardColumn::DataFormat))};
}

VNCORE_HANDLE FormatCell::camera() const
{
    return formats ? cameraOf(formats) : nullptr;
}

RequiredThroughputCell RequiredThroughputCell::build(VNCORE_HANDLE hCam, QObject* validatorOwner)
{
    RequiredThroughputCell cell;
    cell.container = new QWidget;
    layOut(cell.container);
    cell.automatic = add<QCheckBox>(cell.container, hCam);
    cell.value = addEdit(cell.container, hCam, validatorOwner);
    return cell;
}

RequiredThroughputCell RequiredThroughputCell::at(const QTableWidget* table, int row)
{
    auto* container = table->cellWidget(row, ThroughputColumn::RequiredThroughput);
    const RequiredThroughputCell cell{container, childAt<QCheckBox>(container, 1), childAt<QLineEdit>(container, 2)};
    return cell.automatic && cell.value ? cell : RequiredThroughputCell{};
}

VNCORE_HANDLE RequiredThroughputCell::camera() const
{
    return value ? cameraOf(value) : nullptr;
}

YAxisScalingCell YAxisScalingCell::build(VNCORE_HANDLE hCam, QObject* validatorOwner)
{
    YAxisScalingCell cell;
    cell.container = new QWidget;
    layOut(cell.container);
    cell.automatic = add<QCheckBox>(cell.container, hCam);
    cell.automatic->setChecked(true);
    for (const auto& [edit, text] :
         {std::pair{&cell.minimum, "0"}, std::pair{&cell.maximum, "1000"}}) { // as the axis
        *edit = addEdit(cell.container, hCam, validatorOwner);
        (*edit)->setText(QLatin1String(text));
        (*edit)->setFixedSize(scaleEditSize);
        (*edit)->setEnabled(false);
    }
    return cell;
}

YAxisScalingCell YAxisScalingCell::at(const QTableWidget* table, int row)
{
    auto* container = table->cellWidget(row, ThroughputColumn::YAxisScaling);
    const YAxisScalingCell cell{container, childAt<QCheckBox>(container, 1), childAt<QLineEdit>(container, 2),
                                childAt<QLineEdit>(container, 3)};
    return cell.automatic && cell.minimum && cell.maximum ? cell : YAxisScalingCell{};
}

VNCORE_HANDLE YAxisScalingCell::camera() const
{
    return automatic ? cameraOf(automatic) : nullptr;
}
