#include "drawing/dwg/trailing_sections.h"

#include <algorithm>
#include <cmath>

#include "drawing/dwg/bit_reader.h"
#include "drawing/dwg/bit_writer.h"
#include "drawing/dwg/checksum.h"
#include "drawing/error.h"

namespace drawing::dwg {

namespace {

constexpr std::size_t savesOffset = 7;

// In the order in which the second header has them.
constexpr Root secondHeaderRoots[] = {
    Root::BlockControl,          Root::LayerControl,          Root::StyleControl,    Root::LinetypeControl,
    Root::ViewControl,           Root::SystemControl,         Root::ViewportControl, Root::ApplicationControl,
    Root::DimensionStyleControl, Root::ViewportHeaderControl, Root::NamedObjects,    Root::MultilineStyleDictionary,
    Root::GroupDictionary,
};

void putNumberedHandle(BitWriter& writer, unsigned number, Handle handle)
{
    BitWriter bytes;
    bytes.handle({Reference::Own, handle});
    const std::string value = bytes.takeBytes().substr(1);
    writer.byte(static_cast<unsigned>(value.size()));
    writer.byte(number);
    writer.raw(value);
}

// Numbers at their places in a section that is mostly zero.
struct PlacedNumber
{
    std::size_t offset;
    std::size_t bytes;
    std::uint32_t value;
};

void putAt(std::string& section, const PlacedNumber& number)
{
    for (std::size_t i = 0; i < number.bytes; ++i) {
        section[number.offset + i] = static_cast<char>(number.value >> 8 * i & 0xFFu);
    }
}

struct DayAndTime
{
    std::uint32_t day;
    std::uint32_t milliseconds;
};

DayAndTime splitDate(double days)
{
    constexpr double dayMilliseconds = 86'400'000;
    constexpr double mostDays = 100'000'000;
    const double value = std::clamp(days, 0.0, mostDays);
    const auto day = static_cast<std::uint32_t>(value);
    return {day, static_cast<std::uint32_t>(std::lround((value - day) * dayMilliseconds))};
}

} // namespace

std::string writeSecondHeader(const FileHeader& header, const Roots& roots, Handle handleSeed, std::uint32_t address)
{
    constexpr std::size_t sizeBytes = 4;
    constexpr std::size_t ending = 10; // the checksum, and eight bytes of no known meaning
    BitWriter writer;
    writer.rawLong(0); // its own size, put in below
    writer.longNumber(static_cast<int>(address));
    writer.raw(releaseBytes());
    writer.shortNumber(static_cast<std::int16_t>(header.maintenance << 8 | header.writerVersion));
    writer.rawShort(static_cast<unsigned>(header.codePage));
    writer.shortNumber(sectionCount);
    for (std::size_t number = 0; number < header.sections.size(); ++number) {
        // The template is not told of here.
        const SectionPlace place = number == templateSection ? SectionPlace{} : header.sections[number];
        writer.byte(static_cast<unsigned>(number));
        writer.longNumber(static_cast<int>(place.address));
        writer.longNumber(static_cast<int>(place.size));
    }
    writer.shortNumber(static_cast<int>(std::size(secondHeaderRoots)) + 1);
    putNumberedHandle(writer, 0, handleSeed);
    unsigned number = 1;
    for (const Root each : secondHeaderRoots) {
        putNumberedHandle(writer, number++, roots[each]);
    }
    writer.fillByte();
    std::string content = writer.takeBytes();
    BitWriter size;
    size.rawLong(static_cast<std::uint32_t>(content.size() + ending));
    content.replace(0, sizeBytes, size.bytes());
    BitWriter tail;
    tail.rawShort(checksum(content));
    tail.raw(std::string(8, '\0'));
    return beginMark(Marked::SecondHeader) + content + tail.bytes() + endMark(Marked::SecondHeader);
}

// Of most numbers nobody knows the meaning; they are as the host itself writes them into a drawing of its own.
std::string writeAuxiliaryHeader(const AuxiliaryHeader& header)
{
    constexpr Handle largestSeed = 0x7FFFFFFF;
    const auto version = static_cast<std::uint32_t>(header.writerVersion);
    const auto maintenance = static_cast<std::uint32_t>(header.maintenance);
    const auto saves = static_cast<std::uint32_t>(header.saves);
    const auto seed = header.handleSeed <= largestSeed ? static_cast<std::uint32_t>(header.handleSeed) : 0xFFFFFFFFu;
    const DayAndTime created = splitDate(header.created);
    const DayAndTime updated = splitDate(header.updated);
    const PlacedNumber numbers[] = {
        {0, 3, 0x0177FF},
        {3, 2, version},
        {5, 2, maintenance},
        {savesOffset, 4, saves},
        {11, 4, 0xFFFFFFFF},
        {15, 2, saves},
        {23, 4, 0x002E0016},
        {27, 4, 0x002E0016},
        {31, 4, 0x05650004},
        {41, 2, 1},
        {56, 3, 0x010101},
        {59, 2, 1},
        {61, 2, 1},
        {63, 4, created.day},
        {67, 4, created.milliseconds},
        {71, 4, updated.day},
        {75, 4, updated.milliseconds},
        {79, 4, seed},
        {103, 4, saves},
    };
    std::string section(auxiliaryHeaderSize, '\0');
    for (const PlacedNumber& each : numbers) {
        putAt(section, each);
    }
    return section;
}

int readSaveCount(std::string_view section)
{
    if (section.size() < auxiliaryHeaderSize) {
        return 0;
    }
    BitReader reader(section.substr(savesOffset), "the auxiliary header");
    return static_cast<int>(reader.rawLong() & 0x7FFFFFFFu);
}

namespace {

enum PreviewKind
{
    previewHeader = 1,
    previewBitmap = 2,
};
constexpr std::size_t previewHeaderSize = 80;
constexpr std::size_t previewEntrySize = 9;

} // namespace

std::optional<std::string> readPreview(std::string_view file, std::uint32_t address)
{
    if (address == 0 || address >= file.size() || file.substr(address, markSize) != beginMark(Marked::Preview)) {
        return std::nullopt;
    }
    try {
        BitReader reader(file.substr(address + markSize), "the preview");
        reader.rawLong();
        const unsigned count = reader.byte();
        for (unsigned i = 0; i < count; ++i) {
            const unsigned kind = reader.byte();
            const std::uint32_t start = reader.rawLong();
            const std::uint32_t size = reader.rawLong();
            if (kind == previewBitmap && size > 0) {
                return std::string(bytesAt(file, {start, size}, "the preview"));
            }
        }
    } catch (const DrawingError&) {
        return std::nullopt;
    }
    return std::nullopt;
}

std::string writePreview(const std::optional<std::string>& bitmap, std::uint32_t address)
{
    BitWriter writer;
    if (!bitmap) {
        writer.rawLong(1);
        writer.byte(0);
        return beginMark(Marked::Preview) + writer.bytes() + endMark(Marked::Preview);
    }
    const std::size_t head = 1 + 2 * previewEntrySize;
    const auto size = static_cast<std::uint32_t>(bitmap->size());
    const auto start = static_cast<std::uint32_t>(address + markSize + 4 + head);
    writer.rawLong(static_cast<std::uint32_t>(head + previewHeaderSize + size));
    writer.byte(2);
    writer.byte(previewHeader);
    writer.rawLong(start);
    writer.rawLong(previewHeaderSize);
    writer.byte(previewBitmap);
    writer.rawLong(static_cast<std::uint32_t>(start + previewHeaderSize));
    writer.rawLong(size);
    writer.raw(std::string(previewHeaderSize, '\0'));
    writer.raw(*bitmap);
    return beginMark(Marked::Preview) + writer.bytes() + endMark(Marked::Preview);
}

int readMeasurement(std::string_view section)
{
    if (section.size() < 4) {
        return 0;
    }
    BitReader reader(section, "the template section");
    const unsigned description = reader.rawShort();
    if (reader.left() < (description + 2) * std::size_t(8)) {
        return 0;
    }
    reader.raw(description);
    return static_cast<int>(reader.rawShort());
}

std::string writeTemplate(int measurement)
{
    BitWriter writer;
    writer.rawShort(0);
    writer.rawShort(static_cast<unsigned>(measurement));
    return writer.takeBytes();
}

} // namespace drawing::dwg
