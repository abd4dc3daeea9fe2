// SPDX-License-Identifier: GPL-3.0-or-later
// The menu by which real cameras come into the viewer.
#ifndef KESTROVA_REALCAMERAS_H
#define KESTROVA_REALCAMERAS_H

#include <functional>
#include <vector>

#include <QtCore/QObject>
#include <QtCore/QStringList>

class EventLog;
class QMenu;
class QSettings;
class QThread;
class QWidget;
struct FoundCamera;

/// Searches, and opens by address, on threads of its own, since both take seconds. Addresses that have led to a camera
/// are kept and offered, not opened by themselves. User interface thread only.
class RealCameras : public QObject
{
    Q_OBJECT

public:
    /// Puts its entries into the menu; `window` is where its boxes appear.
    RealCameras(QMenu& menu, QWidget& window, EventLog& log);
    /// Waits for what is under way, a quarter of a minute at most.
    ~RealCameras() override;

    /// Opens the camera in the background; the event list tells how that ended.
    void add(const QString& address);

    /// Whether something is under way; settled() tells when it is not any more.
    bool isBusy() const { return underWay > 0; }

    void loadSettings(const QSettings& settings);
    void saveSettings(QSettings& settings) const;

Q_SIGNALS:
    void settled();

private:
    void askForAddress();
    void search();
    void offer(const std::vector<FoundCamera>& found);
    /// Does something that takes long, and then in this thread what comes of it.
    template<typename Work, typename Finish>
    void inBackground(Work work, Finish finish);

    QWidget& parentWindow;
    EventLog& eventLog;
    QStringList addresses; ///< the one used last first
    std::vector<QThread*> threads;
    int underWay = 0;
};

#endif
