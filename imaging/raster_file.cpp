#include "imaging/raster_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <vector>

#include "imaging/codec.h"
#include "imaging/error.h"
#include "imaging/fresh_file.h"

namespace imaging {

namespace {

constexpr std::string_view tiffExtensions[] = {"tif", "tiff"};
constexpr std::string_view calsExtensions[] = {"cal", "cals", "ct1", "ras", "gp4", "cg4", "mil", "rst"};
constexpr std::string_view pngExtensions[] = {"png"};
constexpr std::string_view bmpExtensions[] = {"bmp", "dib"};
constexpr std::string_view pcxExtensions[] = {"pcx"};
constexpr std::string_view jpegExtensions[] = {"jpg", "jpeg", "jpe", "jfif"};
constexpr std::string_view photoCdExtensions[] = {"pcd"};

struct Row
{
    FormatDescription description;
    const RasterCodec* codec;
};

// The one table of formats, in the order in which they are offered. A new format is a new row.
constexpr Row table[] = {
    {{Format::TiffGroup4, "TIFF group 4", tiffExtensions, true}, &tiffCodec},
    {{Format::Cals, "CALS", calsExtensions, true}, &calsCodec},
    {{Format::Png, "PNG", pngExtensions, true}, &pngCodec},
    {{Format::Bmp, "BMP", bmpExtensions, true}, &bmpCodec},
    {{Format::Pcx, "PCX", pcxExtensions, true}, &pcxCodec},
    {{Format::TiffUncompressed, "TIFF uncompressed", tiffExtensions, true}, &tiffCodec},
    {{Format::TiffPackBits, "TIFF PackBits", tiffExtensions, true}, &tiffCodec},
    {{Format::TiffDeflate, "TIFF deflate", tiffExtensions, true}, &tiffCodec},
    {{Format::TiffOther, "TIFF", tiffExtensions, false}, &tiffCodec},
    {{Format::Jpeg, "JPEG", jpegExtensions, false}, &jpegCodec},
    {{Format::PhotoCd, "Photo CD", photoCdExtensions, false}, &photoCdCodec},
};

constexpr auto descriptions = [] {
    std::array<FormatDescription, std::size(table)> result{};
    std::transform(std::begin(table), std::end(table), result.begin(), [](const Row& row) { return row.description; });
    return result;
}();

const Row& rowOf(Format format)
{
    const auto* const found = std::find_if(std::begin(table), std::end(table),
                                           [format](const Row& row) { return row.description.format == format; });
    if (found == std::end(table))
        throw ImagingError("There is no raster format of the number " + std::to_string(formatCode(format)) + ".");
    return *found;
}

const RasterCodec& recognise(ByteSource& source)
{
    std::array<std::byte, codecHeadLength> head;
    const std::size_t got = source.read(0, head.data(), head.size());
    if (got == 0)
        throw ImagingError("The file is empty.");
    for (const Row& row : table) {
        if (row.codec->recognises(std::span(head).first(got)))
            return *row.codec;
    }
    throw ImagingError("This is not a raster file of a known kind.");
}

std::string utf8(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

// Runs the work and names the file in whatever error comes out of it.
template <typename Work> auto naming(const std::filesystem::path& path, Work work)
{
    try {
        return work();
    } catch (const ImagingError& error) {
        throw ImagingError(utf8(path) + ": " + error.what());
    } catch (const std::bad_alloc&) {
        throw ImagingError(utf8(path) + ": There is not enough memory.");
    }
}

} // namespace

std::span<const FormatDescription> formatDescriptions()
{
    return descriptions;
}

const FormatDescription& describe(Format format)
{
    return rowOf(format).description;
}

std::uint32_t formatCode(Format format)
{
    return static_cast<std::uint32_t>(format);
}

std::optional<Format> formatFromCode(std::uint32_t code)
{
    for (const FormatDescription& description : descriptions) {
        if (formatCode(description.format) == code)
            return description.format;
    }
    return std::nullopt;
}

RasterInfo inspectRaster(const std::filesystem::path& path)
{
    return naming(path, [&] {
        FileSource source(path);
        return recognise(source).inspect(source);
    });
}

RasterFile readRaster(const std::filesystem::path& path)
{
    return naming(path, [&] {
        FileSource source(path);
        return recognise(source).read(source);
    });
}

RasterFile readRaster(std::span<const std::byte> bytes)
{
    MemorySource source(bytes);
    try {
        return recognise(source).read(source);
    } catch (const std::bad_alloc&) {
        throw ImagingError("There is not enough memory.");
    }
}

void writeRaster(const std::filesystem::path& path, const Bitmap& bitmap, Resolution resolution, Format format)
{
    naming(path, [&] {
        const Row& row = rowOf(format);
        if (!row.description.writable)
            throw ImagingError("Files of this format are read, not written.");
        if (bitmap.empty())
            throw ImagingError("There is no image to write.");
        FreshFile file(path);
        row.codec->write(file, bitmap, resolution, format);
        file.commit();
    });
}

Size checkedImageSize(std::uint64_t width, std::uint64_t height)
{
    if (width == 0 || height == 0)
        throw ImagingError("The image has no pixels.");
    if (!Bitmap::allows(width, height)) {
        throw ImagingError("The file claims an image of " + std::to_string(width) + " x " + std::to_string(height) +
                           " pixels, which is too large.");
    }
    return {int(width), int(height)};
}

namespace {

double tidyDotsPerInch(double value)
{
    constexpr double highest = 1e6;
    if (!(value > 0) || value > highest)
        return 0;
    // Half a dot per metre is the error of a value that was rounded to whole dots per metre.
    const double whole = std::round(value);
    return whole > 0 && std::abs(value - whole) <= 0.51 * metresPerInch ? whole : value;
}

} // namespace

Resolution tidyResolution(double x, double y)
{
    x = tidyDotsPerInch(x);
    y = tidyDotsPerInch(y);
    return {x > 0 ? x : y, y > 0 ? y : x};
}

std::uint32_t dotsPerMetre(double dotsPerInch)
{
    const double value = dotsPerInch / metresPerInch;
    return value > 0 && value < 1e9 ? std::uint32_t(std::lround(value)) : 0;
}

} // namespace imaging
