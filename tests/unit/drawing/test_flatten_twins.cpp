// Curves and hatches beside those of another maker's library: see make_twins.py.

#include <fstream>
#include <map>

#include "flattening.h"

namespace drawing::test {

using Lines = std::vector<std::pair<Vector2, Vector2>>;

double distanceToLine(const Vector2& at, const Vector2& from, const Vector2& to)
{
    const Vector2 way = to - from;
    const double size = way.x * way.x + way.y * way.y;
    const double share = size > 0 ? ((at.x - from.x) * way.x + (at.y - from.y) * way.y) / size : 0;
    return length(at - (from + way * std::min(1.0, std::max(0.0, share))));
}

void addRun(Lines& lines, const std::vector<Vector2>& points, bool closed)
{
    for (std::size_t i = 0; i + (closed ? 0 : 1) < points.size(); ++i) {
        lines.emplace_back(points[i], points[(i + 1) % points.size()]);
    }
}

// All straight pieces of each entity, and the size of its area.
struct Flattened
{
    std::map<Handle, Lines> lines;
    std::map<Handle, double> areas;
};

Flattened flattened(const Document& document, double tolerance)
{
    Flattened result;
    FlattenOptions options;
    options.tolerance = tolerance;
    const bool complete = flattenBlock(document, document.modelSpace(), options, [&](FlatItem&& item) {
        Lines& lines = result.lines[item.entity];
        if (const auto* path = std::get_if<FlatPath>(&item.shape)) {
            addRun(lines, path->points, path->closed);
            return;
        }
        for (const auto& contour : std::get<FlatArea>(item.shape).contours) {
            double size = 0;
            for (std::size_t i = 0; i < contour.size(); ++i) {
                const Vector2& a = contour[i];
                const Vector2& b = contour[(i + 1) % contour.size()];
                size += (a.x * b.y - a.y * b.x) / 2;
            }
            // The first contour is the outline, the others are islands.
            result.areas[item.entity] += lines.empty() ? std::abs(size) : -std::abs(size);
            addRun(lines, contour, true);
        }
    });
    EXPECT_TRUE(complete);
    return result;
}

TEST(Twins, RunWhereAnotherMakersCurvesAndHatchesDo)
{
    const TemporaryFolder folder;
    std::string output;
    ASSERT_TRUE(runScript("make_twins.py", folder.path().string(), output)) << output;
    constexpr double tolerance = 0.005;
    const Flattened ours = flattened(readDrawing(folder / "twins.dxf"), tolerance);
    std::ifstream twins(folder / "twins.txt");
    std::string kind;
    std::map<std::string, int> counts;
    std::map<Handle, std::size_t> dashes;
    Handle handle = 0;
    while (twins >> kind >> std::hex >> handle >> std::dec) {
        ++counts[kind];
        ASSERT_TRUE(ours.lines.contains(handle)) << kind << " " << handle;
        double x = 0;
        double y = 0;
        twins >> x;
        if (kind == "area") {
            EXPECT_NEAR(ours.areas.at(handle), x, 0.5);
            continue;
        }
        twins >> y;
        double nearest = 1e9;
        if (kind == "point") {
            for (const auto& [from, to] : ours.lines.at(handle)) {
                nearest = std::min(nearest, distanceToLine({x, y}, from, to));
            }
        } else {
            ++dashes[handle];
            Vector2 end;
            twins >> end.x >> end.y;
            for (const auto& [from, to] : ours.lines.at(handle)) {
                nearest = std::min({nearest, length(from - Vector2{x, y}) + length(to - end),
                                    length(to - Vector2{x, y}) + length(from - end)});
            }
        }
        EXPECT_LE(nearest, kind == "point" ? 2 * tolerance : 1e-6)
            << kind << " of " << handle << " at " << x << " " << y;
    }
    EXPECT_GE(counts["point"], 1000);
    EXPECT_EQ(dashes.size(), 3u);
    for (const auto& [hatch, count] : dashes) {
        EXPECT_EQ(ours.lines.at(hatch).size(), count) << hatch;
    }
}

} // namespace drawing::test
