#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "imaging/codec.h"
#include "imaging/dib.h"
#include "imaging/error.h"

// Any bytes, read as a raster file and as a DIB. What is read without an error must come back the same from every
// format that it is written in.

namespace {

using namespace imaging;

void comesBackTheSame(const RasterCodec& codec, const Bitmap& bitmap, Resolution resolution, Format format)
{
    MemorySink sink;
    codec.write(sink, bitmap, resolution, format);
    if (readRaster(sink.bytes()).bitmap == bitmap)
        return;
    std::fprintf(stderr, "format %u did not give the image back\n", formatCode(format));
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    try {
        readDib(bytes);
    } catch (const ImagingError&) { // what broken bytes are to end in
    }
    RasterFile file;
    try {
        file = readRaster(bytes);
    } catch (const ImagingError&) {
        return 0;
    }
    constexpr std::int64_t largestRoundTrip = 1 << 18;
    if (std::int64_t(file.bitmap.width()) * file.bitmap.height() > largestRoundTrip)
        return 0;
    comesBackTheSame(tiffCodec, file.bitmap, file.info.resolution, Format::TiffGroup4);
    comesBackTheSame(tiffCodec, file.bitmap, file.info.resolution, Format::TiffPackBits);
    comesBackTheSame(calsCodec, file.bitmap, file.info.resolution, Format::Cals);
    comesBackTheSame(pngCodec, file.bitmap, file.info.resolution, Format::Png);
    comesBackTheSame(bmpCodec, file.bitmap, file.info.resolution, Format::Bmp);
    if (std::max(file.bitmap.width(), file.bitmap.height()) <= 0x10000) // what a PCX can hold
        comesBackTheSame(pcxCodec, file.bitmap, file.info.resolution, Format::Pcx);
    return 0;
}
