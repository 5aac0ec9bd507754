#include "plane.h"

#include <vector>

int countGroups(const imaging::Bitmap& bitmap)
{
    imaging::Bitmap left = bitmap;
    int groups = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            if (!left.ink(x, y))
                continue;
            ++groups;
            for (std::vector<imaging::Point> open{{x, y}}; !open.empty();) {
                const imaging::Point p = open.back();
                open.pop_back();
                if (!left.bounds().contains(p) || !left.ink(p.x, p.y))
                    continue;
                left.setInk(p.x, p.y, false);
                for (int i = 0; i < 9; ++i)
                    open.push_back({p.x + i % 3 - 1, p.y + i / 3 - 1});
            }
        }
    }
    return groups;
}
