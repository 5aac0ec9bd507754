#include "drawing/dwg/sections.h"

#include "drawing/dwg/bit_reader.h"
#include "drawing/dwg/bit_writer.h"
#include "drawing/dwg/checksum.h"
#include "drawing/error.h"

namespace drawing::dwg {

namespace {

constexpr std::size_t sizeBytes = 4;
constexpr std::size_t checksumBytes = 2;

constexpr unsigned char marks[][markSize] = {
    // The complement of the one that ends the file header.
    {0x6A, 0x5F, 0xB1, 0xD7, 0x66, 0x7D, 0xE5, 0x1A, 0xA1, 0xBE, 0x1F, 0xA0, 0x62, 0xC5, 0xB2, 0xFF},
    {0xCF, 0x7B, 0x1F, 0x23, 0xFD, 0xDE, 0x38, 0xA9, 0x5F, 0x7C, 0x68, 0xB8, 0x4E, 0x6D, 0x33, 0x5F},
    {0x8D, 0xA1, 0xC4, 0xB8, 0xC4, 0xA9, 0xF8, 0xC5, 0xC0, 0xDC, 0xF4, 0x5F, 0xE7, 0xCF, 0xB6, 0x8A},
    {0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28, 0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B},
    {0xD4, 0x7B, 0x21, 0xCE, 0x28, 0x93, 0x9F, 0xBF, 0x53, 0x24, 0x40, 0x09, 0x12, 0x3C, 0xAA, 0x01},
};

} // namespace

std::string beginMark(Marked what)
{
    std::string mark;
    for (const unsigned char each : marks[static_cast<std::size_t>(what)]) {
        mark += static_cast<char>(each);
    }
    return mark;
}

std::string endMark(Marked what)
{
    std::string mark;
    for (const unsigned char each : marks[static_cast<std::size_t>(what)]) {
        mark += static_cast<char>(~each);
    }
    return mark;
}

std::string_view bytesAt(std::string_view file, SectionPlace place, std::string_view what)
{
    if (place.address > file.size() || place.size > file.size() - place.address) {
        throw DrawingError(std::string(what) + " lies outside the file");
    }
    return file.substr(place.address, place.size);
}

std::string_view markedContent(std::string_view bytes, SectionPlace place, Marked marked, std::string_view what)
{
    const std::string_view section = bytesAt(bytes, place, what);
    constexpr std::size_t frame = 2 * markSize + sizeBytes + checksumBytes;
    if (section.size() < frame || section.substr(0, markSize) != beginMark(marked)) {
        throw DrawingError(std::string(what) + " is not where the file says");
    }
    BitReader sizes(section.substr(markSize, sizeBytes), what);
    const std::size_t size = sizes.rawLong();
    if (size > section.size() - frame) {
        throw DrawingError(std::string(what) + " is longer than its place");
    }
    BitReader sum(section.substr(markSize + sizeBytes + size, checksumBytes), what);
    if (sum.rawShort() != checksum(section.substr(markSize, sizeBytes + size))) {
        throw DrawingError(std::string(what) + " is damaged: its checksum is another");
    }
    if (section.substr(markSize + sizeBytes + size + checksumBytes, markSize) != endMark(marked)) {
        throw DrawingError(std::string(what) + " has no end");
    }
    return section.substr(markSize + sizeBytes, size);
}

std::string markedSection(std::string_view content, Marked marked)
{
    BitWriter bytes;
    bytes.rawLong(static_cast<std::uint32_t>(content.size()));
    bytes.raw(content);
    bytes.rawShort(checksum(bytes.bytes()));
    return beginMark(marked) + bytes.bytes() + endMark(marked);
}

} // namespace drawing::dwg
