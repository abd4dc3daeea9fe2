// SPDX-License-Identifier: GPL-3.0-or-later
// What all simulated cameras have in common: the model behind a lock, faults in host calls, loss and return. Its
// heirs supply the time and the wait for an image.
#ifndef KESTROVA_SIM_SIMULATEDCAMERA_H
#define KESTROVA_SIM_SIMULATEDCAMERA_H

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "CameraDevice.h"
#include "CameraModel.h"
#include "FrameRendering.h"
#include "LossNotifier.h"
#include "MonotonicCondition.h"

namespace sim {

/// A call of the host. `Wait` is the only one that lasts.
struct HostCall
{
    Call kind = Call::Get;
    QByteArray parameter; ///< of Get, Set and CanSet
    int value = 0;        ///< of Set and CanSet; the limit in ms of Wait
};

/// Owns the model and the memory of its frames. All operations may be called from any thread.
class SimulatedCamera : public CameraDevice
{
public:
    ~SimulatedCamera() override;

    SxCameraInfo info() const override;
    CameraLink link() const override;
    bool getInt(const char* name, int& value) override;
    bool setInt(const char* name, int value) override;
    bool canSet(const char* name, int value) override;
    bool hasParameter(const char* name) const override;
    QList<CxCameraParam::SxEnumItem> enumeration(const char* name) const override;
    bool start() override;
    bool stop() override;
    bool isLost() const override;
    void setLossListener(std::function<void(bool lost)> listener) override;

    // --- the truth about this camera, past faults and loss ---
    Ledger ledger() const;
    /// Everything that a parameter write can change, banks included: "test_pattern[1]",
    /// "dp_param_value[1/5/6]", "device_unit_register_value[1/55]". Without `selectors`, what a faultless
    /// measurement leaves as it was.
    QMap<QString, int> parameters(bool selectors = false) const;

    // --- faults ---
    Faults faults() const;
    /// Takes effect at once; the uses that refusals count start anew.
    void setFaults(const Faults& faults);
    void lose();
    void comeBack();

protected:
    /// `clock` tells the model time in ns and is called with `mutex` held. It is no virtual operation, as a drive's
    /// thread asks it until the heir is half destroyed.
    using Clock = std::function<qint64()>;
    SimulatedCamera(const CameraScenario& scenario, std::shared_ptr<SharedLink> link, size_t ledgerFrames,
                    Clock clock);
    /// Called at the start of every host call, without a lock; false makes it fail.
    virtual bool admit(const HostCall&) { return true; }

    /// Holds the lock, with everything up to now done. At the end tells the listener of losses and returns.
    class Turn
    {
    public:
        explicit Turn(const SimulatedCamera& owner);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        /// Tells the listener now, for who goes on; the lock is released meanwhile.
        void tell();

        std::unique_lock<std::mutex> lock;

    private:
        SimulatedCamera& camera;
    };

    enum class Acquisition
    {
        Idle,
        Running,
        Cut, ///< the camera was lost meanwhile; waits last until somebody stops or starts
    };

    void advanceLocked(qint64 nowNs);
    /// When something happens next without anybody's doing; none if nothing will.
    std::optional<qint64> nextEventLocked() const;
    bool refusedLocked(const HostCall& call);
    void setLostLocked(bool nowLost);
    void setFaultsLocked(const Faults& faults);
    /// Makes the data of a frame; without the lock.
    void handOut(const Frame& frame, const Faults& faults, DeviceImage& image);

    /// Guards all below. Neither the listener nor anything of the host is called while it is held; of locks only
    /// those of the link and of `notifier` are taken under it.
    mutable std::mutex mutex;
    MonotonicCondition changed; ///< a frame arrived, a wait is over, or the drive must look again
    CameraModel model;
    Acquisition acquisition = Acquisition::Idle;
    quint64 waitEpoch = 0; ///< a wait that began in an earlier one is over

    LossNotifier notifier; ///< has a lock of its own; told without `mutex`

private:
    const Clock nowLocked;
    struct Change
    {
        qint64 timeNs;
        bool lost;
    };

    bool lost = false;
    std::vector<Change> schedule; ///< losses and returns to come, the next one last
    std::vector<int> refusalUses; ///< by refusal of the faults
    FramePool pool;               ///< has a lock of its own
};

} // namespace sim

#endif
