#include "drawing/flatten_polylines.h"

#include <algorithm>
#include <cmath>

#include "drawing/flatten_curves.h"

namespace drawing {

namespace {

// A point of the flattened polyline; the width may jump there. Within an arc it has no directions of its own.
struct Sample
{
    Vector2 position;
    double widthBefore = 0;
    double widthAfter = 0;
    Vector2 directionBefore = {};
    Vector2 directionAfter = {};
    bool corner = false; // where an arc meets something that it does not run on into: both end square
    bool parts() const { return corner || widthBefore != widthAfter; }
};

Vector2 directionOf(const Vector2& from, const Vector2& to)
{
    const Vector2 d = to - from;
    const double size = length(d);
    return size > 0 ? d * (1 / size) : Vector2{};
}

Vector2 turned(const Vector2& v, double angle)
{
    return {v.x * std::cos(angle) - v.y * std::sin(angle), v.x * std::sin(angle) + v.y * std::cos(angle)};
}

// An arc sets out half its angle to the right of its chord if it turns left, and comes in as much to the left.
void giveDirections(Sample& start, Sample& end, double bulge)
{
    const Vector2 chord = directionOf(start.position, end.position);
    const double half = 2 * std::atan(bulge);
    start.directionAfter = turned(chord, -half);
    end.directionBefore = turned(chord, half);
}

bool isCorner(const Sample& vertex, double bulgeBefore, double bulgeAfter)
{
    constexpr double runsOn = 0.01; // sine of the angle
    const Vector2 &a = vertex.directionBefore, &b = vertex.directionAfter;
    const bool straightOn = std::abs(a.x * b.y - a.y * b.x) < runsOn && a.x * b.x + a.y * b.y > 0;
    return (bulgeBefore != 0 || bulgeAfter != 0) && !straightOn;
}

std::vector<Sample> sampled(const std::vector<PolylinePoint>& points, bool closed, double stretch, double tolerance)
{
    std::vector<Sample> samples{{points[0].position, 0, points[0].startWidth}};
    const std::size_t segments = closed ? points.size() : points.size() - 1;
    for (std::size_t i = 0; i < segments; ++i) {
        const std::size_t start = samples.size() - 1;
        const PolylinePoint& from = points[i];
        const PolylinePoint& to = points[(i + 1) % points.size()];
        const auto run = bulgePoints(from.position, to.position, from.bulge, stretch, tolerance);
        for (std::size_t k = 0; k < run.size(); ++k) {
            const double share = static_cast<double>(k + 1) / static_cast<double>(run.size());
            const double width = from.startWidth + (from.endWidth - from.startWidth) * share;
            samples.push_back({run[k], width, width});
        }
        samples.back().widthAfter = to.startWidth;
        giveDirections(samples[start], samples.back(), from.bulge);
        samples[start].corner = i > 0 && isCorner(samples[start], points[i - 1].bulge, from.bulge);
    }
    if (closed) {
        samples.front().widthBefore = samples.back().widthBefore;
        samples.front().directionBefore = samples.back().directionBefore;
        samples.front().corner = isCorner(samples.front(), points.back().bulge, points.front().bulge);
        samples.back().corner = samples.front().corner;
    } else {
        samples.back().widthAfter = samples.back().widthBefore;
        samples.front().widthBefore = samples.front().widthAfter;
    }
    return samples;
}

// The left-hand side, half a unit wide, of a corner between two directions: mitred, but for sharp corners,
// line ends and where the width jumps.
Vector2 sideAt(const Vector2& before, const Vector2& after, const Vector2& own)
{
    constexpr double sharpest = 0.25; // cosine of half the turn, below which a mitre would run away
    const Vector2 square{-own.y / 2, own.x / 2};
    const Vector2 sum = before + after;
    const double halfCosine = length(sum) / 2;
    if (before == Vector2{} || after == Vector2{} || halfCosine < sharpest) {
        return square;
    }
    const double scale = 1 / (2 * halfCosine * halfCosine) / 2;
    return {-sum.y * scale, sum.x * scale};
}

// Both edges of a run of wide pieces, in its direction.
struct Strip
{
    std::vector<Vector2> left;
    std::vector<Vector2> right;

    bool endsWhere(const Strip& other) const
    {
        return left.back() == other.left.front() && right.back() == other.right.front();
    }
    void append(const Strip& next)
    {
        left.insert(left.end(), next.left.begin() + 1, next.left.end());
        right.insert(right.end(), next.right.begin() + 1, next.right.end());
    }
};

FlatArea areaOf(const Strip& strip, const Transform& map)
{
    std::vector<Vector3> points;
    for (const Vector2& point : strip.left) {
        points.push_back({point.x, point.y, 0});
    }
    for (auto point = strip.right.rbegin(); point != strip.right.rend(); ++point) {
        points.push_back({point->x, point->y, 0});
    }
    return {{projected(points, map)}};
}

struct OutlineEdge
{
    Vector2 from;
    Vector2 to;
    double lowX() const { return std::min(from.x, to.x); }
    double highX() const { return std::max(from.x, to.x); }
    // Positive if the point lies to the left of the edge.
    double sideOf(const Vector2& p) const
    {
        return (to.x - from.x) * (p.y - from.y) - (to.y - from.y) * (p.x - from.x);
    }
    // True if the two have a single point in common, and that an end of neither.
    bool crosses(const OutlineEdge& other) const
    {
        return sideOf(other.from) * sideOf(other.to) < 0 && other.sideOf(from) * other.sideOf(to) < 0;
    }
};

bool crossesItself(const Strip& strip)
{
    std::vector<OutlineEdge> edges;
    for (std::size_t i = 0; i + 1 < strip.left.size(); ++i) {
        edges.push_back({strip.left[i], strip.left[i + 1]});
        edges.push_back({strip.right[i], strip.right[i + 1]});
    }
    std::sort(edges.begin(), edges.end(), [](const auto& a, const auto& b) { return a.lowX() < b.lowX(); });
    for (std::size_t i = 0; i < edges.size(); ++i) {
        for (std::size_t k = i + 1; k < edges.size() && edges[k].lowX() <= edges[i].highX(); ++k) {
            if (edges[i].crosses(edges[k])) {
                return true;
            }
        }
    }
    return false;
}

// Where a strip lies over itself its outline would have a hole, so there it is cut until no part does.
void emitStrip(const Strip& strip, const Transform& map, const std::function<void(FlatShape&&)>& emit)
{
    constexpr std::size_t mostPoints = 4096; // bounds the search for crossings
    const std::size_t size = strip.left.size();
    if (size == 2 || (size <= mostPoints && !crossesItself(strip))) {
        emit(areaOf(strip, map));
        return;
    }
    const auto part = [&](std::size_t begin, std::size_t end) {
        const auto cut = [&](const std::vector<Vector2>& edge) {
            return std::vector<Vector2>(edge.begin() + static_cast<std::ptrdiff_t>(begin),
                                        edge.begin() + static_cast<std::ptrdiff_t>(end));
        };
        emitStrip({cut(strip.left), cut(strip.right)}, map, emit);
    };
    part(0, size / 2 + 1);
    part(size / 2, size);
}

// True if an edge of the piece runs against it: the arc is narrower than its width.
bool isFolded(const Strip& piece, const Vector2& direction)
{
    const auto runsBack = [&](const std::vector<Vector2>& edge) {
        const Vector2 along = edge.back() - edge.front();
        return along.x * direction.x + along.y * direction.y < 0;
    };
    return runsBack(piece.left) || runsBack(piece.right);
}

// Pieces that meet in the same two points make one outline, so that no seam between them can show. Folded ones stay
// alone, since their outline runs the other way round.
class StripCollector
{
public:
    void add(const Strip& piece, const Vector2& direction)
    {
        const bool folded = isFolded(piece, direction);
        if (!m_strips.empty() && !folded && !m_folded && m_strips.back().endsWhere(piece)) {
            m_strips.back().append(piece);
        } else {
            m_strips.push_back(piece);
        }
        m_firstFolded = m_strips.size() == 1 ? folded : m_firstFolded;
        m_folded = folded;
    }

    /// `closed`: the last strip may run on into the first.
    std::vector<Strip> take(bool closed)
    {
        if (closed && m_strips.size() > 1 && !m_folded && !m_firstFolded &&
            m_strips.back().endsWhere(m_strips.front())) {
            m_strips.back().append(m_strips.front());
            m_strips.erase(m_strips.begin());
        }
        return std::move(m_strips);
    }

private:
    std::vector<Strip> m_strips;
    bool m_folded = false; // the last strip
    bool m_firstFolded = false;
};

// Lines where both ends of a piece are thin, areas elsewhere.
void emitWide(const std::vector<Sample>& samples, bool closed, const Transform& map,
              const std::function<void(FlatShape&&)>& emit)
{
    const std::size_t edges = samples.size() - 1;
    std::vector<Vector2> directions;
    for (std::size_t i = 0; i < edges; ++i) {
        directions.push_back(directionOf(samples[i].position, samples[i + 1].position));
    }
    StripCollector strips;
    for (std::size_t i = 0; i < edges; ++i) {
        const Sample& from = samples[i];
        const Sample& to = samples[i + 1];
        const Vector2 own = directions[i];
        if (own == Vector2{}) {
            continue;
        }
        if (from.widthAfter == 0 && to.widthBefore == 0) {
            emit(projectedPath({{from.position.x, from.position.y, 0}, {to.position.x, to.position.y, 0}}, map, false));
            continue;
        }
        const bool first = i == 0 && !closed;
        const bool last = i + 1 == edges && !closed;
        const Vector2 before = first || from.parts() ? Vector2{} : directions[(i + edges - 1) % edges];
        const Vector2 after = last || to.parts() ? Vector2{} : directions[(i + 1) % edges];
        const Vector2 setsOut = from.directionAfter == Vector2{} ? own : from.directionAfter;
        const Vector2 comesIn = to.directionBefore == Vector2{} ? own : to.directionBefore;
        const Vector2 startSide = sideAt(before, own, setsOut) * from.widthAfter;
        const Vector2 endSide = sideAt(own, after, comesIn) * to.widthBefore;
        strips.add(
            {{from.position + startSide, to.position + endSide}, {from.position - startSide, to.position - endSide}},
            own);
    }
    for (const Strip& strip : strips.take(closed)) {
        emitStrip(strip, map, emit);
    }
}

} // namespace

std::vector<Vector2> projected(const std::vector<Vector3>& points, const Transform& map)
{
    std::vector<Vector2> result;
    result.reserve(points.size());
    for (const Vector3& point : points) {
        const Vector3 seen = map.point(point);
        result.push_back({seen.x, seen.y});
    }
    return result;
}

FlatPath projectedPath(const std::vector<Vector3>& points, const Transform& map, bool closed)
{
    return {projected(points, map), closed};
}

void flattenPolyline(const std::vector<PolylinePoint>& points, bool closed, const Transform& map, double tolerance,
                     const std::function<void(FlatShape&&)>& emit)
{
    if (points.empty()) {
        return;
    }
    const std::vector<Sample> samples = sampled(points, closed, largestStretch(map), tolerance);
    const bool wide = std::any_of(samples.begin(), samples.end(),
                                  [](const Sample& s) { return s.widthBefore != 0 || s.widthAfter != 0; });
    if (wide) {
        emitWide(samples, closed, map, emit);
        return;
    }
    std::vector<Vector3> line;
    line.reserve(samples.size());
    for (const Sample& sample : samples) {
        line.push_back({sample.position.x, sample.position.y, 0});
    }
    if (closed && line.size() > 1) {
        line.pop_back(); // the closing line runs there anyway
    }
    emit(projectedPath(line, map, closed));
}

} // namespace drawing
