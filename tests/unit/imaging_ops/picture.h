// Bitmaps made by rule and by chance.
#pragma once

#include <functional>
#include <random>
#include <vector>

#include "imaging/region.h"
#include "tests/support/pictures.h"

/// Widths on and around the edges of words.
extern const std::vector<int> awkwardWidths;

/// A bitmap from a rule for each pixel, pixel by pixel.
imaging::Bitmap made(imaging::Size size, const std::function<bool(int x, int y)>& isInk);

/// Noise with the given share of ink; the same for the same seed.
imaging::Bitmap noise(imaging::Size size, double share, unsigned seed);

/// Blots, strokes and specks, as on a scan: noise smoothed so that groups of many sizes arise.
imaging::Bitmap scanLike(imaging::Size size, unsigned seed);

/// Rectangles anywhere around the given area, some beyond its edges.
std::vector<imaging::Rect> anyRects(imaging::Size area, int count, unsigned seed);
