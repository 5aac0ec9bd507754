#include "drawing/flatten_splines.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace drawing {

namespace {

constexpr int highestDegree = 25;
constexpr int fixedPieces = 16; // between two knots
constexpr std::size_t mostPoints = 200'000;

using Curve = std::function<Vector3(double)>;

double distanceFromLine(const Vector3& point, const Vector3& from, const Vector3& to)
{
    const Vector3 way = to - from;
    const double size = dot(way, way);
    const double share = size > 0 ? std::clamp(dot(point - from, way) / size, 0.0, 1.0) : 0;
    return length(point - (from + way * share));
}

// Halves spans until their lines are near enough.
class Refiner
{
public:
    Refiner(const Curve& curve, double tolerance) : m_curve(curve), m_tolerance(tolerance) {}

    /// Adds the points from `begin` to `end`; the one at `begin` only if it is the first of all.
    void add(double begin, double end)
    {
        if (m_points.empty()) {
            m_points.push_back(m_curve(begin));
        }
        const Vector3 from = m_points.back();
        if (m_tolerance > 0) {
            constexpr int firstHalvings =
                1; // so that a span that is symmetric about its middle is looked at in quarters
            refine(begin, from, end, m_curve(end), -firstHalvings);
            return;
        }
        for (int i = 1; i <= fixedPieces; ++i) {
            m_points.push_back(m_curve(begin + (end - begin) * i / fixedPieces));
        }
    }
    std::vector<Vector3> take() { return std::move(m_points); }

private:
    void refine(double begin, const Vector3& from, double end, const Vector3& to, int depth)
    {
        constexpr int deepest = 14;
        const double middle = (begin + end) / 2;
        const Vector3 halfway = m_curve(middle);
        const bool straight = depth >= 0 && distanceFromLine(halfway, from, to) <= m_tolerance &&
                              distanceFromLine(m_curve((begin + middle) / 2), from, to) <= m_tolerance &&
                              distanceFromLine(m_curve((middle + end) / 2), from, to) <= m_tolerance;
        if (straight || depth >= deepest || m_points.size() >= mostPoints) {
            m_points.push_back(to);
            return;
        }
        refine(begin, from, middle, halfway, depth + 1);
        refine(middle, halfway, end, to, depth + 1);
    }

    const Curve& m_curve;
    double m_tolerance;
    std::vector<Vector3> m_points;
};

bool isCurve(const ControlledCurve& curve)
{
    const std::size_t count = curve.controlPoints.size();
    const auto degree = static_cast<std::size_t>(std::max(0, curve.degree));
    return curve.degree >= 1 && curve.degree <= highestDegree && count > degree &&
           curve.knots.size() == count + degree + 1 && std::is_sorted(curve.knots.begin(), curve.knots.end()) &&
           curve.knots[degree] < curve.knots[count] &&
           (curve.weights.empty() ||
            (curve.weights.size() == count &&
             std::all_of(curve.weights.begin(), curve.weights.end(), [](double w) { return w > 0; })));
}

// de Boor's algorithm in homogeneous coordinates; `span` is the one that holds the parameter.
Vector3 pointAt(const ControlledCurve& curve, std::size_t span, double parameter)
{
    struct Weighted
    {
        Vector3 point; // times the weight
        double weight = 1;
    };
    std::array<Weighted, highestDegree + 1> d;
    const auto degree = static_cast<std::size_t>(curve.degree);
    for (std::size_t j = 0; j <= degree; ++j) {
        const std::size_t index = span - degree + j;
        const double weight = curve.weights.empty() ? 1 : curve.weights[index];
        d[j] = {curve.controlPoints[index] * weight, weight};
    }
    for (std::size_t level = 1; level <= degree; ++level) {
        for (std::size_t j = degree; j >= level; --j) {
            const double low = curve.knots[span - degree + j];
            const double high = curve.knots[span + 1 + j - level];
            const double share = high > low ? (parameter - low) / (high - low) : 0;
            d[j] = {d[j - 1].point * (1 - share) + d[j].point * share,
                    d[j - 1].weight * (1 - share) + d[j].weight * share};
        }
    }
    return d[degree].point * (1 / d[degree].weight);
}

// Solves a system whose matrix has three diagonals, in place: `below` is that of the row's left neighbour. Diagonally
// dominant, so that no row has to be exchanged.
void solveTridiagonal(const std::vector<double>& below, std::vector<double> middle, const std::vector<double>& above,
                      std::vector<Vector3>& right)
{
    for (std::size_t i = 1; i < right.size(); ++i) {
        const double factor = below[i] / middle[i - 1];
        middle[i] -= factor * above[i - 1];
        right[i] = right[i] - right[i - 1] * factor;
    }
    right.back() = right.back() * (1 / middle.back());
    for (std::size_t i = right.size() - 1; i-- > 0;) {
        right[i] = (right[i] - right[i + 1] * above[i]) * (1 / middle[i]);
    }
}

// The derivatives in the points of the smooth curve; `spans[i]` is the parameter's way from point i to the next.
std::vector<Vector3> smoothTangents(const std::vector<Vector3>& points, const std::vector<double>& spans,
                                    const std::optional<Vector3>& start, const std::optional<Vector3>& end)
{
    const std::size_t count = points.size();
    std::vector<double> below(count, 0);
    std::vector<double> middle(count, 1);
    std::vector<double> above(count, 0);
    std::vector<Vector3> right(count);
    const auto slope = [&](std::size_t i) { return (points[i + 1] - points[i]) * (1 / spans[i]); };
    for (std::size_t i = 1; i + 1 < count; ++i) {
        below[i] = spans[i];
        middle[i] = 2 * (spans[i - 1] + spans[i]);
        above[i] = spans[i - 1];
        right[i] = slope(i - 1) * (3 * spans[i]) + slope(i) * (3 * spans[i - 1]);
    }
    if (start) {
        right[0] = normalized(*start);
    } else {
        middle[0] = 2;
        above[0] = 1;
        right[0] = slope(0) * 3;
    }
    if (end) {
        right[count - 1] = normalized(*end);
    } else {
        middle[count - 1] = 2;
        below[count - 1] = 1;
        right[count - 1] = slope(count - 2) * 3;
    }
    solveTridiagonal(below, std::move(middle), above, right);
    return right;
}

void dropRepeated(std::vector<Vector3>& points)
{
    points.erase(std::unique(points.begin(), points.end()), points.end());
}

} // namespace

std::optional<std::vector<Vector3>> flattenedCurve(const ControlledCurve& curve, double tolerance)
{
    if (!isCurve(curve)) {
        return std::nullopt;
    }
    std::size_t span = 0;
    const Curve at = [&](double parameter) { return pointAt(curve, span, parameter); };
    Refiner refiner(at, tolerance);
    for (span = static_cast<std::size_t>(curve.degree); span < curve.controlPoints.size(); ++span) {
        if (curve.knots[span] < curve.knots[span + 1]) {
            refiner.add(curve.knots[span], curve.knots[span + 1]);
        }
    }
    return refiner.take();
}

std::vector<Vector3> flattenedFit(std::vector<Vector3> points, bool closed, const std::optional<Vector3>& startTangent,
                                  const std::optional<Vector3>& endTangent, double tolerance)
{
    dropRepeated(points);
    if (closed && points.size() > 2 && points.front() == points.back()) {
        points.pop_back();
    }
    if (points.size() < 2) {
        return points;
    }
    std::size_t first = 0;
    std::size_t last = points.size() - 1;
    if (closed) {
        // The ends' effect falls to a quarter from point to point: behind that many it is gone.
        constexpr std::size_t lead = 28;
        const std::vector<Vector3> once = points;
        const std::size_t size = once.size();
        points.clear();
        for (std::size_t i = 0; i < size + 2 * lead + 1; ++i) {
            points.push_back(once[(i + size * lead - lead) % size]);
        }
        first = lead;
        last = lead + size;
    }
    std::vector<double> spans;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        spans.push_back(length(points[i + 1] - points[i]));
    }
    const auto tangents =
        closed ? smoothTangents(points, spans, {}, {}) : smoothTangents(points, spans, startTangent, endTangent);
    std::size_t span = 0;
    const Curve at = [&](double s) {
        // Hermite's form, s from 0 to 1.
        const Vector3 way = points[span + 1] - points[span];
        const Vector3 leave = tangents[span] * spans[span] - way;
        const Vector3 arrive = way - tangents[span + 1] * spans[span];
        return points[span] + way * s + (leave * (1 - s) + arrive * s) * (s * (1 - s));
    };
    Refiner refiner(at, tolerance);
    for (span = first; span < last; ++span) {
        refiner.add(0, 1);
    }
    return refiner.take();
}

} // namespace drawing
