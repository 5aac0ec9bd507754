// A bitmap as it looks on a screen: grey shares of ink at any scale, turned or mirrored.
#pragma once

#include <cstddef>
#include <cstdint>

#include "imaging/bitmap.h"

namespace imaging {

/// A map of the plane: (x, y) goes to (xx x + xy y + x0, yx x + yy y + y0). Coordinates are those of pixel corners:
/// pixel (i, j) is the square from (i, j) to (i + 1, j + 1), its centre at (i + 0.5, j + 0.5).
struct Affine
{
    double xx = 1;
    double xy = 0;
    double x0 = 0;
    double yx = 0;
    double yy = 1;
    double y0 = 0;
};

/// Writes for each output pixel the share of ink in the part of the image that it covers, from 0 to 255: the area's
/// average where the image is reduced, the nearest pixel where it is enlarged, each direction by itself unless the
/// image is turned off the axes. Pixels that touch the image nowhere become 0. `gray` holds output.height rows of
/// output.width bytes, `stride` bytes apart. Nothing is allocated beyond a few rows, so that it may run on every paint.
/// Throws ImagingError for a map that has numbers which are not finite or that makes the output one point or line.
void sampleCoverage(const Bitmap& bitmap, const Affine& fromOutputToImage, Size output, std::uint8_t* gray,
                    std::ptrdiff_t stride);

/// A run of pixels in an output row; end exclusive, equal to begin when there are none.
struct OutputSpan
{
    int begin = 0;
    int end = 0;
};

/// The pixels of output row y whose centres lie inside the image: tells paper, which is 0 as well, from what is
/// outside.
OutputSpan insideImage(Size image, const Affine& fromOutputToImage, Size output, int y);

} // namespace imaging
