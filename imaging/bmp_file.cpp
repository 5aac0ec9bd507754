#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <vector>

#include "imaging/codec.h"
#include "imaging/dib.h"
#include "imaging/error.h"
#include "imaging/row_bits.h"

// BMP files and the device-independent bitmaps (DIB) that they hold behind their file header.

namespace imaging {

namespace {

constexpr std::size_t fileHeaderSize = 14;
constexpr std::uint32_t coreHeaderSize = 12; // OS/2 1.x: 16-bit sizes, palette entries of three bytes
constexpr std::uint32_t infoHeaderSize = 40; // BITMAPINFOHEADER; longer ones go on with fields of their own
constexpr std::uint32_t longestHeaderSize = 124;
// Headers of 52 bytes and more hold the colour masks, which follow shorter ones; these hold that of the opacity, too.
constexpr std::uint32_t opacityMaskEndsInHeader = 56;

enum Compression : std::uint32_t
{
    uncompressed = 0,
    bitFields = 3,
    alphaBitFields = 6,
};

// Little-endian fields of a piece of a file.
class Fields
{
public:
    Fields(ByteSource& source, std::uint64_t offset, std::size_t count) : m_bytes(count)
    {
        source.readExactly(offset, m_bytes.data(), count);
    }

    std::uint32_t u8(std::size_t at) const { return m_bytes[at]; }
    std::uint32_t u16(std::size_t at) const { return u8(at) | u8(at + 1) << 8; }
    std::uint32_t u32(std::size_t at) const { return u16(at) | u16(at + 2) << 16; }
    std::int32_t i32(std::size_t at) const { return std::int32_t(u32(at)); }

private:
    std::vector<std::uint8_t> m_bytes;
};

struct DibLayout
{
    Size size;
    bool topDown = false;
    int bitsPerPixel = 0;
    Resolution resolution;
    std::array<std::uint32_t, 4> masks{}; // red, green, blue, opacity; for 16 bits and more
    std::vector<int> luminances;          // of the palette; for 1, 4 and 8 bits
    std::uint64_t pixels = 0;             // offset of the first stored row

    std::uint64_t stride() const { return (std::uint64_t(size.width) * std::uint64_t(bitsPerPixel) + 31) / 32 * 4; }
};

void checkDepth(int bits, std::uint32_t compression)
{
    static constexpr int known[] = {1, 4, 8, 16, 24, 32};
    if (std::find(std::begin(known), std::end(known), bits) == std::end(known))
        throw ImagingError("The BMP image has " + std::to_string(bits) + " bits per pixel, which does not exist.");
    const bool masked = (compression == bitFields || compression == alphaBitFields) && (bits == 16 || bits == 32);
    if (compression != uncompressed && !masked)
        throw ImagingError("Compressed BMP images are not read.");
}

// Reads the masks where the header has them; returns how many bytes they take behind it.
std::uint64_t readMasks(ByteSource& source, std::uint64_t header, std::uint32_t headerSize, std::uint32_t compression,
                        DibLayout& layout)
{
    if (compression == uncompressed) {
        if (layout.bitsPerPixel == 16) {
            layout.masks = {0x7C00, 0x03E0, 0x001F, 0};
        } else {
            layout.masks = {0xFF0000, 0x00FF00, 0x0000FF, 0};
        }
        return 0;
    }
    const bool opacity = headerSize >= opacityMaskEndsInHeader || compression == alphaBitFields;
    const std::size_t size = opacity ? 16 : 12;
    const Fields masks(source, header + infoHeaderSize, size);
    layout.masks = {masks.u32(0), masks.u32(4), masks.u32(8), opacity ? masks.u32(12) : 0};
    const std::uint64_t inHeader = headerSize - std::min(headerSize, infoHeaderSize);
    return size - std::min<std::uint64_t>(size, inHeader);
}

// pixels: where the rows begin, when a file header tells it; otherwise they follow the palette.
DibLayout readLayout(ByteSource& source, std::uint64_t header, std::optional<std::uint64_t> pixels)
{
    DibLayout layout;
    const std::uint32_t headerSize = Fields(source, header, 4).u32(0);
    if (headerSize != coreHeaderSize && (headerSize < 16 || headerSize > longestHeaderSize))
        throw ImagingError("The BMP header is damaged.");
    const Fields fields(source, header, headerSize);
    const bool core = headerSize == coreHeaderSize;
    const std::int64_t width = core ? std::int64_t(fields.u16(4)) : fields.i32(4);
    const std::int64_t height = core ? std::int64_t(fields.u16(6)) : fields.i32(8);
    if (width < 0)
        throw ImagingError("The BMP header is damaged.");
    layout.topDown = height < 0;
    layout.size = checkedImageSize(std::uint64_t(width), std::uint64_t(height < 0 ? -height : height));
    layout.bitsPerPixel = int(fields.u16(core ? 10 : 14));
    const std::uint32_t compression = headerSize >= 20 ? fields.u32(16) : std::uint32_t(uncompressed);
    checkDepth(layout.bitsPerPixel, compression);
    if (headerSize >= 32)
        layout.resolution = tidyResolution(fields.i32(24) * metresPerInch, fields.i32(28) * metresPerInch);

    std::uint64_t behind = header + headerSize + readMasks(source, header, headerSize, compression, layout);
    const std::uint32_t told = headerSize >= 36 ? fields.u32(32) : 0;
    const std::uint32_t most = layout.bitsPerPixel <= 8 ? 1u << layout.bitsPerPixel : 0;
    const std::uint32_t entries = most > 0 ? (told == 0 || told > most ? most : told) : 0;
    const std::uint32_t entrySize = core ? 3 : 4;
    const Fields palette(source, behind, std::size_t(entries) * entrySize);
    for (std::size_t at = 0; at < std::size_t(entries) * entrySize; at += entrySize)
        layout.luminances.push_back(luminance(int(palette.u8(at + 2)), int(palette.u8(at + 1)), int(palette.u8(at))));
    // Deep images may carry a palette as a hint for poorer displays.
    const std::uint64_t unusedEntries = most == 0 && told <= 256 ? told : 0;
    behind += (entries + unusedEntries) * entrySize;
    layout.pixels = pixels.value_or(behind);
    return layout;
}

using RowConverter = std::function<void(std::uint64_t* row, const std::uint8_t* pixels, int width)>;

// Spreads the bits of a mask over 0..255.
int channel(std::uint32_t pixel, std::uint32_t mask)
{
    if (mask == 0)
        return 0;
    const int shift = std::countr_zero(mask);
    const std::uint64_t highest = mask >> shift;
    return int((pixel & mask) >> shift) == 0 ? 0 : int(std::uint64_t((pixel & mask) >> shift) * 255 / highest);
}

RowConverter maskConverter(int bytes, std::array<std::uint32_t, 4> masks)
{
    return [bytes, masks](std::uint64_t* row, const std::uint8_t* pixels, int width) {
        fillRow(row, width, [&](int x) {
            std::uint32_t pixel = 0;
            for (int i = bytes - 1; i >= 0; --i)
                pixel = pixel << 8 | pixels[std::ptrdiff_t(bytes) * x + i];
            const int opacity = masks[3] == 0 ? 255 : channel(pixel, masks[3]);
            return isDark(channel(pixel, masks[0]), channel(pixel, masks[1]), channel(pixel, masks[2]), opacity);
        });
    };
}

RowConverter converterFor(const DibLayout& layout)
{
    const std::vector<int>& luminances = layout.luminances;
    const int bits = layout.bitsPerPixel;
    if (bits == 1) {
        const bool inverted = !oneIsInk(luminances);
        return [inverted](std::uint64_t* row, const std::uint8_t* pixels, int width) {
            wordsFromBytes(row, pixels, width, inverted);
        };
    }
    if (bits <= 8) {
        std::vector<bool> ink(std::size_t(1) << bits, true); // a value without a colour shows black
        for (std::size_t i = 0; i < luminances.size(); ++i)
            ink[i] = luminances[i] < 127500;
        return [bits, ink = std::move(ink)](std::uint64_t* row, const std::uint8_t* pixels, int width) {
            fillRow(row, width, [&](int x) {
                return ink[std::size_t(bits == 8 ? pixels[x] : pixels[x / 2] >> (x % 2 == 0 ? 4 : 0) & 0xF)];
            });
        };
    }
    return maskConverter(bits / 8, layout.masks);
}

Bitmap readPixels(ByteSource& source, const DibLayout& layout)
{
    const std::uint64_t rowBytes = (std::uint64_t(layout.size.width) * std::uint64_t(layout.bitsPerPixel) + 7) / 8;
    const std::uint64_t height = std::uint64_t(layout.size.height);
    if (layout.pixels + layout.stride() * (height - 1) + rowBytes > source.size())
        throw ImagingError("The BMP image is cut off.");
    const RowConverter convert = converterFor(layout);
    Bitmap bitmap = Bitmap::uninitialized(layout.size);
    std::vector<std::uint8_t> bytes(std::size_t(rowBytes), 0);
    for (std::uint64_t stored = 0; stored < height; ++stored) {
        source.readExactly(layout.pixels + stored * layout.stride(), bytes.data(), bytes.size());
        const std::uint64_t y = layout.topDown ? stored : height - 1 - stored;
        convert(bitmap.row(int(y)), bytes.data(), layout.size.width);
    }
    return bitmap;
}

void put(std::vector<std::uint8_t>& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(std::uint8_t(value >> (8 * i)));
}

constexpr std::uint32_t writtenPaletteSize = 2 * 4;

std::uint32_t writtenStride(const Bitmap& bitmap)
{
    return (std::uint32_t(bitmap.width()) + 31) / 32 * 4;
}

void writeDibTo(ByteSink& sink, const Bitmap& bitmap, Resolution resolution)
{
    const std::uint32_t stride = writtenStride(bitmap);
    const Resolution tidy = tidyResolution(resolution.x, resolution.y);
    std::vector<std::uint8_t> head;
    put(head, infoHeaderSize, 4);
    put(head, std::uint32_t(bitmap.width()), 4);
    put(head, std::uint32_t(bitmap.height()), 4); // positive: the bottom row comes first
    put(head, 1, 2);
    put(head, 1, 2);
    put(head, uncompressed, 4);
    put(head, stride * std::uint32_t(bitmap.height()), 4);
    put(head, dotsPerMetre(tidy.x), 4);
    put(head, dotsPerMetre(tidy.y), 4);
    put(head, 2, 4);
    put(head, 0, 4);
    put(head, 0x000000, 4); // 0 is black, as readers that look at no palette take it
    put(head, 0xFFFFFF, 4);
    sink.append(head.data(), head.size());

    std::vector<std::uint8_t> row(stride, 0);
    for (int y = bitmap.height() - 1; y >= 0; --y) {
        bytesFromWords(row.data(), bitmap.row(y), bitmap.width(), true);
        sink.append(row.data(), row.size());
    }
}

std::uint64_t pixelOffset(ByteSource& source)
{
    return Fields(source, 0, fileHeaderSize).u32(10);
}

RasterInfo infoOf(const DibLayout& layout)
{
    return {layout.size, layout.bitsPerPixel, layout.resolution, Format::Bmp};
}

bool recognisesBmp(std::span<const std::byte> head)
{
    // A size of the header that follows keeps texts that begin with "BM" out.
    return head.size() >= 18 && head[0] == std::byte('B') && head[1] == std::byte('M') &&
           head[14] >= std::byte(coreHeaderSize) && head[14] <= std::byte(longestHeaderSize) &&
           head[15] == std::byte() && head[16] == std::byte() && head[17] == std::byte();
}

RasterInfo inspectBmp(ByteSource& source)
{
    return infoOf(readLayout(source, fileHeaderSize, pixelOffset(source)));
}

RasterFile readBmp(ByteSource& source)
{
    const DibLayout layout = readLayout(source, fileHeaderSize, pixelOffset(source));
    return {readPixels(source, layout), infoOf(layout)};
}

void writeBmp(ByteSink& sink, const Bitmap& bitmap, Resolution resolution, Format)
{
    const std::uint32_t offset = std::uint32_t(fileHeaderSize) + infoHeaderSize + writtenPaletteSize;
    std::vector<std::uint8_t> head = {'B', 'M'};
    put(head, offset + writtenStride(bitmap) * std::uint32_t(bitmap.height()), 4);
    put(head, 0, 4);
    put(head, offset, 4);
    sink.append(head.data(), head.size());
    writeDibTo(sink, bitmap, resolution);
}

} // namespace

Bitmap readDib(std::span<const std::byte> dib)
{
    MemorySource source(dib);
    return readPixels(source, readLayout(source, 0, std::nullopt));
}

std::vector<std::byte> writeDib(const Bitmap& bitmap, Resolution resolution)
{
    if (bitmap.empty())
        throw ImagingError("There is no image to write.");
    MemorySink sink;
    sink.reserve(infoHeaderSize + writtenPaletteSize +
                 std::size_t(writtenStride(bitmap)) * std::size_t(bitmap.height()));
    writeDibTo(sink, bitmap, resolution);
    return sink.take();
}

const RasterCodec bmpCodec{recognisesBmp, inspectBmp, readBmp, writeBmp};

} // namespace imaging
