// Reads any bytes as a drawing in the host's binary form, and writes what was read in that form and as DXF. The
// checksums of a file can't be guessed, so the input is a seed for changes to a written file whose checksums are put
// right.

#include <cstddef>
#include <cstdint>
#include <string>

#include "drawing/drawing_file.h"
#include "drawing/dwg/checksum.h"

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

// The objects lie between the classes and the map, each with its length before it.
void repairObjects(std::string& file)
{
    const std::size_t map = numberAt(file, 0x2C, 4);
    for (std::size_t at = numberAt(file, 0x23, 4) + numberAt(file, 0x27, 4); at + 4 < map;) {
        const std::size_t end = at + 2 + numberAt(file, at, 2);
        if (end + 2 > map)
            return;
        putChecksum(file, at, end);
        at = end + 2;
    }
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
    readAndWrite({reinterpret_cast<const char*>(data), size});
    static const std::string whole = drawing::writeDrawingBytes(drawing::Document(), drawing::DrawingForm::Dwg);
    std::string changed = whole;
    const std::size_t begin = numberAt(whole, 0x23, 4) + numberAt(whole, 0x27, 4);
    const std::size_t room = numberAt(whole, 0x2C, 4) - begin;
    for (std::size_t i = 0; i + 3 <= size; i += 3)
        changed[begin + (data[i] | data[i + 1] << 8) % room] = static_cast<char>(data[i + 2]);
    repairObjects(changed);
    readAndWrite(changed);
    return 0;
}
