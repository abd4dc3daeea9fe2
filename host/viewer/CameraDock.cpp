// SPDX-License-Identifier: GPL-3.0-or-later
// The list's surroundings.
#include "CameraDock.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <vnCore/CxCameraManager.h>
#include <vnCore/CxCameraParameters.h>

#include "CameraList.h"
#include "CameraNames.h"
#include "CameraRegistry.h"
#include "EventLog.h"
#include "TakeOvers.h"

namespace {

constexpr int statesIntervalMs = 1000; // silence is shown in seconds
const QLatin1String formatParameter(VN_PRM_IMAGE_DATA_FORMAT);

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
    list = new CameraList(takenOver);
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

    const auto addKey = [this](const QString& text, const QKeySequence& keys, auto&& act) {
        auto* action = new QAction(text, this);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, act);
        addAction(action);
    };
    addKey(tr("Open or close the camera"), QKeySequence::Open, [this] { openButton->click(); });
    addKey(tr("Start or stop its view"), Qt::CTRL + Qt::Key_L, [this] { viewButton->click(); });
    addKey(tr("Sort cameras by the next column"), Qt::CTRL + Qt::SHIFT + Qt::Key_S, [this] { list->sortByNext(); });

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
    connect(manager, &CxCameraManager::cameraOpened, list, &CameraList::selectNewest);
    auto* registry = &CameraRegistry::instance();
    connect(registry, &CameraRegistry::cameraLost, this, &CameraDock::refresh);
    connect(registry, &CameraRegistry::cameraReturned, this, &CameraDock::refresh);
    connect(registry, &CameraRegistry::devicesChanged, this, &CameraDock::refresh);
    connect(&takenOver, &TakeOvers::changed, this, &CameraDock::refresh);
    connect(&statesTimer, &QTimer::timeout, this, [this] { list->refreshStates(std::chrono::steady_clock::now()); });
    statesTimer.start(statesIntervalMs);
}

VNCORE_HANDLE CameraDock::selectedCamera() const
{
    return CameraRegistry::instance().openedHandle(list->selectedDevice());
}

void CameraDock::refresh()
{
    list->refresh();
    refreshControls();
}

void CameraDock::refreshControls()
{
    const CameraRegistry& registry = CameraRegistry::instance();
    VNCORE_HANDLE camera = selectedCamera();
    const bool mine = camera && !takenOver.isTakenOver(camera);
    openButton->setEnabled(list->currentItem() != nullptr);
    openButton->setText(camera ? tr("Clos&e") : tr("&Open"));
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
    const int device = list->selectedDevice();
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
    const int device = list->selectedDevice();
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
