// Reads any bytes as a drawing in the host's binary form, and writes what was read in that form and as DXF. Checksums
// can't be guessed: those of an input that begins as such a file are put right before, and any other input is a seed
// for changes to a written file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "drawing/drawing_file.h"
#include "drawing/dwg/checksum.h"
#include "drawing/dwg/file_header.h"

namespace {

std::size_t numberAt(const std::string& bytes, std::size_t place, std::size_t size)
{
    std::size_t value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[place + i]);
    return value;
}

void putChecksum(std::string& file, std::size_t begin, std::size_t end)
{
    const unsigned sum = drawing::dwg::checksum(std::string_view(file).substr(begin, end - begin));
    file[end] = static_cast<char>(sum);
    file[end + 1] = static_cast<char>(sum >> 8);
}

bool lies(const std::string& file, std::size_t begin, std::size_t size)
{
    return begin <= file.size() && size <= file.size() - begin && size >= 2;
}

// Behind the classes, and four bytes of no other meaning.
std::size_t beginOfObjects(const std::string& file)
{
    return numberAt(file, 0x23, 4) + numberAt(file, 0x27, 4) + 4;
}

// The objects lie before the map, each with its length before it.
void repairObjects(std::string& file)
{
    const std::size_t map = std::min(numberAt(file, 0x2C, 4), file.size());
    for (std::size_t at = beginOfObjects(file); at + 4 < map;) {
        const std::size_t end = at + 2 + numberAt(file, at, 2);
        if (end + 2 > map)
            return;
        putChecksum(file, at, end);
        at = end + 2;
    }
}

// Pages with their size before them, the highest byte first, as it is of their checksums.
void repairMap(std::string& file)
{
    for (std::size_t at = numberAt(file, 0x2C, 4); lies(file, at, 4);) {
        const std::size_t size = numberAt(file, at, 1) << 8 | numberAt(file, at + 1, 1);
        if (!lies(file, at, size + 2))
            return;
        putChecksum(file, at, at + size);
        std::swap(file[at + size], file[at + size + 1]);
        at += size + 2;
    }
}

// A part between marks of 16 bytes, with its checksum before the second.
void repairMarked(std::string& file, std::size_t record)
{
    const std::size_t begin = numberAt(file, record + 1, 4);
    const std::size_t size = numberAt(file, record + 5, 4);
    if (size >= 38 && lies(file, begin, size))
        putChecksum(file, begin + 16, begin + size - 18);
}

void repair(std::string& file)
{
    repairMarked(file, 0x19);
    repairMarked(file, 0x22);
    repairObjects(file);
    repairMap(file);
    putChecksum(file, 0, 0x4F);
}

void readAndWrite(std::string_view bytes)
{
    try {
        const auto document = drawing::readDrawingBytes(bytes);
        drawing::writeDrawingBytes(document, drawing::DrawingForm::Dwg);
        drawing::writeDxf(document);
    } catch (const drawing::DrawingError&) {
        // Refused in words, as it should be.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    readAndWrite(bytes);
    constexpr std::size_t headerSize = 0x61;
    if (size > headerSize && drawing::dwg::isDwg(bytes)) {
        std::string repaired(bytes);
        repair(repaired);
        readAndWrite(repaired);
        return 0;
    }
    static const std::string whole = drawing::writeDrawingBytes(drawing::Document(), drawing::DrawingForm::Dwg);
    std::string changed = whole;
    const std::size_t begin = beginOfObjects(whole);
    const std::size_t room = numberAt(whole, 0x2C, 4) - begin;
    for (std::size_t i = 0; i + 3 <= size; i += 3)
        changed[begin + (data[i] | data[i + 1] << 8) % room] = static_cast<char>(data[i + 2]);
    repair(changed);
    readAndWrite(changed);
    return 0;
}
