// SPDX-License-Identifier: GPL-3.0-or-later
// The camera list and its controls.
#include "CameraDock.h"

#include <algorithm>
#include <cmath>

#include <QtGui/QTextDocument>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

#include <vnCore/CxCameraManager.h>
#include <vnCore/CxCameraParameters.h>

#include "CameraNames.h"
#include "CameraRegistry.h"
#include "CameraState.h"
#include "EventLog.h"
#include "PlainText.h"
#include "TakeOvers.h"

namespace {

/// Of the camera list.
enum Column
{
    NameColumn,
    IdColumn,
    StateColumn,
    RateColumn, ///< MB/s
    FramesColumn,
    MissingColumn
};

constexpr int statesIntervalMs = 1000; // silence is shown in seconds
constexpr std::chrono::milliseconds shortestMeterTime{900};
constexpr double bytesPerMB = 1e6;

const QLatin1String formatParameter(VN_PRM_IMAGE_DATA_FORMAT);

/// Tool tips take for markup what looks like it.
QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace

CameraDock::CameraDock(const TakeOvers& takeOvers, EventLog& log, QWidget* parent)
    : QDockWidget(tr("Cameras"), parent), takenOver(takeOvers), eventLog(log)
{
    setObjectName(QStringLiteral("dockCameras"));
    buildWidgets();
    connectToCameras();
    refresh();
}

void CameraDock::buildWidgets()
{
    list = new QTreeWidget;
    list->setHeaderLabels({tr("Camera"), tr("Id"), tr("State"), tr("MB/s"), tr("Frames/s"), tr("Missing")});
    list->headerItem()->setToolTip(RateColumn, tr("What the camera delivers, to the view or to a plug-in"));
    list->headerItem()->setToolTip(MissingColumn, tr("Frames that did not arrive since the camera was opened"));
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAccessibleName(tr("Cameras"));
    list->setToolTip(tr("The cameras of this machine; the selected one is shown in the middle.\n"
                        "Enter or a double click opens a camera, typing searches for its name,\n"
                        "a click on a heading sorts."));
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    for (int column = IdColumn; column <= MissingColumn; ++column)
        list->resizeColumnToContents(column);   // the header's text; contents make it wider
    list->sortByColumn(-1, Qt::AscendingOrder); // in the registry's order until a heading is clicked
    list->setSortingEnabled(true);
    connect(list, &QTreeWidget::currentItemChanged, this, &CameraDock::refreshControls);
    connect(list, &QTreeWidget::itemActivated, this, [this] {
        if (selectedCamera() == nullptr)
            openOrClose();
    });

    openButton = new QPushButton;
    openButton->setObjectName(QStringLiteral("btnOpenCamera"));
    openButton->setToolTip(tr("Open or close the selected camera; closing ends a measurement with it"));
    connect(openButton, &QPushButton::clicked, this, &CameraDock::openOrClose);

    viewButton = new QPushButton;
    viewButton->setObjectName(QStringLiteral("btnViewCamera"));
    viewButton->setToolTip(tr("Start or stop showing live images of the selected camera"));
    connect(viewButton, &QPushButton::clicked, this, &CameraDock::startOrStopView);

    formatBox = new QComboBox;
    formatBox->setObjectName(QStringLiteral("boxCameraFormat"));
    formatBox->setToolTip(tr("The image format of the selected camera"));
    formatBox->setAccessibleName(tr("Image format"));
    connect(formatBox, QOverload<int>::of(&QComboBox::activated), this, &CameraDock::applyFormat);
    auto* formatLabel = new QLabel(tr("Fo&rmat:"));
    formatLabel->setBuddy(formatBox);

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(list);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(openButton);
    buttons->addWidget(viewButton);
    layout->addLayout(buttons);
    auto* format = new QHBoxLayout;
    format->addWidget(formatLabel);
    format->addWidget(formatBox, 1);
    layout->addLayout(format);
    setWidget(content);
}

void CameraDock::connectToCameras()
{
    auto* manager = CxCameraManager::instance();
    for (const auto signal :
         {&CxCameraManager::cameraOpened, &CxCameraManager::cameraClosed, &CxCameraManager::acquisitionStarted,
          &CxCameraManager::acquisitionFinished, &CxCameraManager::imageFormatChanged}) {
        connect(manager, signal, this, &CameraDock::refresh);
    }
    auto* registry = &CameraRegistry::instance();
    connect(registry, &CameraRegistry::cameraLost, this, &CameraDock::refresh);
    connect(registry, &CameraRegistry::cameraReturned, this, &CameraDock::refresh);
    connect(registry, &CameraRegistry::devicesChanged, this, &CameraDock::refresh);
    connect(&takenOver, &TakeOvers::changed, this, &CameraDock::refresh);
    connect(&statesTimer, &QTimer::timeout, this, [this] { refreshStates(std::chrono::steady_clock::now()); });
    statesTimer.start(statesIntervalMs);
}

int CameraDock::selectedDevice() const
{
    const auto found = std::find(items.begin(), items.end(), list->currentItem());
    return found != items.end() ? static_cast<int>(found - items.begin()) : -1;
}

VNCORE_HANDLE CameraDock::selectedCamera() const
{
    return CameraRegistry::instance().openedHandle(selectedDevice());
}

void CameraDock::refresh()
{
    refreshList();
    refreshControls();
}

void CameraDock::refreshList()
{
    const CameraRegistry& registry = CameraRegistry::instance();
    const int devices = registry.deviceCount();
    while (list->topLevelItemCount() > devices) {
        delete items.back(); // which leaves the list
        items.pop_back();
    }
    while (list->topLevelItemCount() < devices) {
        items.push_back(new QTreeWidgetItem(list));
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
    if (!list->currentItem() && devices > 0)
        list->setCurrentItem(items.front());
}

void CameraDock::refreshStates(std::chrono::steady_clock::time_point now)
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
void CameraDock::refreshDeliveries(int device, std::chrono::steady_clock::time_point now)
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

void CameraDock::setText(int device, int column, const QVariant& text)
{
    QTreeWidgetItem* item = items[static_cast<std::size_t>(device)];
    if (text == item->data(column, Qt::DisplayRole))
        return;
    item->setData(column, Qt::DisplayRole, text); // numbers are sorted as such
    // A header that fits columns by itself measures all rows at every change.
    const int row = list->indexOfTopLevelItem(item);
    const int width = list->sizeHintForIndex(list->model()->index(row, column)).width();
    list->setColumnWidth(column, std::max(width, list->columnWidth(column)));
}

void CameraDock::refreshControls()
{
    const CameraRegistry& registry = CameraRegistry::instance();
    VNCORE_HANDLE camera = selectedCamera();
    const bool mine = camera && !takenOver.isTakenOver(camera);
    openButton->setEnabled(list->currentItem() != nullptr);
    openButton->setText(camera ? tr("&Close") : tr("&Open"));
    viewButton->setEnabled(mine);
    viewButton->setText(registry.isHostAcquiring(camera) ? tr("&Stop view") : tr("&Start view"));
    formatBox->setEnabled(mine);
    refreshFormats(camera);
    if (camera != announced) {
        announced = camera;
        Q_EMIT selectedCameraChanged(camera);
    }
}

void CameraDock::refreshFormats(VNCORE_HANDLE camera)
{
    CxCameraParameters* parameters = CxCameraManager::instance()->cameraParameters(camera);
    const CxCameraParam* format = parameters ? parameters->findParam(formatParameter, false) : nullptr;
    formatBox->clear();
    if (format) {
        for (const auto& item : format->enumItems)
            formatBox->addItem(item.text, item.value);
        formatBox->setCurrentIndex(formatBox->findData(format->value.toInt()));
    }
}

void CameraDock::openOrClose()
{
    CameraRegistry& registry = CameraRegistry::instance();
    const int device = selectedDevice();
    if (VNCORE_HANDLE camera = registry.openedHandle(device)) {
        registry.close(camera);
    } else if (!registry.open(device)) {
        eventLog.append(EventLog::Severity::Warning,
                        tr("%1 could not be opened").arg(cameraDisplayName(registry.deviceInfo(device))));
    }
    refresh();
}

void CameraDock::startOrStopView()
{
    CameraRegistry& registry = CameraRegistry::instance();
    const int device = selectedDevice();
    VNCORE_HANDLE camera = registry.openedHandle(device);
    if (registry.isHostAcquiring(camera)) {
        registry.stopHostAcquisition(camera);
    } else if (!registry.startHostAcquisition(camera)) {
        eventLog.append(EventLog::Severity::Warning,
                        tr("%1 could not be started").arg(cameraDisplayName(registry.deviceInfo(device))));
    }
    refresh();
}

void CameraDock::applyFormat()
{
    CxCameraParameters* parameters = CxCameraManager::instance()->cameraParameters(selectedCamera());
    CxCameraParam* format = parameters ? parameters->findParam(formatParameter, false) : nullptr;
    if (!format)
        return;
    bool applied = format->setParamValue(CxValue(formatBox->currentData().toInt()));
    if (applied) {
        parameters->addParamCommitToBatch(formatParameter);
        applied = parameters->endCommitBatch(CommitRefreshGuiChanged);
    }
    if (!applied) {
        eventLog.append(EventLog::Severity::Warning,
                        tr("%1 refused the format %2")
                            .arg(cameraDisplayName(parameters->cameraInfo()), formatBox->currentText()));
        refreshControls();
    }
}
