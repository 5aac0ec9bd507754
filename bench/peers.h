// The libraries that we measure ourselves against, behind the same plain calls as ours.
#pragma once

#include <leptonica/allheaders.h>
#include <memory>
#include <string>

#include "imaging/bitmap.h"

namespace bench {

struct PixDestroyer
{
    void operator()(Pix* pix) const { pixDestroy(&pix); }
};
using PixPointer = std::unique_ptr<Pix, PixDestroyer>;

/// Copies between our bitmaps and Leptonica's, which has the same order of pixels in words of 32 bits.
PixPointer toPix(const imaging::Bitmap& bitmap);
imaging::Bitmap fromPix(const Pix& pix);

/// A whole group 4 file by libtiff alone, into memory that lies there already and from there.
void readWithLibtiff(const std::string& path, imaging::Bitmap& into);
void writeWithLibtiff(const std::string& path, const imaging::Bitmap& bitmap, float dpi);

} // namespace bench
