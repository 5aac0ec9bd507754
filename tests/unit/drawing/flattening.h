// What the tests of flattening share.
#pragma once

#include <gtest/gtest.h>

#include "drawing/flatten.h"
#include "drawing/hatch.h"
#include "support.h"

namespace drawing::test {

inline constexpr double near = 1e-9;

/// A drawing to be filled, and the pieces that it flattens to.
class Flattening : public testing::Test
{
protected:
    template <class T> T& add() { return document.addEntity(document.modelSpace(), std::make_unique<T>()); }
    template <class T> T& addTo(Block& block) { return document.addEntity(block, std::make_unique<T>()); }
    Layer& addLayer(const std::string& name, int color)
    {
        auto layer = std::make_unique<Layer>();
        layer->recordName = name;
        layer->color = color;
        return document.addRecord(std::move(layer));
    }
    BlockReference& refer(const std::string& block)
    {
        auto& reference = add<BlockReference>();
        reference.block = block;
        return reference;
    }

    std::vector<FlatItem> items()
    {
        std::vector<FlatItem> result;
        complete =
            flattenBlock(document, document.modelSpace(), options, [&](FlatItem&& item) { result.push_back(item); });
        return result;
    }
    FlatPath onlyPath()
    {
        const auto all = items();
        EXPECT_EQ(all.size(), 1u);
        return std::get<FlatPath>(all.at(0).shape);
    }
    // The one contour of the one area.
    std::vector<Vector2> onlyContour()
    {
        const auto all = items();
        EXPECT_EQ(all.size(), 1u);
        const auto area = std::get<FlatArea>(all.at(0).shape);
        EXPECT_EQ(area.contours.size(), 1u);
        return area.contours.at(0);
    }
    FlatText onlyText()
    {
        const auto all = items();
        EXPECT_EQ(all.size(), 1u);
        return std::get<FlatText>(all.at(0).shape);
    }

    Document document;
    FlattenOptions options;
    bool complete = false;
};

inline void expectPoint(const Vector2& found, double x, double y)
{
    EXPECT_NEAR(found.x, x, near);
    EXPECT_NEAR(found.y, y, near);
}

inline void expectPoints(const std::vector<Vector2>& found, const std::vector<Vector2>& wanted)
{
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        expectPoint(found[i], wanted[i].x, wanted[i].y);
    }
}

/// How often a ray from the point crosses the contours.
inline int crossingsToTheRight(const FlatArea& area, const Vector2& at)
{
    int count = 0;
    for (const auto& contour : area.contours) {
        for (std::size_t i = 0; i < contour.size(); ++i) {
            const Vector2& a = contour[i];
            const Vector2& b = contour[(i + 1) % contour.size()];
            const bool spans = (a.y <= at.y) != (b.y <= at.y);
            count += spans && a.x + (b.x - a.x) * (at.y - a.y) / (b.y - a.y) > at.x ? 1 : 0;
        }
    }
    return count;
}

inline bool covers(const FlatItem& item, const Vector2& at)
{
    return crossingsToTheRight(std::get<FlatArea>(item.shape), at) % 2 == 1;
}

} // namespace drawing::test
