// Small bitmaps drawn, made and compared in tests.
#pragma once

#include "imaging/bitmap.h"
#include "imaging/region.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

/// Widths on and around the edges of words.
extern const std::vector<int> awkwardWidths;

/// A bitmap drawn with 1 for ink and 0 (or a full stop) for paper, one string a row.
imaging::Bitmap drawn(std::initializer_list<const char*> rows);

/// A bitmap from a rule for each pixel, pixel by pixel.
imaging::Bitmap made(imaging::Size size, const std::function<bool(int x, int y)>& isInk);

/// Noise with the given share of ink; the same for the same seed.
imaging::Bitmap noise(imaging::Size size, double share, unsigned seed);

/// Blots, strokes and specks, as on a scan: noise smoothed so that groups of many sizes arise.
imaging::Bitmap scanLike(imaging::Size size, unsigned seed);

/// Rectangles anywhere around the given area, some beyond its edges.
std::vector<imaging::Rect> anyRects(imaging::Size area, int count, unsigned seed);

/// Whether the bits that pad the rows are all zero.
testing::AssertionResult paddingIsPaper(const imaging::Bitmap& bitmap);

/// Whether two bitmaps have the same size and pixels, looked at one by one, and clean padding; shows both where they
/// differ.
testing::AssertionResult samePicture(const imaging::Bitmap& expected, const imaging::Bitmap& actual);

/// Whether nothing has changed but inside the rectangle.
testing::AssertionResult surroundingsIntact(const imaging::Bitmap& before, const imaging::Bitmap& after,
                                            const imaging::Rect& inside);
