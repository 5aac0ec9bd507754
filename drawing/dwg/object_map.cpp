#include "drawing/dwg/object_map.h"

#include "drawing/dwg/bit_reader.h"
#include "drawing/dwg/bit_writer.h"
#include "drawing/dwg/checksum.h"
#include "drawing/error.h"

namespace drawing::dwg {

namespace {

constexpr std::string_view what = "the map of the objects";
constexpr std::size_t sizeBytes = 2;
constexpr std::size_t checksumBytes = 2;
constexpr std::size_t largestPage = 2032; // with its size, without its checksum

// Sizes and checksums of pages alone begin with the highest byte.
unsigned bigEndianShort(BitReader& reader)
{
    const unsigned high = reader.byte();
    return high << 8 | reader.byte();
}

void putBigEndianShort(BitWriter& writer, unsigned value)
{
    writer.byte(value >> 8);
    writer.byte(value);
}

void readPage(std::string_view page, std::size_t fileSize, std::vector<ObjectPlace>& places)
{
    BitReader reader(page, what);
    Handle handle = 0;
    std::int64_t address = 0;
    while (reader.left() > 0) {
        const std::uint64_t step = reader.modularChar();
        const std::int64_t distance = reader.signedModularChar();
        const Handle before = places.empty() ? 0 : places.back().handle;
        if (step > highestHandleTaken - handle || handle + step <= before) {
            throw DrawingError("the map of the objects has handles out of order");
        }
        handle += step;
        address += distance;
        if (address < 0 || static_cast<std::uint64_t>(address) >= fileSize) {
            throw DrawingError("the map of the objects points outside the file");
        }
        places.push_back({handle, static_cast<std::size_t>(address)});
    }
}

} // namespace

std::vector<ObjectPlace> readObjectMap(std::string_view file, SectionPlace place)
{
    const std::string_view section = bytesAt(file, place, what);
    std::vector<ObjectPlace> places;
    std::size_t at = 0;
    while (true) {
        BitReader reader(section.substr(at), what);
        const std::size_t size = bigEndianShort(reader);
        if (size < sizeBytes || size + checksumBytes > section.size() - at) {
            throw DrawingError("the map of the objects is longer than its place");
        }
        reader.raw(size - sizeBytes);
        if (bigEndianShort(reader) != checksum(section.substr(at, size))) {
            throw DrawingError("the map of the objects is damaged: its checksum is another");
        }
        if (size == sizeBytes) {
            return places; // an empty page closes the map
        }
        readPage(section.substr(at + sizeBytes, size - sizeBytes), file.size(), places);
        at += size + checksumBytes;
    }
}

namespace {

void appendPage(std::string& section, const std::string& content)
{
    BitWriter page;
    putBigEndianShort(page, static_cast<unsigned>(content.size() + sizeBytes));
    page.raw(content);
    putBigEndianShort(page, checksum(page.bytes()));
    section += page.bytes();
}

} // namespace

// The steps start anew on each page.
std::string writeObjectMap(const std::vector<ObjectPlace>& places)
{
    constexpr std::size_t longestEntry = 20;
    std::string section;
    BitWriter content;
    ObjectPlace before;
    for (const ObjectPlace& each : places) {
        content.modularChar(each.handle - before.handle);
        content.signedModularChar(static_cast<std::int64_t>(each.address) - static_cast<std::int64_t>(before.address));
        before = each;
        if (content.bytes().size() + sizeBytes + longestEntry > largestPage) {
            appendPage(section, content.takeBytes());
            before = {};
        }
    }
    if (!content.bytes().empty()) {
        appendPage(section, content.takeBytes());
    }
    appendPage(section, "");
    return section;
}

} // namespace drawing::dwg
