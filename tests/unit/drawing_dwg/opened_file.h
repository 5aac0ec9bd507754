// Files of the binary form whose objects are written bit by bit, whole by their checksums.
#pragma once

#include <functional>
#include <map>

#include "drawing/dwg/bit_writer.h"
#include "drawing/dwg/checksum.h"
#include "drawing/dwg/file_header.h"
#include "drawing/dwg/object_map.h"
#include "drawing/dwg/trailing_sections.h"
#include "made_drawing.h"

namespace drawing::test {

using dwg::BitWriter;
using dwg::Reference;

/// A written file taken apart into its objects, and put together again with all checksums right.
class OpenedFile
{
public:
    explicit OpenedFile(const Document& document) : m_file(dwgOf(document)), m_header(dwg::readFileHeader(m_file))
    {
        for (const auto& place : dwg::readObjectMap(m_file, m_header.sections[2])) {
            objects[place.handle] = m_file.substr(place.address + 2, numberAt(m_file, place.address, 2));
        }
    }

    std::string closed()
    {
        const auto& classes = m_header.sections[1];
        std::string file = m_file.substr(0, classes.address + classes.size);
        std::vector<dwg::ObjectPlace> places;
        for (const auto& [handle, bits] : objects) {
            BitWriter writer;
            writer.modularShort(bits.size());
            writer.raw(bits);
            writer.rawShort(dwg::checksum(writer.bytes()));
            places.push_back({handle, file.size()});
            file += writer.bytes();
        }
        const std::string map = dwg::writeObjectMap(places);
        m_header.sections[2] = {static_cast<std::uint32_t>(file.size()), static_cast<std::uint32_t>(map.size())};
        file += map;
        m_header.sections[4] = {static_cast<std::uint32_t>(file.size()), 4};
        file += dwg::writeTemplate(1);
        return file.replace(0, dwg::fileHeaderSize, dwg::writeFileHeader(m_header));
    }

    std::map<Handle, std::string> objects;

private:
    std::string m_file;
    dwg::FileHeader m_header;
};

using Fields = std::function<void(BitWriter&)>;

/// The bits of an object: its head with extended data, what `fields` writes, and `handles`.
inline std::string objectBits(
    int type, Handle handle, const Fields& fields, const BitWriter& handles, const Fields& extended = [](BitWriter&) {})
{
    BitWriter bits;
    bits.shortNumber(type);
    const std::size_t sizePlace = bits.position();
    bits.rawLong(0);
    bits.handle({Reference::Own, handle});
    extended(bits);
    bits.shortNumber(0); // no more extended data
    fields(bits);
    bits.overwriteLong(sizePlace, static_cast<std::uint32_t>(bits.position()));
    bits.rawBits(handles.bytes(), handles.position());
    return bits.takeBytes();
}

/// An object that is no entity, with no owner and so many more handles of no object.
inline std::string plainBits(int type, Handle handle, const Fields& fields, std::size_t more = 0)
{
    BitWriter handles;
    handles.raw(std::string(2 + more, '\x40'));
    const auto all = [&](BitWriter& bits) {
        bits.longNumber(0); // no reactors
        fields(bits);
    };
    return objectBits(type, handle, all, handles);
}

/// An entity of the model space, with the handles of its neighbours.
inline std::string entityBits(int type, Handle handle, Handle layer, Handle before, Handle behind, const Fields& fields,
                              const std::vector<Handle>& more = {})
{
    BitWriter handles;
    handles.handle({Reference::HardOwner, 0});
    handles.handle({Reference::SoftPointer, before});
    handles.handle({Reference::SoftPointer, behind});
    handles.handle({Reference::HardPointer, layer});
    for (const Handle each : more) {
        handles.handle({Reference::SoftPointer, each});
    }
    const auto all = [&](BitWriter& bits) {
        bits.bit(false); // no picture
        bits.bits(2, 2); // of the model space
        bits.longNumber(0);
        bits.bit(false); // the neighbours are told
        bits.shortNumber(256);
        bits.real(1);
        bits.bits(0, 4); // linetype and plot style by layer
        bits.shortNumber(0);
        bits.byte(29); // line weight by layer
        fields(bits);
    };
    return objectBits(type, handle, all, handles);
}

inline void flatLine(BitWriter& bits)
{
    bits.bit(true);
    bits.rawReal(0);
    bits.realNear(1, 0);
    bits.rawReal(0);
    bits.realNear(1, 0);
    bits.bit(true);
    bits.bit(true);
}

} // namespace drawing::test
