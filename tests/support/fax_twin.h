// Group 3 and group 4 data read and written by libtiff's own coder, to hold ours against.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "imaging/bitmap.h"

/// Coded rows and what a TIFF file tells of them.
struct FaxData
{
    int width = 0;
    int height = 0;
    int compression = 0; // libtiff's number
    int group3Options = 0;
    bool lowestBitFirst = false;
    std::vector<std::uint8_t> bytes = {};
};

/// Read by our library, as the only strip of a TIFF file. Throws ImagingError.
imaging::Bitmap readByUs(const FaxData& data);

/// Read by libtiff, row by row; nothing when it complains of anything, be it that it goes on.
std::optional<imaging::Bitmap> readByLibtiff(const FaxData& data);

/// What libtiff makes of the bitmap; the form is taken from the data, its size and bytes are not.
FaxData codedByLibtiff(const imaging::Bitmap& bitmap, FaxData form);

enum class FaxVerdict
{
    BothRead,    // the same pixels
    BothRefuse,  //
    WeRefuse,    // what libtiff reads
    WeRead,      // what libtiff refuses: a fault of ours
    PixelsDiffer // the same
};

/// Reads the data as a TIFF file by our library and by libtiff.
FaxVerdict compareWithLibtiff(const FaxData& data);
