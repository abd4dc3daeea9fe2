// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of one camera as objects, for user interfaces. User interface thread only.
#ifndef VNCORE_CXCAMERAPARAMETERS_H
#define VNCORE_CXCAMERAPARAMETERS_H

#include <QtCore/QList>
#include <QtCore/QString>

#include <vnCore/vnTypes.h>

/// An integer parameter's value.
class VNCORE_EXPORT CxValue
{
public:
    CxValue() = default;
    explicit CxValue(int value) : number(value) {}
    int toInt() const { return number; }

private:
    int number = 0;
};

/// Who a camera is. Texts as the camera gives them: nothing about their characters is promised.
struct SxCameraInfo
{
    QString name;     ///< model name
    QString id;       ///< serial number, unique
    QString customId; ///< the user's own name for it; may be empty
    /// What its throughput is measured by, such as "host arrival"; empty: the camera's own clock, and so of its link.
    QString timeSource{};
};

/// A camera's name where its throughput is shown or written.
inline QString withTimeSource(const QString& name, const SxCameraInfo& camera)
{
    return camera.timeSource.isEmpty() ? name : name + QLatin1String(" [") + camera.timeSource + QLatin1Char(']');
}

/// One parameter of a camera.
class VNCORE_EXPORT CxCameraParam
{
public:
    /// An entry of an enumeration.
    struct SxEnumItem
    {
        int value;
        QString text;
    };

    QString name;
    CxValue value;               ///< the camera's value when the parameter was looked up, or the one set since
    QList<SxEnumItem> enumItems; ///< empty for a plain number

    /// Sets the value that the next commit writes. False, and nothing changed, if an enumeration has no such value.
    bool setParamValue(const CxValue& newValue);
};

/// What endCommitBatch() refreshes.
enum ExCommitRefreshGuiMode
{
    CommitRefreshGuiNone = 0,
    CommitRefreshGuiChanged = 1,
};

/// The parameter set of one camera, owned by the host.
class VNCORE_EXPORT CxCameraParameters
{
public:
    virtual ~CxCameraParameters();

    /// The parameter, its value read again unless it is marked for the commit, or null when there is none. Owned by
    /// the set and valid as long as it is. `includeHidden` also finds parameters that no user interface shows.
    virtual CxCameraParam* findParam(const QString& name, bool includeHidden) = 0;

    virtual SxCameraInfo cameraInfo() const = 0;

    /// Marks the parameter for the commit.
    virtual void addParamCommitToBatch(const QString& name) = 0;

    /// Writes the marked parameters' values to the camera, in the order of marking, and empties the batch. False if
    /// the camera refused one; the others are written all the same.
    virtual bool endCommitBatch(ExCommitRefreshGuiMode mode) = 0;
};

#endif
