#include "imaging/rotate.h"

#include "imaging/bits.h"
#include "imaging/crop.h"
#include "imaging/error.h"
#include "imaging/fill.h"
#include "imaging/linear_span.h"
#include "imaging/parallel.h"
#include "imaging/paste.h"

#include <cmath>
#include <utility>
#include <vector>

namespace imaging {

namespace {

/// Paper around the lifted pixels, so that a sample that rounding puts just outside finds some.
constexpr int margin = 2;

/// Tells fast that there is no ink near a place: one flag for each cell of 32 x 32 pixels.
class InkMap
{
public:
    static constexpr int cellShift = 5;
    static constexpr int cell = 1 << cellShift;

    explicit InkMap(const Bitmap& bitmap)
        : columns_((bitmap.width() >> cellShift) + 2), rows_((bitmap.height() >> cellShift) + 2),
          flags_(std::size_t(columns_) * std::size_t(rows_), 0)
    {
        inParallel((bitmap.height() + cell - 1) / cell, rowsWorthACore(bitmap.wordsPerRow() * cell),
                   [&](int begin, int end) {
                       for (int y = begin; y < end; ++y)
                           markRow(bitmap, y);
                   });
    }

    /// Whether there may be ink in the rectangle between two pixels, the corners included; it is at most a cell wide
    /// and high. Pixels may lie outside.
    bool mayHoldInk(int x0, int y0, int x1, int y1) const
    {
        const auto column = [this](int x) { return std::clamp<std::ptrdiff_t>(x >> cellShift, 0, columns_ - 1); };
        const auto row = [this](int y) {
            return flags_.data() + std::clamp<std::ptrdiff_t>(y >> cellShift, 0, rows_ - 1) * columns_;
        };
        return row(y0)[column(x0)] | row(y0)[column(x1)] | row(y1)[column(x0)] | row(y1)[column(x1)];
    }

private:
    void markRow(const Bitmap& bitmap, int cellRow)
    {
        std::vector<std::uint64_t> any(std::size_t(bitmap.wordsPerRow()), 0);
        const int last = std::min((cellRow + 1) * cell, bitmap.height());
        for (int y = cellRow * cell; y < last; ++y) {
            const std::uint64_t* row = bitmap.row(y);
            for (std::size_t i = 0; i < any.size(); ++i)
                any[i] |= row[i];
        }
        char* flags = flags_.data() + std::ptrdiff_t(cellRow) * columns_;
        for (int column = 0; column < columns_ - 1; ++column) {
            const std::size_t word = std::size_t(column) / 2;
            if (word < any.size())
                flags[column] = std::uint32_t(any[word] >> (column % 2 ? 0 : 32)) != 0;
        }
    }

    std::ptrdiff_t columns_;
    std::ptrdiff_t rows_;
    std::vector<char> flags_;
};

/// The inverse of the turn: where a pixel of the result lies in the source. Positions are those of pixel centres.
struct InverseTurn
{
    double cosine;
    double sine;
    Point pivot;

    InverseTurn(double radians, Point about) : cosine(std::cos(radians)), sine(std::sin(radians)), pivot(about) {}

    double sourceX(double x, double y) const { return cosine * (x - pivot.x) + sine * (y - pivot.y) + pivot.x; }
    double sourceY(double x, double y) const { return cosine * (y - pivot.y) - sine * (x - pivot.x) + pivot.y; }
    double targetX(double x, double y) const { return cosine * (x - pivot.x) - sine * (y - pivot.y) + pivot.x; }
    double targetY(double x, double y) const { return cosine * (y - pivot.y) + sine * (x - pivot.x) + pivot.y; }
};

/// The rectangle of target pixels that may get something from the source rectangle.
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

/// Lifted pixels, and how a turned row of them is looked up. Coordinates are fixed-point with 32 bits of fraction,
/// begun anew every 64 pixels so that rounding does not pile up.
class TurnedSource
{
public:
    TurnedSource(const Bitmap& pixels, Point origin, const InverseTurn& turn)
        : pixels_(pixels), ink_(pixels), origin_(origin), turn_(turn), stepX_(fixed(turn.cosine)),
          stepY_(fixed(-turn.sine))
    {}

    /// The 64 pixels from (x, y) on, of which those in the mask are looked up and the others are paper.
    std::uint64_t word(int x, int y, std::uint64_t mask) const
    {
        // The half makes the cut to an integer the nearest pixel.
        const std::int64_t startX = fixed(turn_.sourceX(x, y) - origin_.x + 0.5);
        const std::int64_t startY = fixed(turn_.sourceY(x, y) - origin_.y + 0.5);
        std::uint64_t word = 0;
        for (int first = 0; first < 64; first += InkMap::cell) {
            const int last = first + InkMap::cell - 1;
            const auto atX = [&](int i) { return int((startX + i * stepX_) >> 32); };
            const auto atY = [&](int i) { return int((startY + i * stepY_) >> 32); };
            const std::uint64_t part = mask << first >> 32;
            if (part == 0 || !ink_.mayHoldInk(atX(first), atY(first), atX(last), atY(last)))
                continue;
            const int from = first + std::countl_zero(part) - 32;
            const int to = first + 32 - std::countr_zero(part);
            word |= gather(startX + from * stepX_, startY + from * stepY_, from, to);
        }
        return word & mask;
    }

private:
    static std::int64_t fixed(double value) { return std::int64_t(std::floor(value * 4294967296.0 + 0.5)); }

    std::uint64_t gather(std::int64_t x, std::int64_t y, int from, int to) const
    {
        const std::uint64_t* const words = pixels_.row(0);
        const std::ptrdiff_t wordsPerRow = pixels_.wordsPerRow();
        std::uint64_t word = 0;
        for (int i = from; i < to; ++i) {
            const std::uint64_t pixels = words[(y >> 32) * wordsPerRow + (x >> 38)];
            word = word << 1 | (pixels >> (~(x >> 32) & 63) & 1);
            x += stepX_;
            y += stepY_;
        }
        return word << (64 - to);
    }

    const Bitmap& pixels_;
    InkMap ink_;
    Point origin_;
    InverseTurn turn_;
    std::int64_t stepX_;
    std::int64_t stepY_;
};

/// The pixels of target row y, within `limits`, whose source lies in the box.
Span coveredSpan(const Rect& box, const InverseTurn& turn, Span limits, int y)
{
    const Span across = whereBetween(limits, turn.cosine, turn.sourceX(0, y), box.left - 0.5, box.right - 0.5);
    return whereBetween(across, -turn.sine, turn.sourceY(0, y), box.top - 0.5, box.bottom - 0.5);
}

/// The region's pixels, or with ink all of them, on a sheet of the box's size with a margin around it.
Bitmap sheetFor(const Rect& box)
{
    return Bitmap({box.width() + 2 * margin, box.height() + 2 * margin});
}

} // namespace

void rotate(Bitmap& bitmap, double radians, Point pivot, bool transparent, const Region* region)
{
    if (!std::isfinite(radians))
        throw ImagingError("The angle of a rotation must be a number.");
    const Region selected = region ? intersect(*region, Region(bitmap.bounds())) : Region(bitmap.bounds());
    if (selected.empty())
        return;
    const Rect box = selected.box();
    const Point origin{box.left - margin, box.top - margin};
    Bitmap lifted = sheetFor(box);
    paste(lifted, crop(bitmap, selected), {margin, margin}, PasteMode::opaque);
    // Paper of a region that is no rectangle must be told from what lies outside of it.
    const bool shaped = !transparent && selected.rects().size() > 1;
    Bitmap shape = shaped ? sheetFor(box) : Bitmap({1, 1});
    if (shaped) {
        Region moved = selected;
        moved.offset(-origin.x, -origin.y);
        fill(shape, moved, true);
    }
    fill(bitmap, selected, false);

    const InverseTurn turn(radians, pivot);
    const TurnedSource source(lifted, origin, turn);
    const TurnedSource shapeSource(shape, origin, turn);
    const Rect target = turnedBox(box, turn, bitmap.bounds());
    inParallel(target.height(), rowsWorthACore(bitmap.wordsPerRow() * 32), [&](int begin, int end) {
        for (int y = target.top + begin; y < target.top + end; ++y) {
            std::uint64_t* row = bitmap.row(y);
            const Span span = coveredSpan(box, turn, {target.left, target.right}, y);
            forEachWord(span.begin, span.end, [&](std::ptrdiff_t i, std::uint64_t mask) {
                const int x = int(i * 64);
                const std::uint64_t ink = source.word(x, y, mask);
                if (!transparent)
                    row[i] &= ~(shaped ? shapeSource.word(x, y, mask) : mask);
                row[i] |= ink;
            });
        }
    });
}

} // namespace imaging
