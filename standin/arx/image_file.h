// The raster file behind an image definition: where it lies and what is in it.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "imaging/raster_file.h"
#include "standin/atil/image.h"

namespace standin {

/// The full path of the file that a source name stands for: as it is, beside the drawing under its relative or its bare
/// name, or in the current folder. Empty if there is no such file.
std::wstring findImageFile(const std::wstring& source, const std::wstring& drawingFile);

/// The header's content; nothing if the file cannot be read.
std::optional<imaging::RasterInfo> inspectImageFile(const std::wstring& path);

struct LoadedImage
{
    imaging::RasterInfo info;
    std::unique_ptr<Atil::Image> image;
};
/// Nothing if the file cannot be read.
std::optional<LoadedImage> loadImageFile(const std::wstring& path);

/// As the host reports it: 1, 8, 24 or 32.
int reportedDepth(int bitsPerPixel);

/// Millimetres per pixel; `pixels` is the width, which stands in where the file knows no resolution. Rounded down in
/// the last place where that is needed for 25.4 divided by it to give back a whole number of dots per inch.
double millimetresPerPixel(double dotsPerInch, int pixels);

} // namespace standin
