// SPDX-License-Identifier: GPL-3.0-or-later
// The plainest camera for tests of the host: a table of parameters and a queue of images that the test fills.
#ifndef KESTROVA_STUBDEVICE_H
#define KESTROVA_STUBDEVICE_H

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

#include <QtCore/QMap>
#include <QtCore/QVector>

#include "CameraDevice.h"

class StubDevice : public CameraDevice
{
public:
    explicit StubDevice(const QString& id = QStringLiteral("0")) : m_info{QStringLiteral("Stub"), id, {}} {}

    // --- the test's side ---
    QMap<QByteArray, int> parameters{{VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_MONO8}, {"gain", 1}, {"offset", 2}};
    QVector<QByteArray> written;       ///< names in the order of successful writes
    std::atomic<int> refusedValue{-1}; ///< no parameter takes this value
    std::atomic<bool> refuseStart{false};
    std::atomic<bool> refuseStop{false};
    std::atomic<bool> acquiring{false};
    std::atomic<int> waiters{0};

    /// Hands an image of these bytes to the next wait; without bytes its data is null.
    std::weak_ptr<const void> push(const QByteArray& bytes)
    {
        auto memory = std::make_shared<const QByteArray>(bytes);
        DeviceImage image;
        image.descriptor.frameNumber = ++m_frames;
        image.descriptor.dataBytes = static_cast<quint64>(bytes.size());
        image.descriptor.data = bytes.isEmpty() ? nullptr : memory->constData();
        image.memory = memory;
        const std::lock_guard lock(m_mutex);
        m_images.push_back(std::move(image));
        m_changed.notify_all();
        return memory;
    }

    void setLost(bool lost)
    {
        m_lost = lost;
        if (m_listener)
            m_listener(lost);
    }

    // --- CameraDevice ---
    SxCameraInfo info() const override { return m_info; }
    bool isLost() const override { return m_lost; }
    bool hasParameter(const char* name) const override { return parameters.contains(name); }
    void setLossListener(std::function<void(bool)> listener) override { m_listener = std::move(listener); }

    bool getInt(const char* name, int& value) override
    {
        const std::lock_guard lock(m_mutex);
        if (m_lost || !hasParameter(name))
            return false;
        value = parameters.value(name);
        return true;
    }

    bool setInt(const char* name, int value) override
    {
        const std::lock_guard lock(m_mutex);
        if (!canSet(name, value))
            return false;
        parameters[name] = value;
        written.append(name);
        return true;
    }

    bool canSet(const char* name, int value) override
    {
        return !m_lost && hasParameter(name) && value != refusedValue;
    }

    QList<CxCameraParam::SxEnumItem> enumeration(const char* name) const override
    {
        if (qstrcmp(name, VN_PRM_IMAGE_DATA_FORMAT) != 0)
            return {};
        return {{VN_FRM_MONO16, QStringLiteral("Mono 16")},
                {VN_FRM_MONO8, QStringLiteral("Mono 8")},
                {VN_FRM_TRANSPORT_DATA, QStringLiteral("Transport data")}};
    }

    bool start() override { return !refuseStart && !acquiring.exchange(true); }

    bool stop() override
    {
        if (refuseStop)
            return false;
        const std::lock_guard lock(m_mutex);
        acquiring = false;
        m_changed.notify_all();
        return true;
    }

    bool waitForImage(std::chrono::milliseconds limit, DeviceImage& image) override
    {
        std::unique_lock lock(m_mutex);
        ++waiters;
        m_changed.wait_for(lock, limit, [this] { return !acquiring || !m_images.empty(); });
        --waiters;
        if (!acquiring || m_images.empty())
            return false;
        image = std::move(m_images.front());
        m_images.pop_front();
        return true;
    }

private:
    const SxCameraInfo m_info;
    std::atomic<bool> m_lost{false};
    std::function<void(bool)> m_listener;
    quint32 m_frames = 0;

    std::mutex m_mutex; ///< guards parameters, written and m_images
    std::condition_variable m_changed;
    std::deque<DeviceImage> m_images;
};

#endif
