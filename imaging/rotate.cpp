#include "imaging/rotate.h"

#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <span>
#include <vector>

#include "imaging/bits.h"
#include "imaging/crop.h"
#include "imaging/error.h"
#include "imaging/fill.h"
#include "imaging/linear_span.h"
#include "imaging/mirror.h"
#include "imaging/parallel.h"
#include "imaging/turn.h"
#include "imaging/turned_sheet.h"

namespace imaging {

namespace {

// Whether the pivot is so far off that a turn of 45 degrees or more brings every pixel out of any image.
bool isFar(Point pivot)
{
    constexpr int far = 1 << 28;
    return std::max({pivot.x, -pivot.x, pivot.y, -pivot.y}) > far;
}

// Turns a rectangle clockwise by quarters about the centre of the pivot pixel, which brings pixels onto pixels.
Rect turnedByQuarters(Rect rect, Point pivot, int quarters)
{
    for (int i = 0; i < quarters; ++i) {
        rect = {pivot.x - (rect.bottom - 1 - pivot.y), pivot.y + rect.left - pivot.x, pivot.x - rect.top + pivot.y + 1,
                pivot.y + rect.right - pivot.x};
    }
    return rect;
}

Bitmap turnedByQuarters(const Bitmap& bitmap, int quarters)
{
    if (quarters == 1)
        return turnClockwise(bitmap);
    if (quarters == 3)
        return turnCounterClockwise(bitmap);
    Bitmap half = bitmap;
    turnHalf(half);
    return half;
}

Point topLeft(const Rect& rect)
{
    return {rect.left, rect.top};
}

// The region's pixels; the quarters of the turn are made here, once and for all. There are at most three bitmaps of the
// image's size at any time, the image among them.
Strips lift(const Bitmap& bitmap, const Region& region, Point pivot, int quarters)
{
    const Rect box = region.box();
    if (quarters == 0 && region.rects().size() == 1)
        return {bitmap, box, topLeft(box)};
    Bitmap part = crop(bitmap, region);
    if (quarters != 0)
        part = turnedByQuarters(part, quarters);
    return {part, part.bounds(), topLeft(turnedByQuarters(box, pivot, quarters))};
}

// Ink all over the region, turned by quarters.
Strips shapeOf(const Region& region, Point pivot, int quarters)
{
    std::vector<Rect> rects;
    for (const Rect& rect : region.rects())
        rects.push_back(turnedByQuarters(rect, pivot, quarters));
    return Strips(Region::fromRects(rects));
}

// The rectangle of target pixels that may get something from the source rectangle.
Rect turnedBox(const Rect& box, const InverseTurn& turn, const Rect& bounds)
{
    double left = INFINITY, top = INFINITY, right = -INFINITY, bottom = -INFINITY;
    for (const double x : {box.left - 0.5, box.right - 0.5}) {
        for (const double y : {box.top - 0.5, box.bottom - 0.5}) {
            left = std::min(left, turn.targetX(x, y));
            right = std::max(right, turn.targetX(x, y));
            top = std::min(top, turn.targetY(x, y));
            bottom = std::max(bottom, turn.targetY(x, y));
        }
    }
    const auto clampedX = [&](double x) { return int(std::clamp(x, double(bounds.left), double(bounds.right))); };
    const auto clampedY = [&](double y) { return int(std::clamp(y, double(bounds.top), double(bounds.bottom))); };
    return {clampedX(std::floor(left)), clampedY(std::floor(top)), clampedX(std::ceil(right) + 1),
            clampedY(std::ceil(bottom) + 1)};
}

// The pixels of target row y, within `limits`, whose source lies in the box.
Span coveredSpan(const Rect& box, const InverseTurn& turn, Span limits, int y)
{
    const Span across = whereBetween(limits, turn.cosine, turn.sourceX(0, y), box.left - 0.5, box.right - 0.5);
    return whereBetween(across, -turn.sine, turn.sourceY(0, y), box.top - 0.5, box.bottom - 0.5);
}

// Lays down rows of the result, in squares of 64 x 64 pixels, so that the strips that are read stay in the processor's
// nearest cache.
class Layer
{
public:
    static constexpr int side = 64;

    // Where `covers` is given it tells which of the source's pixels replace what is there, paper too.
    Layer(Bitmap& bitmap, const TurnedSheet& source, bool transparent, const TurnedSheet* covers)
        : m_bitmap(bitmap), m_source(source), m_transparent(transparent), m_covers(covers)
    {}

    // spans: of each row from `top` on, of which there are at most 64, the pixels from left up to right that get
    // something.
    void layBand(int top, std::span<const Span> spans, int left, int right)
    {
        std::array<TurnedSheet::Place, side> memory;
        const std::span places(memory.data(), spans.size());
        Span common{left, right};
        for (std::size_t i = 0; i < spans.size(); ++i) {
            places[i] = m_source.placeOf(left & ~63, top + int(i));
            common = {std::max(common.begin, spans[i].begin), std::min(common.end, spans[i].end)};
        }
        for (int x = left & ~63; x < right; x += side) {
            if (common.begin <= x && x + side <= common.end) {
                layWhole({x, top}, places);
            } else {
                layPart({x, top}, places, spans);
            }
            for (TurnedSheet::Place& place : places)
                place = m_source.next(place);
        }
    }

private:
    void layWhole(Point at, std::span<const TurnedSheet::Place> places)
    {
        std::array<std::uint64_t, side> ink;
        std::array<std::uint64_t, side> covered;
        m_source.words(places, ink.data());
        if (m_covers)
            m_covers->words(places, covered.data());
        for (std::size_t i = 0; i < places.size(); ++i)
            lay(at, i, ink[i], m_covers ? covered[i] : allBits);
    }

    void layPart(Point at, std::span<const TurnedSheet::Place> places, std::span<const Span> spans)
    {
        for (std::size_t i = 0; i < places.size(); ++i) {
            const int left = std::max(spans[i].begin, at.x);
            const int right = std::min(spans[i].end, at.x + side);
            if (left >= right)
                continue;
            const std::uint64_t mask = maskFrom(left) & maskUpTo(right);
            lay(at, i, m_source.plainWord(places[i], mask), m_covers ? m_covers->plainWord(places[i], mask) : mask);
        }
    }

    void lay(Point at, std::size_t row, std::uint64_t ink, std::uint64_t covered)
    {
        std::uint64_t& word = m_bitmap.row(at.y + int(row))[at.x >> 6];
        __builtin_prefetch(&word + 16, 1);
        word = (m_transparent ? word : word & ~covered) | ink;
    }

    Bitmap& m_bitmap;
    const TurnedSheet& m_source;
    bool m_transparent;
    const TurnedSheet* m_covers;
};

// Lays the strips down turned. Where a shape is given, which lies as the strips do, only what it covers is replaced.
void layDown(Bitmap& bitmap, const Strips& strips, const InverseTurn& turn, bool transparent, const Strips* shape)
{
    const TurnedSheet source(strips, turn);
    std::optional<TurnedSheet> covers;
    if (shape)
        covers.emplace(*shape, turn);
    const Rect target = turnedBox(strips.box(), turn, bitmap.bounds());
    const int bands = (target.height() + Layer::side - 1) / Layer::side;
    inParallel(bands, rowsWorthACore(bitmap.wordsPerRow() * 32) / Layer::side + 1, [&](int begin, int end) {
        Layer layer(bitmap, source, transparent, covers ? &*covers : nullptr);
        std::vector<Span> spans;
        for (int band = begin; band < end; ++band) {
            const int top = target.top + band * Layer::side;
            spans.clear();
            for (int y = top; y < std::min(top + Layer::side, target.bottom); ++y)
                spans.push_back(coveredSpan(strips.box(), turn, {target.left, target.right}, y));
            layer.layBand(top, spans, target.left, target.right);
        }
    });
}

} // namespace

void rotate(Bitmap& bitmap, double radians, Point pivot, bool transparent, const Region* region)
{
    if (!std::isfinite(radians))
        throw ImagingError("The angle of a rotation must be a number.");
    const Region selected = region ? intersect(*region, Region(bitmap.bounds())) : Region(bitmap.bounds());
    if (selected.empty())
        return;
    // Whole quarters are turned exactly; at most 45 degrees are left, at which the source's rows are nearly the
    // result's.
    const double quarterTurn = std::numbers::pi / 2;
    const double angle = std::remainder(radians, 4 * quarterTurn);
    const int quarters = int(std::lround(angle / quarterTurn));
    const InverseTurn turn(angle - quarters * quarterTurn, pivot);

    if (quarters != 0 && isFar(pivot)) {
        fill(bitmap, selected, false);
        return;
    }
    const Strips lifted = lift(bitmap, selected, pivot, quarters & 3);
    fill(bitmap, selected, false);
    if (transparent || selected.rects().size() == 1) {
        layDown(bitmap, lifted, turn, transparent, nullptr);
        return;
    }
    // Paper of a region that is no rectangle must be told from what lies outside of it.
    const Strips shape = shapeOf(selected, pivot, quarters & 3);
    layDown(bitmap, lifted, turn, transparent, &shape);
}

} // namespace imaging
