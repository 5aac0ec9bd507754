#include "tests/support/tiff_bytes.h"

#include <algorithm>

using imaging::Bitmap;

void TiffBytes::put(Bytes& bytes, std::uint32_t value, int count) const
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(std::uint8_t(value >> 8 * (m_bigEndian ? count - 1 - i : i)));
}

Bytes TiffBytes::withStrip(const Bytes& strip) const
{
    std::vector<Entry> entries = m_entries;
    const auto offset = std::uint32_t(8 + 2 + 12 * (entries.size() + 1) + 4);
    entries.push_back({TIFFTAG_STRIPOFFSETS, 4, offset});
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.tag < b.tag; });
    Bytes bytes;
    bytes.push_back(m_bigEndian ? 'M' : 'I');
    bytes.push_back(bytes[0]);
    put(bytes, 42, 2);
    put(bytes, 8, 4);
    put(bytes, std::uint32_t(entries.size()), 2);
    for (const Entry& entry : entries) {
        put(bytes, entry.tag, 2);
        put(bytes, entry.type, 2);
        put(bytes, 1, 4);
        const int size = entry.type == 3 ? 2 : 4;
        put(bytes, entry.value, size);
        bytes.resize(bytes.size() + std::size_t(4 - size), 0);
    }
    put(bytes, 0, 4);
    bytes.insert(bytes.end(), strip.begin(), strip.end());
    return bytes;
}

namespace {

struct StoredPixel
{
    int column, row;
};

// Where the pixel of the picture lies in the file, by the meaning of the eight orientations.
StoredPixel storedAt(int x, int y, int width, int height, int orientation)
{
    const int fromRight = width - 1 - x;
    const int fromBottom = height - 1 - y;
    switch (orientation) {
    case ORIENTATION_TOPRIGHT:
        return {fromRight, y};
    case ORIENTATION_BOTRIGHT:
        return {fromRight, fromBottom};
    case ORIENTATION_BOTLEFT:
        return {x, fromBottom};
    case ORIENTATION_LEFTTOP: // the rows of the file are the picture's columns from here on
        return {y, x};
    case ORIENTATION_RIGHTTOP:
        return {y, fromRight};
    case ORIENTATION_RIGHTBOT:
        return {fromBottom, fromRight};
    case ORIENTATION_LEFTBOT:
        return {fromBottom, x};
    default:
        return {x, y};
    }
}

Bytes packed(const std::vector<std::vector<bool>>& stored, int left, int top, int width, int height, bool inkIsZero)
{
    const std::size_t rowBytes = std::size_t(width + 7) / 8;
    Bytes bytes(rowBytes * std::size_t(height), 0);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool inside = std::size_t(top + y) < stored.size() && std::size_t(left + x) < stored[0].size();
            if ((inside && stored[std::size_t(top + y)][std::size_t(left + x)]) != inkIsZero)
                bytes[rowBytes * std::size_t(y) + std::size_t(x) / 8] |= std::uint8_t(0x80 >> x % 8);
        }
    return bytes;
}

} // namespace

void writeByLibtiff(const std::filesystem::path& path, const Bitmap& seen, const TiffKind& kind, bool append)
{
    const bool swapped = kind.orientation >= ORIENTATION_LEFTTOP;
    const int width = swapped ? seen.height() : seen.width();
    const int height = swapped ? seen.width() : seen.height();
    std::vector<std::vector<bool>> stored(std::size_t(height), std::vector<bool>(std::size_t(width), false));
    for (int y = 0; y < seen.height(); ++y)
        for (int x = 0; x < seen.width(); ++x) {
            const StoredPixel at = storedAt(x, y, seen.width(), seen.height(), kind.orientation);
            stored[std::size_t(at.row)][std::size_t(at.column)] = seen.ink(x, y);
        }

    TIFFSetWarningHandler(nullptr); // the old number of deflate is meant
    TIFF* tiff = TIFFOpen(path.c_str(), append ? "a" : "w");
    ASSERT_TRUE(tiff) << path;
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.compression);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.photometric);
    TIFFSetField(tiff, TIFFTAG_FILLORDER, kind.fillOrder);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, kind.orientation);
    if (kind.compression == COMPRESSION_CCITTFAX3)
        TIFFSetField(tiff, TIFFTAG_GROUP3OPTIONS, kind.group3Options);
    const bool inkIsZero = kind.photometric == PHOTOMETRIC_MINISBLACK;
    if (kind.rowsPerStrip < 0) {
        constexpr int side = 16;
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, side);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, side);
        for (int top = 0; top < height; top += side)
            for (int left = 0; left < width; left += side) {
                Bytes tile = packed(stored, left, top, side, side, inkIsZero);
                ASSERT_GE(TIFFWriteTile(tiff, tile.data(), std::uint32_t(left), std::uint32_t(top), 0, 0), 0);
            }
    } else {
        const int rows = kind.rowsPerStrip == 0 ? height : kind.rowsPerStrip;
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rows);
        for (int top = 0; top < height; top += rows) {
            const int count = std::min(rows, height - top);
            Bytes strip = packed(stored, 0, top, width, count, inkIsZero);
            ASSERT_GE(TIFFWriteEncodedStrip(tiff, std::uint32_t(top / rows), strip.data(), tmsize_t(strip.size())), 0);
        }
    }
    ASSERT_TRUE(TIFFWriteDirectory(tiff));
    TIFFClose(tiff);
}

Bytes onlyStripOf(const std::filesystem::path& path)
{
    TIFF* tiff = TIFFOpen(path.c_str(), "r");
    EXPECT_TRUE(tiff);
    EXPECT_EQ(TIFFNumberOfStrips(tiff), 1u);
    Bytes strip(std::size_t(TIFFRawStripSize(tiff, 0)));
    EXPECT_EQ(TIFFReadRawStrip(tiff, 0, strip.data(), tmsize_t(strip.size())), tmsize_t(strip.size()));
    TIFFClose(tiff);
    return strip;
}
