// The pages that a raster can have, and the largest raster that there can be.
#pragma once

#include <array>

#include "platform/platform.h"

struct PaperSize
{
    int width; // ten-thousandths of a millimetre
    int height;
};

inline constexpr double PaperUnitsPerMillimetre = 10000;

/// In the order of the lists.
extern const std::array<PaperSize, 30> PaperSizes;

/// How a list names the ANSI and ARCH pages, whose long side is the width: by the short side first, as pages are known,
/// or by the long side, as they lie.
enum class PaperNames
{
    ShortSideFirst,
    LongSideFirst
};

CString PaperName(int page, PaperNames names);
void FillPaperList(CWnd& list, PaperNames names);

/// The pixels of a length in millimetres, to the nearest.
int PixelsOfLength(double millimetres, int dpi);

inline constexpr int LargestRasterWidth = 65535; // pixels
inline constexpr int LargestRasterHeight = 32767;

/// Lowers the resolution so far that a raster of this size in millimetres does not pass the largest one.
void LimitResolution(double width, double height, int& dpi);
