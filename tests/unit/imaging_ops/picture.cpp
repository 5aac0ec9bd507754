#include "picture.h"

using namespace imaging;

const std::vector<int> awkwardWidths = {1, 31, 32, 33, 63, 64, 65, 127, 128, 129};

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
