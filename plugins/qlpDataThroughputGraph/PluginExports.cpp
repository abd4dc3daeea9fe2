// SPDX-License-Identifier: GPL-3.0-or-later
// The two functions that the module exports, and its metadata block.
#include <new>

#include <QtCore/QPointer>
#include <QtCore/QtPlugin>

#include "DataThroughputGraphPlugin.h"
#include "PluginMetaData.h"

namespace {

constexpr metadata::PluginIdentity identity{"example.kestrova.Kestrova.CxDataThroughputGraphPlugin",
                                            "CxDataThroughputGraphPlugin", false, 0x050601};

/// As long as the block is: the writer fills it once to measure it.
constexpr std::size_t blockSize = metadata::Writer<1024>(identity).size;

} // namespace

// Qt finds the block by its section without loading the module.
QT_PLUGIN_METADATA_SECTION
static constexpr auto block = metadata::Writer<blockSize>(identity).bytes;

extern "C" Q_DECL_EXPORT const char* qt_plugin_query_metadata()
{
    return reinterpret_cast<const char*>(block.data());
}

extern "C" Q_DECL_EXPORT QObject* qt_plugin_instance()
{
    static QPointer<QObject> instance;
    try {
        if (!instance)
            instance = new CxDataThroughputGraphPlugin;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    return instance;
}
