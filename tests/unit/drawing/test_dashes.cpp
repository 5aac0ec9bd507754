// Dash patterns along straight lines.

#include <gmock/gmock.h>

#include "drawing/dashes.h"

namespace drawing::test {

TEST(Dashes, RunOnOverCorners)
{
    const std::vector<Vector2> corner = {{0, 0}, {3, 0}, {3, 3}};
    std::vector<std::pair<double, double>> pieces;
    drawDashed(corner, {2, -1}, 100, [&](Vector2 a, Vector2 b) { pieces.push_back({a.x + a.y, b.x + b.y}); });
    EXPECT_THAT(pieces, testing::ElementsAre(std::pair(0.0, 2.0), std::pair(3.0, 5.0)));
    pieces.clear();
    drawDashed(corner, {4, -1}, 100, [&](Vector2 a, Vector2 b) { pieces.push_back({a.x + a.y, b.x + b.y}); });
    EXPECT_THAT(pieces, testing::ElementsAre(std::pair(0.0, 3.0), std::pair(3.0, 4.0), std::pair(5.0, 6.0)))
        << "the first dash turns the corner";
}

TEST(Dashes, PatternsWithoutLengthAndTooManyDashesGivePlainLines)
{
    const std::vector<Vector2> line = {{0, 0}, {1000, 0}};
    for (const DashPattern& pattern : {DashPattern{}, DashPattern{0, 0}, DashPattern{0.001, -0.001}}) {
        int pieces = 0;
        drawDashed(line, pattern, 100, [&](Vector2 a, Vector2 b) {
            ++pieces;
            EXPECT_EQ(a, line[0]);
            EXPECT_EQ(b, line[1]);
        });
        EXPECT_EQ(pieces, 1);
    }
}

} // namespace drawing::test
