#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "imaging/codec.h"
#include "imaging/error.h"
#include "imaging/fax_decode.h"
#include "imaging/fax_encode.h"
#include "imaging/orientation.h"

// CALS raster, type 1: 16 header records of 128 characters, "key: value" padded with blanks, then the whole image as
// one group 4 stream.

namespace imaging {

namespace {

constexpr std::size_t recordLength = 128;
constexpr std::size_t recordCount = 16;
constexpr std::size_t headerLength = recordLength * recordCount;

std::string lowerCase(std::string_view text)
{
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    }
    return result;
}

// What stands behind a key. Records are found by their key, in any order; writers that don't keep to the record length
// are understood as well. Empty when the header has no such key.
std::string_view valueOf(std::string_view header, std::string_view key)
{
    std::size_t found = std::string_view::npos;
    for (std::size_t start = 0; start + key.size() <= header.size() && found == std::string_view::npos;
         start += recordLength) {
        if (header.substr(start, key.size()) == key)
            found = start;
    }
    if (found == std::string_view::npos)
        found = header.find(key);
    if (found == std::string_view::npos)
        return {};
    std::string_view value = header.substr(found + key.size(), recordLength - key.size());
    value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
    return value;
}

// The numbers of a value such as "002528,003300", as many as wanted; empty when there are fewer.
std::vector<std::uint32_t> numbersOf(std::string_view value, std::size_t wanted)
{
    std::vector<std::uint32_t> numbers;
    const char* at = value.data();
    const char* const end = value.data() + value.size();
    while (numbers.size() < wanted) {
        while (at != end && (*at == ' ' || (*at == ',' && !numbers.empty())))
            ++at;
        std::uint32_t number = 0;
        const auto [behind, error] = std::from_chars(at, end, number);
        if (error != std::errc())
            return {};
        numbers.push_back(number);
        at = behind;
    }
    return numbers;
}

// The pel path is the direction in which a row's pixels follow each other, the line progression that in which the rows
// do, relative to the pel path; both in degrees counter-clockwise, 0 pointing right.
Orientation orientationOf(std::string_view value)
{
    struct Row
    {
        std::uint32_t pelPath, lineProgression;
        Orientation orientation;
    };
    static constexpr Row rows[] = {
        {0, 270, Orientation::TopLeft},    {0, 90, Orientation::BottomLeft},   {180, 270, Orientation::BottomRight},
        {180, 90, Orientation::TopRight},  {90, 270, Orientation::LeftBottom}, {90, 90, Orientation::RightBottom},
        {270, 270, Orientation::RightTop}, {270, 90, Orientation::LeftTop},
    };
    if (value.empty())
        return Orientation::TopLeft;
    const std::vector<std::uint32_t> numbers = numbersOf(value, 2);
    for (const Row& row : rows) {
        if (numbers.size() == 2 && numbers[0] == row.pelPath && numbers[1] == row.lineProgression)
            return row.orientation;
    }
    throw ImagingError("The CALS file has an orientation that does not exist.");
}

struct Header
{
    Size stored;
    Resolution resolution;
    Orientation orientation;
};

Header readHeader(ByteSource& source)
{
    std::string text(headerLength, ' ');
    source.readExactly(0, text.data(), text.size());
    text = lowerCase(text);

    const std::vector<std::uint32_t> type = numbersOf(valueOf(text, "rtype:"), 1);
    if (!type.empty() && type[0] != 1)
        throw ImagingError("CALS files of type " + std::to_string(type[0]) + " are not read, only those of type 1.");
    const std::vector<std::uint32_t> size = numbersOf(valueOf(text, "rpelcnt:"), 2);
    if (size.empty())
        throw ImagingError("The CALS file does not tell its size.");
    const std::vector<std::uint32_t> density = numbersOf(valueOf(text, "rdensty:"), 1);
    const double dotsPerInch = density.empty() ? 0 : density[0];
    return {checkedImageSize(size[0], size[1]), tidyResolution(dotsPerInch, dotsPerInch),
            orientationOf(valueOf(text, "rorient:"))};
}

RasterInfo infoOf(const Header& header)
{
    RasterInfo info{header.stored, 1, header.resolution, Format::Cals};
    makeUpright(info, header.orientation);
    return info;
}

bool recognisesCals(std::span<const std::byte> head)
{
    static constexpr std::string_view firstKeys[] = {
        "srcdocid:", "dstdocid:", "txtfilid:", "figid:",   "srcgph:", "doccls:",
        "rtype:",    "rorient:",  "rpelcnt:",  "rdensty:", "notes:",  "version: mil-std-1840"};
    std::string text;
    for (const std::byte byte : head.first(std::min(head.size(), recordLength)))
        text.push_back(char(byte));
    text = lowerCase(text);
    return std::any_of(std::begin(firstKeys), std::end(firstKeys),
                       [&](std::string_view key) { return text.starts_with(key); });
}

RasterInfo inspectCals(ByteSource& source)
{
    return infoOf(readHeader(source));
}

Bitmap readPixels(ByteSource& source, Size size)
{
    // No row takes more than two bytes a pixel; what lies behind the image need not be loaded.
    const std::uint64_t mostBytes = (std::uint64_t(size.width) * 2 + 8) * std::uint64_t(size.height);
    FaxStream stream(std::min(source.size() - headerLength, mostBytes));
    source.readExactly(headerLength, stream.data(), stream.size());
    Bitmap bitmap = Bitmap::uninitialized(size);
    decodeFax(stream, FaxCoding::Group4, bitmap, 0, size.height, false);
    return bitmap;
}

RasterFile readCals(ByteSource& source)
{
    const Header header = readHeader(source);
    return {upright(readPixels(source, header.stored), header.orientation), infoOf(header)};
}

std::string headerText(Size size, Resolution resolution)
{
    constexpr long highestDensity = 9999; // four digits; 0 when it is not known
    char pixels[32];
    char density[16];
    std::snprintf(pixels, sizeof pixels, "%06d,%06d", size.width, size.height);
    std::snprintf(density, sizeof density, "%04ld",
                  std::clamp(std::lround(tidyResolution(resolution.x, resolution.y).x), 0L, highestDensity));
    const std::array<std::string, 11> records = {"srcdocid: NONE",
                                                 "dstdocid: NONE",
                                                 "txtfilid: NONE",
                                                 "figid: NONE",
                                                 "srcgph: NONE",
                                                 "doccls: NONE",
                                                 "rtype: 1",
                                                 "rorient: 000,270",
                                                 std::string("rpelcnt: ") + pixels,
                                                 std::string("rdensty: ") + density,
                                                 "notes: NONE"};
    std::string text;
    for (std::size_t i = 0; i < recordCount; ++i) {
        text += i < records.size() ? records[i] : "";
        text.resize((i + 1) * recordLength, ' ');
    }
    return text;
}

void writeCals(ByteSink& sink, const Bitmap& bitmap, Resolution resolution, Format)
{
    static_assert(Bitmap::maximumSide <= 999'999, "the header has six digits for a side");
    const std::string header = headerText(bitmap.size(), resolution);
    sink.append(header.data(), header.size());
    encodeGroup4(bitmap, 0, bitmap.height(), sink);
}

} // namespace

const RasterCodec calsCodec{recognisesCals, inspectCals, readCals, writeCals};

} // namespace imaging
