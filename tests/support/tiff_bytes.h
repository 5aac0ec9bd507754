#pragma once

#include <tiffio.h>

#include "tests/support/test_files.h"

/// A TIFF file put together byte by byte: the directory first, then the palette or other long values, then the one
/// strip.
class TiffBytes
{
public:
    explicit TiffBytes(std::uint32_t width, std::uint32_t height, bool bigEndian = false) : m_bigEndian(bigEndian)
    {
        longTag(TIFFTAG_IMAGEWIDTH, width).longTag(TIFFTAG_IMAGELENGTH, height);
    }

    TiffBytes& shortTag(std::uint16_t tag, std::uint32_t value) { return add(tag, 3, value); }
    TiffBytes& longTag(std::uint16_t tag, std::uint32_t value) { return add(tag, 4, value); }

    /// The strip's bytes and its StripOffsets; StripByteCounts is a tag like others, since it may lie.
    Bytes withStrip(const Bytes& strip) const;

private:
    struct Entry
    {
        std::uint16_t tag, type;
        std::uint32_t value;
    };
    TiffBytes& add(std::uint16_t tag, std::uint16_t type, std::uint32_t value)
    {
        m_entries.push_back({tag, type, value});
        return *this;
    }
    void put(Bytes& bytes, std::uint32_t value, int count) const;

    bool m_bigEndian;
    std::vector<Entry> m_entries;
};

/// How libtiff is to write a picture.
struct TiffKind
{
    int compression = COMPRESSION_NONE;
    int photometric = PHOTOMETRIC_MINISWHITE;
    int fillOrder = FILLORDER_MSB2LSB;
    int orientation = ORIENTATION_TOPLEFT;
    int group3Options = 0;
    int rowsPerStrip = 0; // 0: one strip; -1: tiles of 16 x 16
};

/// Writes, through libtiff itself, the file in which the picture is seen. Adds a page when the file is there and
/// append.
void writeByLibtiff(const std::filesystem::path& path, const imaging::Bitmap& seen, const TiffKind& kind,
                    bool append = false);

/// The raw bytes of the only strip of a file written by libtiff.
Bytes onlyStripOf(const std::filesystem::path& path);
