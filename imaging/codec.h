#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "imaging/byte_stream.h"
#include "imaging/raster_file.h"

// What the table of formats (raster_file.cpp) needs of a file kind. A new kind is one more codec. The functions throw
// ImagingError without naming the file; the public functions put the name before.

namespace imaging {

struct RasterCodec
{
    /// Given the first bytes of a file, at most codecHeadLength of them.
    bool (*recognises)(std::span<const std::byte> head);
    RasterInfo (*inspect)(ByteSource& source);
    RasterFile (*read)(ByteSource& source);
    /// Null for a kind that is only read. The bitmap is never empty.
    void (*write)(ByteSink& sink, const Bitmap& bitmap, Resolution resolution, Format format);
};

inline constexpr std::size_t codecHeadLength = 4096;

extern const RasterCodec tiffCodec;
extern const RasterCodec calsCodec;
extern const RasterCodec pngCodec;
extern const RasterCodec bmpCodec;
extern const RasterCodec pcxCodec;
extern const RasterCodec jpegCodec;
extern const RasterCodec photoCdCodec;

/// The size that a file claims, once it is known to be one that can be worked on; throws ImagingError otherwise. To be
/// called before any memory is asked for.
Size checkedImageSize(std::uint64_t width, std::uint64_t height);

/// Dots per inch as a file gives them: nonsense becomes unknown, one known direction stands for both, and a whole
/// number that was rounded to dots per metre or centimetre (11811 per metre, 118.11 per centimetre) is whole again.
Resolution tidyResolution(double x, double y);

inline constexpr double metresPerInch = 0.0254;

/// 0 for unknown.
std::uint32_t dotsPerMetre(double dotsPerInch);

} // namespace imaging
