#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "imaging/codec.h"
#include "imaging/error.h"
#include "imaging/row_bits.h"

// PCX: a header of 128 bytes, then the rows, each as its planes one behind the other, run-length coded as a rule. A
// byte with its two highest bits set is the length of a run, and the byte behind it what is repeated.

namespace imaging {

namespace {

constexpr std::size_t headerSize = 128;
constexpr std::uint8_t runMark = 0xC0;
constexpr std::uint8_t longestRun = 0x3F;
constexpr std::uint64_t largePaletteSize = 1 + 256 * 3; // with the mark in front of it, at the end of the file
constexpr std::uint8_t largePaletteMark = 0x0C;

using Luminances = std::vector<int>;

struct Layout
{
    Size size;
    Resolution resolution;
    int bitsPerSample = 0;
    int planes = 0;
    bool compressed = false;
    std::size_t bytesPerPlane = 0; // of one row
    Luminances palette;            // none for colours
    std::uint64_t end = 0;         // behind the last byte that can be pixels

    std::size_t bytesPerRow() const { return bytesPerPlane * std::size_t(planes); }
};

class Header
{
public:
    explicit Header(ByteSource& source) { source.readExactly(0, m_bytes.data(), m_bytes.size()); }

    int u8(std::size_t at) const { return m_bytes[at]; }
    int u16(std::size_t at) const { return u8(at) | u8(at + 1) << 8; }
    int version() const { return u8(1); }
    bool compressed() const { return u8(2) == 1; }
    int bitsPerSample() const { return u8(3); }
    int planes() const { return u8(65); }
    int bytesPerPlane() const { return u16(66); }
    bool grey() const { return u16(68) == 2; }
    Luminances palette() const
    {
        Luminances result;
        for (std::size_t at = 16; at < 64; at += 3)
            result.push_back(luminance(u8(at), u8(at + 1), u8(at + 2)));
        return result;
    }

private:
    std::array<std::uint8_t, headerSize> m_bytes{};
};

// The sixteen colours that such files had before they brought their own.
Luminances standardPalette()
{
    Luminances result;
    for (int i = 0; i < 16; ++i) {
        const int bright = i & 8 ? 85 : 0;
        const bool brown = i == 6;
        const auto channel = [&](int bit) { return (i & bit ? 170 : 0) + bright; };
        result.push_back(luminance(channel(4), brown ? 85 : channel(2), channel(1)));
    }
    return result;
}

// Versions without a palette of their own, and writers that leave it all of one colour, mean the standard colours; of
// two colours they mean that 1 is paper, which is what two equal entries say.
Luminances smallPalette(const Header& header, int colours)
{
    constexpr int withPalette = 2;
    constexpr int firstWithPaletteAgain = 4;
    Luminances palette = header.palette();
    palette.resize(std::size_t(colours));
    const bool own = header.version() == withPalette || header.version() >= firstWithPaletteAgain;
    const bool empty = std::all_of(palette.begin(), palette.end(), [&](int entry) { return entry == palette[0]; });
    if (colours == 2)
        return own ? palette : Luminances{0, 0};
    if (own && !empty)
        return palette;
    palette = standardPalette();
    palette.resize(std::size_t(colours));
    return palette;
}

// The palette of 256 colours at the end of the file; empty when there is none.
Luminances largePalette(ByteSource& source)
{
    if (source.size() < headerSize + largePaletteSize)
        return {};
    std::array<std::uint8_t, largePaletteSize> bytes{};
    source.readExactly(source.size() - largePaletteSize, bytes.data(), bytes.size());
    if (bytes[0] != largePaletteMark)
        return {};
    Luminances result;
    for (std::size_t at = 1; at < bytes.size(); at += 3)
        result.push_back(luminance(bytes[at], bytes[at + 1], bytes[at + 2]));
    return result;
}

Luminances greys()
{
    Luminances result(256);
    for (int i = 0; i < 256; ++i)
        result[std::size_t(i)] = luminance(i, i, i);
    return result;
}

Resolution resolutionOf(const Header& header)
{
    return tidyResolution(header.u16(12), header.u16(14));
}

// What the header alone tells.
Layout layoutOf(const Header& header)
{
    Layout layout;
    const int width = header.u16(8) - header.u16(4) + 1;
    const int height = header.u16(10) - header.u16(6) + 1;
    layout.size = checkedImageSize(std::uint64_t(std::max(width, 0)), std::uint64_t(std::max(height, 0)));
    layout.resolution = resolutionOf(header);
    layout.bitsPerSample = header.bitsPerSample();
    layout.planes = header.planes();
    layout.compressed = header.compressed();
    layout.bytesPerPlane = std::size_t(header.bytesPerPlane());
    const int bits = layout.bitsPerSample;
    const int planes = layout.planes;
    const bool known = (bits == 1 && planes >= 1 && planes <= 4) || (bits == 4 && planes == 1) ||
                       (bits == 8 && (planes == 1 || planes == 3));
    if (!known) {
        throw ImagingError("PCX images of " + std::to_string(planes) + " planes of " + std::to_string(bits) +
                           " bits are not read.");
    }
    if (layout.bytesPerPlane * 8 < std::size_t(layout.size.width) * std::size_t(bits))
        throw ImagingError("The PCX header is damaged: its rows are too short for the image.");
    return layout;
}

// With the palette, which may lie at the other end of the file.
Layout readLayout(ByteSource& source)
{
    constexpr int firstWithLargePalette = 5;
    const Header header(source);
    Layout layout = layoutOf(header);
    layout.end = source.size();
    const int depth = layout.bitsPerSample * layout.planes;
    if (depth <= 4) {
        layout.palette = smallPalette(header, 1 << depth);
    } else if (layout.planes == 1) {
        if (header.version() >= firstWithLargePalette)
            layout.palette = largePalette(source);
        if (!layout.palette.empty()) {
            layout.end -= largePaletteSize;
        } else if (header.version() >= firstWithLargePalette && !header.grey()) {
            throw ImagingError("The PCX image is cut off: its palette is missing.");
        } else {
            layout.palette = greys();
        }
    }
    return layout;
}

// The bytes of the rows, one row after the other. Runs that go on in the next row are continued there.
class RowReader
{
public:
    RowReader(ByteSource& source, const Layout& layout)
        : m_source(source), m_end(layout.end), m_compressed(layout.compressed), m_buffer(bufferSize)
    {}

    void read(std::vector<std::uint8_t>& row)
    {
        for (std::size_t at = 0; at < row.size();) {
            if (m_left == 0)
                startRun();
            const std::size_t count = std::min(m_left, row.size() - at);
            std::fill_n(row.begin() + std::ptrdiff_t(at), count, m_value);
            m_left -= count;
            at += count;
        }
    }

private:
    static constexpr std::size_t bufferSize = 1 << 16;

    std::uint8_t next()
    {
        if (m_at == m_filled) {
            if (m_position >= m_end)
                throw ImagingError("The PCX image is cut off.");
            m_filled = std::size_t(std::min<std::uint64_t>(bufferSize, m_end - m_position));
            m_source.readExactly(m_position, m_buffer.data(), m_filled);
            m_position += m_filled;
            m_at = 0;
        }
        return m_buffer[m_at++];
    }

    void startRun()
    {
        m_value = next();
        m_left = 1;
        if (m_compressed && m_value >= runMark) {
            m_left = m_value & longestRun; // 0, which some writers leave, stands for nothing
            m_value = next();
        }
    }

    ByteSource& m_source;
    std::uint64_t m_position = headerSize;
    std::uint64_t m_end;
    bool m_compressed;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_at = 0;
    std::size_t m_filled = 0;
    std::uint8_t m_value = 0;
    std::size_t m_left = 0;
};

using RowConverter = std::function<void(std::uint64_t* row, const std::uint8_t* pixels, int width)>;

RowConverter converterFor(const Layout& layout)
{
    const int bits = layout.bitsPerSample;
    const int planes = layout.planes;
    const std::size_t plane = layout.bytesPerPlane;
    if (bits == 1 && planes == 1) {
        return [inverted = !oneIsInk(layout.palette)](std::uint64_t* row, const std::uint8_t* pixels, int width) {
            wordsFromBytes(row, pixels, width, inverted);
        };
    }
    if (planes == 3 && bits == 8) {
        return [plane](std::uint64_t* row, const std::uint8_t* pixels, int width) {
            fillRow(row, width, [&](int x) { return isDark(pixels[x], pixels[plane + x], pixels[2 * plane + x]); });
        };
    }
    std::vector<bool> ink;
    for (const int entry : layout.palette)
        ink.push_back(entry < 127500);
    return [bits, planes, plane, ink = std::move(ink)](std::uint64_t* row, const std::uint8_t* pixels, int width) {
        fillRow(row, width, [&](int x) {
            std::size_t value = 0;
            const int shift = 8 - bits - x * bits % 8;
            for (int p = planes - 1; p >= 0; --p) {
                const int byte = pixels[std::size_t(p) * plane + std::size_t(x * bits / 8)];
                value = value << bits | std::size_t(byte >> shift & ((1 << bits) - 1));
            }
            return ink[value];
        });
    };
}

void refuseTooShortFile(const Layout& layout)
{
    constexpr std::uint64_t highestCompression = longestRun; // by runs of two bytes; a little more than there can be
    const std::uint64_t bytes = layout.bytesPerRow() * std::uint64_t(layout.size.height);
    if (bytes > layout.end * (layout.compressed ? highestCompression : 1))
        throw ImagingError("The PCX image is cut off.");
}

bool recognisesPcx(std::span<const std::byte> head)
{
    if (head.size() < headerSize)
        return false;
    const auto isOneOf = [&](std::size_t at, std::initializer_list<int> values) {
        return std::find(values.begin(), values.end(), std::to_integer<int>(head[at])) != values.end();
    };
    // Few marks, so that texts with a line end in front are kept out by the numbers that follow.
    return isOneOf(0, {0x0A}) && isOneOf(1, {0, 2, 3, 4, 5}) && isOneOf(2, {0, 1}) && isOneOf(3, {1, 2, 4, 8}) &&
           isOneOf(65, {1, 2, 3, 4});
}

RasterInfo infoOf(const Layout& layout)
{
    return {layout.size, layout.bitsPerSample * layout.planes, layout.resolution, Format::Pcx};
}

RasterInfo inspectPcx(ByteSource& source)
{
    return infoOf(layoutOf(Header(source)));
}

RasterFile readPcx(ByteSource& source)
{
    const Layout layout = readLayout(source);
    refuseTooShortFile(layout);
    const RowConverter convert = converterFor(layout);
    Bitmap bitmap = Bitmap::uninitialized(layout.size);
    RowReader rows(source, layout);
    std::vector<std::uint8_t> bytes(layout.bytesPerRow());
    for (int y = 0; y < bitmap.height(); ++y) {
        rows.read(bytes);
        convert(bitmap.row(y), bytes.data(), bitmap.width());
    }
    return {std::move(bitmap), infoOf(layout)};
}

std::array<std::uint8_t, headerSize> headerFor(Size size, Resolution resolution, std::size_t bytesPerPlane)
{
    std::array<std::uint8_t, headerSize> bytes{};
    const auto put16 = [&](std::size_t at, long value) {
        bytes[at] = std::uint8_t(value);
        bytes[at + 1] = std::uint8_t(value >> 8);
    };
    const auto dots = [](double value) { return std::clamp(std::lround(value), 0L, 0xFFFFL); };
    const Resolution tidy = tidyResolution(resolution.x, resolution.y);
    bytes[0] = 0x0A;
    bytes[1] = 5; // the version with a palette
    bytes[2] = 1;
    bytes[3] = 1;
    put16(8, size.width - 1);
    put16(10, size.height - 1);
    put16(12, dots(tidy.x));
    put16(14, dots(tidy.y));
    std::fill_n(bytes.begin() + 16 + 3, 3, std::uint8_t(0xFF)); // 0 is black and 1 white, as without a palette
    bytes[65] = 1;
    put16(66, long(bytesPerPlane));
    put16(68, 1);
    return bytes;
}

void appendRuns(std::vector<std::uint8_t>& out, std::span<const std::uint8_t> row)
{
    for (std::size_t at = 0; at < row.size();) {
        std::size_t count = 1;
        while (count < longestRun && at + count < row.size() && row[at + count] == row[at])
            ++count;
        if (count > 1 || row[at] >= runMark)
            out.push_back(std::uint8_t(runMark | count));
        out.push_back(row[at]);
        at += count;
    }
}

void writePcx(ByteSink& sink, const Bitmap& bitmap, Resolution resolution, Format)
{
    constexpr int longestSide = 0x10000;
    constexpr std::size_t worthWriting = 1 << 16;
    if (bitmap.width() > longestSide || bitmap.height() > longestSide)
        throw ImagingError("A PCX image has at most 65,536 pixels a side.");
    const std::size_t used = bytesPerRow(bitmap.width());
    std::vector<std::uint8_t> row(used + used % 2, 0xFF); // of an even length; paper at its end
    const auto header = headerFor(bitmap.size(), resolution, row.size());
    std::vector<std::uint8_t> out(header.begin(), header.end());
    for (int y = 0; y < bitmap.height(); ++y) {
        bytesFromWords(row.data(), bitmap.row(y), bitmap.width(), true);
        appendRuns(out, row);
        if (out.size() >= worthWriting || y + 1 == bitmap.height()) {
            sink.append(out.data(), out.size());
            out.clear();
        }
    }
}

} // namespace

const RasterCodec pcxCodec{recognisesPcx, inspectPcx, readPcx, writePcx};

} // namespace imaging
