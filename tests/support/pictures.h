// Small pictures in the text of a test, and how two are compared.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "imaging/bitmap.h"

/// Rows of '#' or '1' for ink; anything else is paper.
using Picture = std::vector<std::string>;

inline imaging::Bitmap drawn(const Picture& rows)
{
    imaging::Bitmap bitmap({int(rows.at(0).size()), int(rows.size())});
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x) {
            const char pixel = rows[std::size_t(y)].at(std::size_t(x));
            bitmap.setInk(x, y, pixel == '#' || pixel == '1');
        }
    }
    return bitmap;
}

inline Picture rowsOf(const imaging::Bitmap& bitmap)
{
    Picture rows;
    for (int y = 0; y < bitmap.height(); ++y) {
        rows.emplace_back();
        for (int x = 0; x < bitmap.width(); ++x)
            rows.back().push_back(bitmap.ink(x, y) ? '#' : '.');
    }
    return rows;
}

/// What lies around a pixel.
inline std::string shown(const imaging::Bitmap& bitmap, int column, int row)
{
    std::string text;
    for (int y = std::max(0, row - 12); y < std::min(bitmap.height(), row + 12); ++y) {
        for (int x = std::max(0, column - 40); x < std::min(bitmap.width(), column + 40); ++x)
            text += bitmap.ink(x, y) ? '#' : '.';
        text += '\n';
    }
    return text;
}

/// Whether two bitmaps have the same size and pixels, looked at one by one, and paper in the bits that pad the rows.
inline testing::AssertionResult samePicture(const imaging::Bitmap& expected, const imaging::Bitmap& found)
{
    if (expected.size() != found.size())
        return testing::AssertionFailure() << "the picture should be " << expected.width() << " x " << expected.height()
                                           << " but is " << found.width() << " x " << found.height();
    if (expected == found)
        return testing::AssertionSuccess();
    for (int y = 0; y < expected.height(); ++y)
        for (int x = 0; x < found.wordsPerRow() * 64; ++x)
            if (found.ink(x, y) != (x < expected.width() && expected.ink(x, y)))
                return testing::AssertionFailure() << "pixel " << x << "," << y << " of " << expected.width() << " x "
                                                   << expected.height() << " is wrong; expected around it:\n"
                                                   << shown(expected, x, y) << "found:\n"
                                                   << shown(found, x, y);
    return testing::AssertionSuccess();
}
