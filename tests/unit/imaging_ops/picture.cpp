#include "picture.h"

#include <algorithm>
#include <cstring>

using namespace imaging;

const std::vector<int> awkwardWidths = {1, 31, 32, 33, 63, 64, 65, 127, 128, 129};

Bitmap drawn(std::initializer_list<const char*> rows)
{
    const std::vector<const char*> lines = rows;
    return made({int(std::strlen(lines.at(0))), int(lines.size())},
                [&](int x, int y) { return lines[std::size_t(y)][x] == '1'; });
}

Bitmap made(Size size, const std::function<bool(int x, int y)>& isInk)
{
    Bitmap bitmap(size);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            bitmap.setInk(x, y, isInk(x, y));
    return bitmap;
}

Bitmap noise(Size size, double share, unsigned seed)
{
    std::mt19937 random(seed);
    const auto limit = std::uint64_t(share * 4294967296.0);
    return made(size, [&](int, int) { return random() < limit; });
}

Bitmap scanLike(Size size, unsigned seed)
{
    const Bitmap grains = noise({size.width + 2, size.height + 2}, 0.45, seed);
    const Bitmap specks = noise(size, 0.02, seed + 1);
    return made(size, [&](int x, int y) {
        int ink = 0;
        for (int dy = 0; dy < 3; ++dy)
            for (int dx = 0; dx < 3; ++dx)
                ink += grains.ink(x + dx, y + dy);
        return (ink > 5) != specks.ink(x, y);
    });
}

std::vector<Rect> anyRects(Size area, int count, unsigned seed)
{
    std::mt19937 random(seed);
    const auto below = [&](int limit) { return int(random() % unsigned(limit)); };
    std::vector<Rect> rects;
    for (int i = 0; i < count; ++i) {
        const int left = below(area.width + 8) - 6;
        const int top = below(area.height + 8) - 6;
        rects.push_back({left, top, left + below(area.width / 2 + 2), top + below(area.height / 2 + 2)});
    }
    return rects;
}

testing::AssertionResult paddingIsPaper(const Bitmap& bitmap)
{
    for (int y = 0; y < bitmap.height(); ++y)
        for (int x = bitmap.width(); x < bitmap.wordsPerRow() * 64; ++x)
            if (bitmap.ink(x, y))
                return testing::AssertionFailure() << "there is ink in the padding of row " << y << ", at " << x;
    return testing::AssertionSuccess();
}

static std::string shown(const Bitmap& bitmap, Point around)
{
    std::string text;
    const int left = std::max(0, around.x - 40);
    const int right = std::min(bitmap.width(), around.x + 40);
    for (int y = std::max(0, around.y - 12); y < std::min(bitmap.height(), around.y + 12); ++y) {
        for (int x = left; x < right; ++x)
            text += bitmap.ink(x, y) ? '1' : '.';
        text += '\n';
    }
    return text;
}

testing::AssertionResult samePicture(const Bitmap& expected, const Bitmap& actual)
{
    if (!(expected.size() == actual.size()))
        return testing::AssertionFailure() << "the picture should be " << expected.width() << " x " << expected.height()
                                           << " but is " << actual.width() << " x " << actual.height();
    for (int y = 0; y < expected.height(); ++y)
        for (int x = 0; x < expected.width(); ++x)
            if (expected.ink(x, y) != actual.ink(x, y))
                return testing::AssertionFailure()
                       << "pixel " << x << "," << y << " should be " << (expected.ink(x, y) ? "ink" : "paper")
                       << "\nexpected around it:\n"
                       << shown(expected, {x, y}) << "found:\n"
                       << shown(actual, {x, y});
    return paddingIsPaper(actual);
}

testing::AssertionResult surroundingsIntact(const Bitmap& before, const Bitmap& after, const Rect& inside)
{
    if (!(before.size() == after.size()))
        return testing::AssertionFailure() << "the size has changed";
    for (int y = 0; y < before.height(); ++y)
        for (int x = 0; x < before.width(); ++x)
            if (!inside.contains({x, y}) && before.ink(x, y) != after.ink(x, y))
                return testing::AssertionFailure() << "pixel " << x << "," << y << " outside the rectangle has changed";
    return paddingIsPaper(after);
}
