// SPDX-License-Identifier: GPL-3.0-or-later
// Columns, states and rates.
#include "CameraList.h"

#include <algorithm>
#include <cmath>

#include <QtGui/QTextDocument>
#include <QtWidgets/QHeaderView>

#include "CameraNames.h"
#include "CameraRegistry.h"
#include "CameraState.h"
#include "PlainText.h"
#include "TakeOvers.h"

namespace {

/// What is looked at most often comes first: where there is no room for all, the last ones are scrolled to.
enum Column
{
    NameColumn,
    StateColumn,
    RateColumn, ///< MB/s
    FramesColumn,
    MissingColumn,
    IdColumn
};

constexpr int leastNameCharacters = 12;

constexpr std::chrono::milliseconds shortestMeterTime{900};
constexpr double bytesPerMB = 1e6;

/// Tool tips take for markup what looks like it.
QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace

CameraList::CameraList(const TakeOvers& takeOvers, QWidget* parent) : QTreeWidget(parent), takenOver(takeOvers)
{
    setHeaderLabels({tr("Camera"), tr("State"), tr("MB/s"), tr("Frames/s"), tr("Missing"), tr("Id")});
    headerItem()->setToolTip(RateColumn, tr("What the camera delivers, to the view or to a plug-in"));
    headerItem()->setToolTip(MissingColumn, tr("Frames that did not arrive since the camera was opened"));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAccessibleName(tr("Cameras"));
    setToolTip(tr("The cameras of this machine; the selected one is shown in the middle.\n"
                  "Enter or a double click opens a camera, typing searches for its name,\n"
                  "a click on a heading sorts."));
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(NameColumn, QHeaderView::Fixed);
    setTextElideMode(Qt::ElideMiddle); // names of one kind differ at their ends
    for (int column = StateColumn; column <= IdColumn; ++column)
        resizeColumnToContents(column);   // the header's text; contents make it wider
    sortByColumn(-1, Qt::AscendingOrder); // in the registry's order until a heading is clicked
    setSortingEnabled(true);
}

int CameraList::selectedDevice() const
{
    const auto found = std::find(items.begin(), items.end(), currentItem());
    return found != items.end() ? static_cast<int>(found - items.begin()) : -1;
}

void CameraList::selectNewest()
{
    const CameraRegistry& registry = CameraRegistry::instance();
    if (registry.openedHandle(selectedDevice()) != nullptr)
        return;
    for (int device = 0; device < static_cast<int>(items.size()); ++device) {
        if (registry.openedHandle(device) == registry.openedCameras().last())
            setCurrentItem(items[static_cast<std::size_t>(device)]);
    }
}

void CameraList::refresh()
{
    const CameraRegistry& registry = CameraRegistry::instance();
    const int devices = registry.deviceCount();
    while (topLevelItemCount() > devices) {
        delete items.back(); // which leaves the list
        items.pop_back();
    }
    while (topLevelItemCount() < devices) {
        items.push_back(new QTreeWidgetItem(this));
        for (const int column : {RateColumn, FramesColumn, MissingColumn})
            items.back()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    meters.resize(items.size());
    for (int device = 0; device < devices; ++device) {
        const SxCameraInfo info = registry.deviceInfo(device);
        QTreeWidgetItem* item = items[static_cast<std::size_t>(device)];
        item->setText(NameColumn, singleLine(info.name));
        item->setToolTip(NameColumn, plainToolTip(cameraDisplayName(info)));
        setText(device, IdColumn, singleLine(info.customId.isEmpty() ? info.id : info.customId));
        item->setToolTip(IdColumn, plainToolTip(info.id));
    }
    refreshStates(std::chrono::steady_clock::now());
    if (!currentItem() && devices > 0)
        setCurrentItem(items.front());
}

void CameraList::refreshStates(std::chrono::steady_clock::time_point now)
{
    for (int device = 0; device < static_cast<int>(items.size()); ++device) {
        QTreeWidgetItem* item = items[static_cast<std::size_t>(device)];
        const CameraState state = cameraState(device, takenOver, now);
        if (item->data(StateColumn, Qt::UserRole) != state.kind) {
            item->setData(StateColumn, Qt::UserRole, state.kind);
            item->setIcon(StateColumn, stateIcon(state.kind));
        }
        setText(device, StateColumn, state.text);
        refreshDeliveries(device, now);
    }
}

/// Of a camera that is not open or not acquired from, nothing.
void CameraList::refreshDeliveries(int device, std::chrono::steady_clock::time_point now)
{
    const CameraRegistry& registry = CameraRegistry::instance();
    VNCORE_HANDLE camera = registry.openedHandle(device);
    Meter& meter = meters[static_cast<std::size_t>(device)];
    if (!registry.silentSince(camera)) {
        meter = {};
        for (const int column : {RateColumn, FramesColumn, MissingColumn})
            setText(device, column, {});
        return;
    }
    const Deliveries total = registry.deliveries(camera);
    const std::chrono::duration<double> passed = now - meter.since;
    if (meter.since != std::chrono::steady_clock::time_point() && passed < shortestMeterTime)
        return;
    if (meter.since != std::chrono::steady_clock::time_point()) {
        const auto perSecond = [&](quint64 count, double unit) {
            return std::round(static_cast<double>(count) / unit / passed.count() * 10.0) / 10.0;
        };
        setText(device, RateColumn, perSecond(total.bytes - meter.total.bytes, bytesPerMB));
        setText(device, FramesColumn, perSecond(total.images - meter.total.images, 1.0));
    }
    setText(device, MissingColumn, total.missing);
    meter = {now, total};
}

void CameraList::setText(int device, int column, const QVariant& text)
{
    QTreeWidgetItem* item = items[static_cast<std::size_t>(device)];
    if (text == item->data(column, Qt::DisplayRole))
        return;
    item->setData(column, Qt::DisplayRole, text); // numbers are sorted as such
    // A header that fits columns by itself measures all rows at every change.
    const int row = indexOfTopLevelItem(item);
    const int width = sizeHintForIndex(model()->index(row, column)).width();
    if (width > columnWidth(column)) {
        setColumnWidth(column, width);
        fitNameColumn();
    }
}

void CameraList::sortByNext()
{
    const int next = (header()->sortIndicatorSection() + 1) % columnCount();
    const bool number = next >= RateColumn && next <= MissingColumn; // of which the largest are looked for
    sortByColumn(next, number ? Qt::DescendingOrder : Qt::AscendingOrder);
}

/// Qt searches the column that was clicked.
void CameraList::keyboardSearch(const QString& typed)
{
    setCurrentItem(currentItem(), NameColumn);
    QTreeWidget::keyboardSearch(typed);
}

void CameraList::resizeEvent(QResizeEvent* event)
{
    QTreeWidget::resizeEvent(event);
    fitNameColumn();
}

/// It takes what the others leave, but never less than a part of a name needs.
void CameraList::fitNameColumn()
{
    const int others = header()->length() - header()->sectionSize(NameColumn);
    const int least = leastNameCharacters * fontMetrics().averageCharWidth();
    setColumnWidth(NameColumn, std::max(least, viewport()->width() - others));
}
