// SPDX-License-Identifier: GPL-3.0-or-later
// Opening by address or by serial number, formats, start and stop.
#include "CameraConnection.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <mutex>
#include <thread>

#include <QtCore/QCoreApplication>

#include "CameraSearch.h"
#include "ImageStream.h"
#include "PacketTap.h"
#include "StreamSocket.h"

namespace aravis {

namespace {

/// The context of this file's texts in translations.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(CameraConnection)
};

using Callback = std::function<void()>;

constexpr std::chrono::seconds longestTelling{10}; ///< of a loss, to whoever listens

/// What is wrong, as a user can do something about it.
QString openFault(const CallError& fault)
{
    if (fault.is(ARV_DEVICE_ERROR_TIMEOUT) || fault.is(ARV_DEVICE_ERROR_NOT_FOUND))
        return Text::tr("no answer. Is the camera switched on, and is this its address?");
    if (fault.is(ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED) || fault.is(ARV_DEVICE_ERROR_NOT_CONTROLLER))
        return Text::tr("another program or computer has control of the camera");
    return Text::tr("refused: %1").arg(fault.text());
}

/// The library reads the description of one camera at a time: two at once spoil its tables.
std::mutex& reading()
{
    static std::mutex mutex;
    return mutex;
}

Owned<ArvDevice> openNetworkDevice(const std::string& address, QString* error)
{
    // The library takes an address that is not of this host for one that is, and crashes.
    const std::string local = localAddressTowards(address);
    if (local.empty()) {
        *error = Text::tr("there is no way to this address. Is the network interface up?");
        return nullptr;
    }
    if (!answers(address)) { // or others would wait for it too
        *error = Text::tr("no answer. Is the camera switched on, and is this its address?");
        return nullptr;
    }
    const Owned<GInetAddress> host(g_inet_address_new_from_string(local.c_str()));
    const Owned<GInetAddress> camera(g_inet_address_new_from_string(address.c_str()));
    CallError fault;
    const std::lock_guard<std::mutex> lock(reading());
    Owned<ArvDevice> device(arv_gv_device_new(host.get(), camera.get(), fault.out()));
    if (!device)
        *error = openFault(fault);
    return device;
}

Owned<ArvDevice> openDevice(const CameraAddress& address, QString* error)
{
    if (address.kind == CameraAddress::Kind::Network)
        return openNetworkDevice(address.text, error);
    const std::string found = addressOfSerial(address);
    if (found.empty()) {
        *error = Text::tr("no camera with this serial number answers");
        return nullptr;
    }
    if (address.kind == CameraAddress::Kind::NetworkSerial)
        return openNetworkDevice(found, error);
    CallError fault;
    const std::lock_guard<std::mutex> lock(reading());
    Owned<ArvDevice> device(arv_open_device(found.c_str(), fault.out()));
    if (!device)
        *error = openFault(fault);
    return device;
}

QString featureText(ArvCamera* camera, const char* name)
{
    CallError fault;
    if (!arv_camera_is_feature_available(camera, name, fault.out()) || fault)
        return {};
    return QString::fromUtf8(arv_camera_get_string(camera, name, fault.out()));
}

void callOnLost(ArvDevice* /*device*/, gpointer callback)
{
    (*static_cast<Callback*>(callback))();
}

void callOnFrame(void* callback, ArvStreamCallbackType type, ArvBuffer* /*buffer*/)
{
    if (type == ARV_STREAM_CALLBACK_TYPE_BUFFER_DONE)
        (*static_cast<Callback*>(callback))();
}

std::string textOf(GSocketAddress* address)
{
    const std::unique_ptr<gchar, GlibFree> text(
        g_inet_address_to_string(g_inet_socket_address_get_address(G_INET_SOCKET_ADDRESS(address))));
    return text.get();
}

void deleteCallback(gpointer callback)
{
    delete static_cast<Callback*>(callback);
}

} // namespace

std::unique_ptr<CameraConnection> CameraConnection::open(const CameraAddress& address, Callback onLost,
                                                         QString* error)
{
    const Owned<ArvDevice> device = openDevice(address, error);
    if (!device)
        return nullptr;
    if (ARV_IS_GV_DEVICE(device.get()) && !arv_gv_device_is_controller(ARV_GV_DEVICE(device.get()))) {
        *error = Text::tr("another program or computer has control of the camera");
        return nullptr;
    }
    CallError fault;
    Owned<ArvCamera> camera(arv_camera_new_with_device(device.get(), fault.out()));
    if (!camera) {
        *error = openFault(fault);
        return nullptr;
    }
    return std::unique_ptr<CameraConnection>(new CameraConnection(std::move(camera), std::move(onLost)));
}

CameraConnection::CameraConnection(Owned<ArvCamera> opened, Callback onLost)
    : camera(std::move(opened)), triggers(camera.get())
{
    arv_camera_set_range_check_policy(camera.get(), ARV_RANGE_CHECK_POLICY_ENABLE);
    arv_camera_set_access_check_policy(camera.get(), ARV_ACCESS_CHECK_POLICY_ENABLE);
    if (arv_camera_is_gv_device(camera.get())) {
        arv_camera_gv_set_stream_options(camera.get(), ARV_GV_STREAM_OPTION_PACKET_SOCKET_DISABLED);
        ArvGvDevice* const device = ARV_GV_DEVICE(arv_camera_get_device(camera.get()));
        way = Route{textOf(arv_gv_device_get_device_address(device)),
                    textOf(arv_gv_device_get_interface_address(device))};
    }
    lossHandler = g_signal_connect_data(
        arv_camera_get_device(camera.get()), "control-lost", G_CALLBACK(callOnLost), new Callback(std::move(onLost)),
        [](gpointer callback, GClosure* /*closure*/) { deleteCallback(callback); }, GConnectFlags(0));
    CallError fault;
    who.model = QString::fromUtf8(arv_camera_get_model_name(camera.get(), fault.out()));
    who.serial = QString::fromUtf8(arv_camera_get_device_serial_number(camera.get(), fault.out()));
    who.userId = featureText(camera.get(), "DeviceUserID");
}

/// The thread that tells a loss holds the device as long as it does. If it were the last one to let go, it would wait
/// for its own end.
CameraConnection::~CameraConnection()
{
    auto* const device = G_OBJECT(arv_camera_get_device(camera.get()));
    g_signal_handler_disconnect(device, lossHandler);
    const auto end = std::chrono::steady_clock::now() + longestTelling;
    while (g_atomic_int_get(&device->ref_count) > 1) {
        if (std::chrono::steady_clock::now() > end) {
            qWarning("%s cannot be given up, somebody still has it", qPrintable(who.model));
            [[maybe_unused]] ArvCamera* const abandoned = camera.release();
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

std::vector<CameraConnection::Format> CameraConnection::formats()
{
    guint count = 0;
    guint nameCount = 0;
    CallError fault;
    const OwnedArray<gint64> codes(arv_camera_dup_available_pixel_formats(camera.get(), &count, fault.out()));
    const OwnedArray<const char*> names(
        arv_camera_dup_available_pixel_formats_as_strings(camera.get(), &nameCount, fault.out()));
    std::vector<Format> formats;
    for (guint i = 0; i < std::min(count, nameCount); ++i)
        formats.push_back({static_cast<quint32>(codes[i]), QString::fromUtf8(names[i])});
    return formats;
}

quint32 CameraConnection::format()
{
    CallError fault;
    const quint32 code = arv_camera_get_pixel_format(camera.get(), fault.out());
    return fault ? 0 : code;
}

bool CameraConnection::setFormat(quint32 code)
{
    CallError fault;
    arv_camera_set_pixel_format(camera.get(), code, fault.out());
    return !fault;
}

int CameraConnection::requiredThroughput()
{
    const auto limit = linkLimit();
    if (limit)
        return static_cast<int>(std::ceil(*limit * 1e-6));
    const auto rateHz = frameRate();
    CallError fault;
    const double bytes = arv_camera_get_payload(camera.get(), fault.out());
    return fault || !rateHz ? 0 : static_cast<int>(std::ceil(*rateHz * bytes * 1e-6));
}

/// Bytes a second that the camera itself allows its link; none if it has no such limit.
std::optional<double> CameraConnection::linkLimit()
{
    CallError fault;
    const bool has = arv_camera_is_feature_available(camera.get(), "DeviceLinkThroughputLimit", fault.out());
    if (!has || featureText(camera.get(), "DeviceLinkThroughputLimitMode") != QLatin1String("On"))
        return std::nullopt;
    const gint64 limit = arv_camera_get_integer(camera.get(), "DeviceLinkThroughputLimit", fault.out());
    return fault || limit <= 0 ? std::nullopt : std::optional<double>(limit);
}

/// Frames a second: what comes of all settings, where the camera tells that, else what was asked for.
std::optional<double> CameraConnection::frameRate()
{
    CallError fault;
    for (const char* name : {"ResultingFrameRate", "AcquisitionResultingFrameRate", "ResultingFrameRateAbs"}) {
        if (!arv_camera_is_feature_available(camera.get(), name, fault.out()))
            continue;
        const double rateHz = arv_camera_get_float(camera.get(), name, fault.out());
        if (!fault)
            return rateHz;
    }
    const double rateHz = arv_camera_get_frame_rate(camera.get(), fault.out());
    return fault ? std::nullopt : std::optional<double>(rateHz);
}

std::unique_ptr<ImageStream> CameraConnection::start(const Callback& onNews, bool arrivals)
{
    CallError fault;
    const auto refuse = [&](const QString& why) {
        qCritical("%s: the acquisition does not start: %s", qPrintable(who.model), qPrintable(why));
        return nullptr;
    };
    const size_t payload = arv_camera_get_payload(camera.get(), fault.out());
    if (fault)
        return refuse(fault.text());
    Owned<ArvStream> stream(
        arv_camera_create_stream_full(camera.get(), callOnFrame, new Callback(onNews), deleteCallback, fault.out()));
    if (!stream || fault)
        return refuse(fault.text());
    std::unique_ptr<PacketTap> tap;
    StreamConditions known;
    if (ARV_IS_GV_STREAM(stream.get())) {
        ArvGvStream* const network = ARV_GV_STREAM(stream.get());
        known.socketLimitBytes = enlargeSocketBuffer(network, way->host, payload);
        const guint packet = arv_camera_gv_get_packet_size(camera.get(), fault.out());
        if (!fault)
            known.packetBytes = packet;
        QString why;
        // Without the right to capture it goes without, unless the times are what is asked for.
        tap = PacketTap::start({way->camera, way->host, arv_gv_stream_get_port(network)}, onNews,
                               dropProbe(network, way->host), &why);
        if (arrivals && !tap)
            return refuse(why);
    }
    auto images = std::make_unique<ImageStream>(std::move(stream), payload, std::move(tap), arrivals, known);
    arv_camera_set_acquisition_mode(camera.get(), ARV_ACQUISITION_MODE_CONTINUOUS, fault.out());
    arv_camera_start_acquisition(camera.get(), fault.out());
    if (fault)
        return refuse(fault.text());
    return images;
}

void CameraConnection::stop()
{
    CallError fault;
    arv_camera_stop_acquisition(camera.get(), fault.out());
    if (fault)
        qWarning("%s: the acquisition ends without the camera: %s", qPrintable(who.model), qPrintable(fault.text()));
}

} // namespace aravis
