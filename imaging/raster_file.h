#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "imaging/bitmap.h"
#include "imaging/geometry.h"

// Raster files: what is in one, reading it, writing one. Files are known by their content; the extension means nothing
// here. Every failure is an ImagingError whose text names the file and says what is wrong with it.

namespace imaging {

/// Dots per inch along the image's rows (x) and columns (y). 0 means that the file does not say.
struct Resolution
{
    double x = 0;
    double y = 0;

    friend bool operator==(const Resolution&, const Resolution&) = default;
};

/// The kinds of raster file. The values are the format numbers that the module and the worker exchange: 29 and 50 are
/// fixed by the module, the others are the worker's own.
enum class Format : std::uint32_t
{
    TiffGroup4 = 29,
    Cals = 50,
    TiffUncompressed = 101,
    TiffPackBits = 102,
    TiffDeflate = 103,
    TiffOther = 104, // a TIFF in a compression that is read but not written (group 3, LZW and the like)
    Png = 110,
    Bmp = 111,
    Pcx = 112,
    Jpeg = 113,
    PhotoCd = 114,
};

struct RasterInfo
{
    Size size;            // as seen, that is after the file's orientation has been applied
    int bitsPerPixel = 0; // as stored: 1, or 4, 8, 16, 24, 32 ... for grey, palette and colour images
    Resolution resolution;
    Format format{};
};

struct RasterFile
{
    Bitmap bitmap;
    RasterInfo info;
};

/// What a user chooses among when saving or opening.
struct FormatDescription
{
    Format format;
    std::string_view name;                        // such as "TIFF group 4"
    std::span<const std::string_view> extensions; // without the dot, the usual one first
    bool writable;
};

/// All formats, those that can be written first, in the order in which they are offered.
std::span<const FormatDescription> formatDescriptions();
const FormatDescription& describe(Format format);

std::uint32_t formatCode(Format format);
/// Empty when the number is not that of a format.
std::optional<Format> formatFromCode(std::uint32_t code);

/// Size, depth, resolution and format, from the file's header alone. Of a multi-page file the first page.
RasterInfo inspectRaster(const std::filesystem::path& path);

/// The whole image, upright. Grey, palette and colour images become ink where they are darker than half, transparent
/// parts being paper. Either every row was read without fault or an ImagingError is thrown.
RasterFile readRaster(const std::filesystem::path& path);

/// The same from a file's bytes in memory.
RasterFile readRaster(std::span<const std::byte> bytes);

/// Writes a fresh file beside the target and renames it over the target when it is complete; on failure the target is
/// left as it was and nothing else remains. Throws also for a format that is only read.
void writeRaster(const std::filesystem::path& path, const Bitmap& bitmap, Resolution resolution, Format format);

} // namespace imaging
