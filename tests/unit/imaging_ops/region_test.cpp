#include "imaging/region.h"
#include "picture.h"

using namespace imaging;

namespace {

// A region as a plain picture of its pixels, shifted so that rectangles left of and above the origin fit.
class PixelSet
{
public:
    explicit PixelSet(const std::vector<Rect>& rects = {})
    {
        for (const Rect& rect : rects)
            for (int y = rect.top; y < rect.bottom; ++y)
                for (int x = rect.left; x < rect.right; ++x)
                    at(x, y) = true;
    }

    std::vector<bool>::reference at(int x, int y) { return m_pixels[std::size_t((y + 10) * side + x + 10)]; }

    template <class Keep> PixelSet combined(PixelSet other, Keep keep)
    {
        for (std::size_t i = 0; i < m_pixels.size(); ++i)
            other.m_pixels[i] = keep(m_pixels[i], other.m_pixels[i]);
        return other;
    }

    bool operator==(const PixelSet&) const = default;

private:
    static constexpr int side = 100;
    std::vector<bool> m_pixels = std::vector<bool>(side * side);
};

testing::AssertionResult isCanonical(const Region& region)
{
    const std::vector<Rect>& rects = region.rects();
    Rect box;
    std::vector<Rect> above;
    for (std::size_t i = 0; i < rects.size();) {
        std::vector<Rect> band;
        for (; i < rects.size() && (band.empty() || rects[i].top == band[0].top); ++i)
            band.push_back(rects[i]);
        for (std::size_t k = 0; k < band.size(); ++k) {
            box = box.unite(band[k]);
            if (band[k].empty() || band[k].bottom != band[0].bottom || (k && band[k].left <= band[k - 1].right))
                return testing::AssertionFailure() << "a band is not in order at row " << band[k].top;
        }
        if (!above.empty() && above[0].bottom > band[0].top)
            return testing::AssertionFailure() << "bands overlap at row " << band[0].top;
        if (!above.empty() && above[0].bottom == band[0].top && above.size() == band.size() &&
            std::equal(above.begin(), above.end(), band.begin(),
                       [](const Rect& a, const Rect& b) { return a.left == b.left && a.right == b.right; }))
            return testing::AssertionFailure() << "two bands should be one at row " << band[0].top;
        above = band;
    }
    if (!(box == region.box()))
        return testing::AssertionFailure() << "the box does not fit";
    return testing::AssertionSuccess();
}

} // namespace

TEST(Region, NothingComesOfEmptyRectangles)
{
    EXPECT_TRUE(Region({4, 4, 4, 9}).empty());
    EXPECT_TRUE(Region({5, 4, 4, 9}).empty());
    EXPECT_TRUE(Region::fromRects(std::vector<Rect>{{1, 1, 1, 1}, {3, 3, 2, 9}}).empty());
    EXPECT_EQ(Region().box(), Rect());
    EXPECT_EQ(unite(Region(), Region({1, 2, 3, 4})), Region({1, 2, 3, 4}));
    EXPECT_TRUE(subtract(Region({1, 2, 3, 4}), Region({0, 0, 9, 9})).empty());
}

TEST(Region, OperationsAgreeWithSetsOfPixels)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        const std::vector<Rect> rectsA = anyRects({40, 40}, 1 + int(seed) % 12, seed);
        const std::vector<Rect> rectsB = anyRects({40, 40}, 1 + int(seed) % 7, seed + 1000);
        const Region a = Region::fromRects(rectsA);
        const Region b = Region::fromRects(rectsB);
        PixelSet pixelsA(rectsA);
        const PixelSet pixelsB(rectsB);
        EXPECT_EQ(PixelSet(a.rects()), pixelsA);
        EXPECT_EQ(PixelSet(unite(a, b).rects()), pixelsA.combined(pixelsB, [](bool p, bool q) { return p || q; }));
        EXPECT_EQ(PixelSet(subtract(a, b).rects()), pixelsA.combined(pixelsB, [](bool p, bool q) { return p && !q; }));
        EXPECT_EQ(PixelSet(intersect(a, b).rects()), pixelsA.combined(pixelsB, [](bool p, bool q) { return p && q; }));
        for (const Region& region : {a, b, unite(a, b), subtract(a, b), intersect(a, b)})
            EXPECT_TRUE(isCanonical(region));
        for (int y = -8; y < 70; ++y)
            for (int x = -8; x < 70; ++x)
                ASSERT_EQ(a.contains({x, y}), bool(pixelsA.at(x, y))) << x << "," << y;
    }
}

TEST(Region, SpanIsInsideOnlyWithoutGaps)
{
    const Region region = Region::fromRects(std::vector<Rect>{{0, 0, 4, 2}, {6, 0, 9, 2}});
    EXPECT_TRUE(region.containsSpan(1, 0, 4));
    EXPECT_TRUE(region.containsSpan(0, 6, 9));
    EXPECT_FALSE(region.containsSpan(1, 0, 5));
    EXPECT_FALSE(region.containsSpan(1, 3, 7));
    EXPECT_FALSE(region.containsSpan(1, 4, 6));
    EXPECT_FALSE(region.containsSpan(2, 0, 4));
    EXPECT_EQ(region.band(1).size(), 2u);
    EXPECT_TRUE(region.band(2).empty());
}
