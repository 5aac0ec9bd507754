// Specks removed and holes filled.

#include "imaging/despeckle.h"
#include "imaging/fill.h"
#include "picture.h"

using namespace imaging;

namespace {

// Looks for groups by walking from pixel to pixel. With ink they join at corners too; with paper only at edges, and a
// group at the border stays.
Bitmap plainlyCleaned(const Bitmap& bitmap, bool ink, int side, const Region* region)
{
    Bitmap result = bitmap;
    std::vector<bool> seen(std::size_t(bitmap.width()) * std::size_t(bitmap.height()));
    const auto isNew = [&](Point p) {
        return bitmap.bounds().contains(p) && bitmap.ink(p.x, p.y) == ink &&
               !seen[std::size_t(p.y) * std::size_t(bitmap.width()) + std::size_t(p.x)];
    };
    const auto mark = [&](Point p) { seen[std::size_t(p.y) * std::size_t(bitmap.width()) + std::size_t(p.x)] = true; };
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x) {
            if (!isNew({x, y}))
                continue;
            std::vector<Point> group = {{x, y}};
            mark({x, y});
            Rect box;
            bool goes = true;
            for (std::size_t i = 0; i < group.size(); ++i) {
                const Point p = group[i];
                box = box.unite({p.x, p.y, p.x + 1, p.y + 1});
                goes = goes && (!region || region->contains(p));
                for (int dy = -1; dy <= 1; ++dy) {
                    for (int dx = -1; dx <= 1; ++dx) {
                        const Point next{p.x + dx, p.y + dy};
                        if ((ink || dx == 0 || dy == 0) && isNew(next)) {
                            mark(next);
                            group.push_back(next);
                        }
                    }
                }
            }
            goes = goes && box.width() <= side && box.height() <= side;
            goes =
                goes &&
                (ink || bitmap.bounds().intersect({box.left - 1, box.top - 1, box.right + 1, box.bottom + 1}).size() ==
                            Size{box.width() + 2, box.height() + 2});
            for (const Point p : group)
                if (goes)
                    result.setInk(p.x, p.y, !ink);
        }
    }
    return result;
}

Bitmap despeckled(Bitmap bitmap, int side, const Region* region = nullptr)
{
    despeckle(bitmap, side, region);
    return bitmap;
}

Bitmap holesFilled(Bitmap bitmap, int side, const Region* region = nullptr)
{
    fillHoles(bitmap, side, region);
    return bitmap;
}

void expectThePlainSearchsResult(const Bitmap& bitmap, int side, const Region* region = nullptr)
{
    EXPECT_TRUE(samePicture(plainlyCleaned(bitmap, true, side, region), despeckled(bitmap, side, region)));
    EXPECT_TRUE(samePicture(plainlyCleaned(bitmap, false, side, region), holesFilled(bitmap, side, region)));
}

} // namespace

TEST(SmallGroups, AgreeWithThePlainSearchOnScans)
{
    const Region nothing;
    for (const int width : {1, 33, 63, 64, 65, 129, 300}) {
        for (unsigned seed = 0; seed < 4; ++seed) {
            const Bitmap bitmap = scanLike({width, 90}, seed * 100 + unsigned(width));
            const Region region = Region::fromRects(anyRects(bitmap.size(), 4, seed));
            for (const int side : {1, 2, 3, 6, 9, 31, 32, 1000}) {
                SCOPED_TRACE(testing::Message() << width << " wide, seed " << seed << ", side " << side);
                expectThePlainSearchsResult(bitmap, side);
                expectThePlainSearchsResult(bitmap, side, &region);
                EXPECT_TRUE(samePicture(bitmap, despeckled(bitmap, side, &nothing)));
            }
        }
    }
}

TEST(SmallGroups, AgreeWithThePlainSearchAcrossBands)
{
    // High enough for many bands, with sides below and above a band's usual height.
    const Bitmap bitmap = scanLike({60, 2100}, 77);
    Bitmap bars({40, 2100});
    for (int y = 3; y < 2100; y += 7 + y % 290)
        fill(bars, {y % 31, y, y % 31 + 2, y + 5 + y % 280}, true);
    for (const int side : {2, 8, 250, 290, 1200}) {
        SCOPED_TRACE(side);
        expectThePlainSearchsResult(bitmap, side);
        expectThePlainSearchsResult(bars, side);
    }
}
