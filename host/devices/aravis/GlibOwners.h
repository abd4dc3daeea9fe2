// SPDX-License-Identifier: GPL-3.0-or-later
// Owners of what Aravis hands out.
#ifndef KESTROVA_ARAVIS_GLIBOWNERS_H
#define KESTROVA_ARAVIS_GLIBOWNERS_H

#include <memory>

#include <arv.h>

#include <QtCore/QString>

namespace aravis {

struct GobjectRelease
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// A reference to an object.
template<typename Object>
using Owned = std::unique_ptr<Object, GobjectRelease>;

/// Memory that the library has allocated; its elements belong to the library.
struct GlibFree
{
    void operator()(gconstpointer memory) const { g_free(const_cast<gpointer>(memory)); }
};

template<typename Element>
using OwnedArray = std::unique_ptr<Element[], GlibFree>;

/// The error of one call or more: out() goes into the call and forgets what an earlier one said.
class CallError
{
public:
    CallError() = default;
    ~CallError() { g_clear_error(&error); }
    CallError(const CallError&) = delete;
    CallError& operator=(const CallError&) = delete;

    GError** out()
    {
        g_clear_error(&error);
        return &error;
    }
    explicit operator bool() const { return error != nullptr; }
    bool is(ArvDeviceError code) const { return error && g_error_matches(error, ARV_DEVICE_ERROR, code); }
    QString text() const { return error ? QString::fromUtf8(error->message) : QString(); }

private:
    GError* error = nullptr;
};

} // namespace aravis

#endif
