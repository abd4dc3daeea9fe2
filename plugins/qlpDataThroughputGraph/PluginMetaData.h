// SPDX-License-Identifier: GPL-3.0-or-later
// Writes, at compile time, the metadata block by which Qt 5 knows a plug-in before it loads it: one object in Qt's
// binary JSON, version 1. Qt 5.15's own macro would write another format with other keys.
//
// All numbers are little endian and every part begins at a multiple of four. Offsets count from the object's start:
//
//     "QTMETADATA  "  "qbjs"  version 1
//     object: its size | number of keys << 1 | 1 | offset of the table
//             entries, in the order of their keys: value word, key (length, characters), the value's data
//             table of the entries' offsets
#ifndef KESTROVA_PLUGINMETADATA_H
#define KESTROVA_PLUGINMETADATA_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace metadata {

/// The object's keys come in ascending order, as Qt requires: IID, MetaData, className, debug, version.
struct PluginIdentity
{
    std::string_view iid;
    std::string_view className;
    bool debug;
    int qtVersion;
};

/// Makes the block in its constructor, only at compile time: what does not fit into the capacity does not compile.
template<std::size_t Capacity>
class Writer
{
public:
    constexpr explicit Writer(const PluginIdentity& plugin)
    {
        characters("QTMETADATA  ");
        characters("qbjs");
        word(1);
        object = size;
        word(0); // the size and the offset of the table are filled in at the end
        word(std::uint32_t(keyCount << 1 | 1));
        word(0);
        text("IID", plugin.iid);
        emptyObject("MetaData");
        text("className", plugin.className);
        entry("debug", Bool, plugin.debug);
        entry("version", Double | isInteger, std::uint32_t(plugin.qtVersion));
        put(object + 8, offset());
        for (const std::uint32_t position : table)
            word(position);
        put(object, offset());
    }

    std::array<unsigned char, Capacity> bytes{};
    std::size_t size = 0;

private:
    // The value word: type, how the value and the key are stored, and the value itself or its data's offset.
    enum : std::uint32_t
    {
        Bool = 1,
        Double = 2,
        String = 3,
        Object = 5,
        isLatin1 = 1 << 3,  ///< of a string
        isInteger = 1 << 3, ///< of a number
        latin1Key = 1 << 4,
    };
    static constexpr int valueShift = 5;
    static constexpr std::size_t keyCount = 5;

    constexpr void text(std::string_view key, std::string_view value)
    {
        entry(key, String | isLatin1, dataOffset(key));
        shortText(value);
    }

    constexpr void emptyObject(std::string_view key)
    {
        constexpr std::uint32_t headerSize = 12;
        entry(key, Object, dataOffset(key));
        word(headerSize);
        word(1);
        word(0); // no table
    }

    constexpr void entry(std::string_view key, std::uint32_t type, std::uint32_t value)
    {
        table[entries++] = offset();
        word(type | latin1Key | value << valueShift);
        shortText(key);
    }

    /// Where data will lie that follow an entry with this key.
    constexpr std::uint32_t dataOffset(std::string_view key) const
    {
        return offset() + 4 + std::uint32_t(2 + key.size() + 3) / 4 * 4;
    }

    constexpr std::uint32_t offset() const { return std::uint32_t(size - object); }

    constexpr void shortText(std::string_view text)
    {
        bytes[size++] = static_cast<unsigned char>(text.size());
        bytes[size++] = static_cast<unsigned char>(text.size() >> 8);
        characters(text);
        size = (size + 3) / 4 * 4;
    }

    constexpr void characters(std::string_view text)
    {
        for (const char character : text)
            bytes[size++] = static_cast<unsigned char>(character);
    }

    constexpr void word(std::uint32_t value)
    {
        put(size, value);
        size += 4;
    }

    constexpr void put(std::size_t position, std::uint32_t value)
    {
        for (int byte = 0; byte < 4; ++byte)
            bytes[position + std::size_t(byte)] = static_cast<unsigned char>(value >> 8 * byte);
    }

    std::array<std::uint32_t, keyCount> table{};
    std::size_t entries = 0;
    std::size_t object = 0;
};

} // namespace metadata

#endif
