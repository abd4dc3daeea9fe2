// SPDX-License-Identifier: GPL-3.0-or-later
// Boxes that ask, threads that do it.
#include "RealCameras.h"

#include <memory>

#include <QtCore/QSettings>
#include <QtCore/QThread>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>

#include "CameraNames.h"
#include "CameraRegistry.h"
#include "DeviceFamilies.h"
#include "EventLog.h"

namespace {

constexpr int mostAddresses = 20;
const QLatin1String addressesKey("cameraAddresses");

} // namespace

RealCameras::RealCameras(QMenu& menu, QWidget& window, EventLog& log) : parentWindow(window), eventLog(log)
{
    menu.addAction(tr("&Search..."), this, &RealCameras::search, Qt::CTRL + Qt::Key_F);
    menu.addAction(tr("&Add by address..."), this, &RealCameras::askForAddress, Qt::CTRL + Qt::Key_N);
}

RealCameras::~RealCameras()
{
    for (QThread* thread : threads)
        thread->wait();
}

template<typename Work, typename Finish>
void RealCameras::inBackground(Work work, Finish finish)
{
    QThread* thread = QThread::create([this, work, finish] {
        auto result = std::make_shared<decltype(work())>(work());
        const auto end = [this, result, finish] {
            finish(*result);
            if (--underWay == 0)
                Q_EMIT settled();
        };
        QMetaObject::invokeMethod(this, end, Qt::QueuedConnection);
    });
    ++underWay;
    thread->setParent(this);
    threads.push_back(thread);
    thread->start();
}

void RealCameras::add(const QString& address)
{
    struct Opened
    {
        std::shared_ptr<CameraDevice> device;
        QString error;
    };
    eventLog.append(EventLog::Severity::Information, tr("Connecting to %1").arg(address));
    const auto open = [address] {
        Opened opened;
        opened.device = openDevice(address, &opened.error);
        return opened;
    };
    inBackground(open, [this, address](const Opened& opened) {
        if (!opened.device) {
            eventLog.append(EventLog::Severity::Critical, opened.error);
            return;
        }
        CameraRegistry& registry = CameraRegistry::instance();
        registry.open(registry.addDevice(opened.device));
        addresses.removeAll(address);
        addresses.prepend(address);
        addresses = addresses.mid(0, mostAddresses);
    });
}

void RealCameras::askForAddress()
{
    bool accepted = false;
    const QString text = QInputDialog::getItem(
        &parentWindow, tr("Add a camera"),
        tr("Address, such as gev:192.168.0.5 (GigE Vision) or usb:SERIAL (USB3 Vision):"),
        addresses.isEmpty() ? QStringList(QStringLiteral("gev:")) : addresses, 0, true, &accepted);
    const QString address = text.trimmed();
    if (accepted && !address.isEmpty())
        add(isDeviceAddress(address) ? address : QStringLiteral("gev:") + address);
}

void RealCameras::search()
{
    struct Answer
    {
        std::vector<FoundCamera> cameras;
        QString error;
    };
    eventLog.append(EventLog::Severity::Information, tr("Searching for cameras on all networks and the USB"));
    const auto ask = [] {
        Answer answer;
        answer.cameras = searchDevices(&answer.error);
        return answer;
    };
    inBackground(ask, [this](const Answer& answer) {
        if (answer.error.isEmpty())
            offer(answer.cameras);
        else
            eventLog.append(EventLog::Severity::Critical, answer.error);
    });
}

void RealCameras::offer(const std::vector<FoundCamera>& found)
{
    QStringList lines;
    for (const FoundCamera& camera : found)
        lines.append(singleLine(QStringLiteral("%1  %2 (%3)").arg(camera.address, camera.name, camera.serial)));
    if (lines.isEmpty()) {
        QMessageBox::information(&parentWindow, tr("Search"), tr("No camera answers."));
        return;
    }
    bool accepted = false;
    const QString line = QInputDialog::getItem(&parentWindow, tr("Search"), tr("These cameras answer. Open one:"),
                                               lines, 0, false, &accepted);
    if (accepted)
        add(found[size_t(lines.indexOf(line))].address);
}

void RealCameras::loadSettings(const QSettings& settings)
{
    addresses = settings.value(addressesKey).toStringList();
}

void RealCameras::saveSettings(QSettings& settings) const
{
    settings.setValue(addressesKey, addresses);
}
