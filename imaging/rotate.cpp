#include "imaging/rotate.h"

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "imaging/bits.h"
#include "imaging/crop.h"
#include "imaging/error.h"
#include "imaging/fill.h"
#include "imaging/mirror.h"
#include "imaging/parallel.h"
#include "imaging/paste.h"
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

// Pixels lifted from an image, with paper around them.
struct Sheet
{
    Bitmap pixels;
    Rect box; // where the pixels belong, without the margin

    Point origin() const { return {box.left - sheetMargin, box.top - sheetMargin}; }
};

Bitmap sheetFor(const Rect& box)
{
    constexpr int margin = sheetMargin + sheetRightMargin;
    return Bitmap::scratch({box.width() + margin, box.height() + 2 * sheetMargin}, margin);
}

Region offsetBy(Region region, int dx, int dy)
{
    region.offset(dx, dy);
    return region;
}

// The region's pixels; the quarters of the turn are made here, once and for all. There are at most three bitmaps of the
// image's size at any time, the image among them.
Sheet lift(const Bitmap& bitmap, const Region& region, Point pivot, int quarters)
{
    const Rect box = region.box();
    const Rect place = turnedByQuarters(box, pivot, quarters);
    Bitmap part;
    if (quarters != 0) {
        part = extract(bitmap, box);
        fill(part, offsetBy(subtract(Region(box), region), -box.left, -box.top), false);
        part = turnedByQuarters(part, quarters);
    }
    Sheet sheet{sheetFor(place), place};
    if (quarters != 0) {
        paste(sheet.pixels, part, {sheetMargin, sheetMargin}, PasteMode::opaque);
    } else {
        const Region inSheet = offsetBy(region, -sheet.origin().x, -sheet.origin().y);
        paste(sheet.pixels, bitmap, {-sheet.origin().x, -sheet.origin().y}, PasteMode::opaque);
        fill(sheet.pixels, subtract(Region(sheet.pixels.bounds()), inSheet), false);
    }
    return sheet;
}

// Ink all over the region, turned by quarters.
Sheet shapeOf(const Region& region, Point pivot, int quarters)
{
    std::vector<Rect> rects;
    for (const Rect& rect : region.rects())
        rects.push_back(turnedByQuarters(rect, pivot, quarters));
    const Region turned = Region::fromRects(rects);
    Sheet shape{sheetFor(turned.box()), turned.box()};
    fill(shape.pixels, offsetBy(turned, -shape.origin().x, -shape.origin().y), true);
    return shape;
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

// Lays the sheet down turned. Where `covers` is given it tells which of its pixels replace what is there, paper too.
void layDown(Bitmap& bitmap, const Sheet& sheet, const InverseTurn& turn, bool transparent, const Sheet* shape)
{
    const TurnedSheet source(sheet.pixels, sheet.origin(), turn);
    const Bitmap noShape({1, 1});
    const TurnedSheet covers(shape ? shape->pixels : noShape, sheet.origin(), turn);
    const Rect target = turnedBox(sheet.box, turn, bitmap.bounds());
    constexpr int bandHeight = 64;
    const int bands = (target.height() + bandHeight - 1) / bandHeight;
    // Squares of 64 x 64 pixels, so that the source rows of a square stay in the processor's nearest cache.
    inParallel(bands, rowsWorthACore(bitmap.wordsPerRow() * 32) / bandHeight + 1, [&](int begin, int end) {
        for (int band = begin; band < end; ++band) {
            const int top = target.top + band * bandHeight;
            const int rows = std::min(bandHeight, target.bottom - top);
            std::array<Span, bandHeight> spans;
            for (int i = 0; i < rows; ++i)
                spans[std::size_t(i)] = coveredSpan(sheet.box, turn, {target.left, target.right}, top + i);
            for (int x = target.left & ~63; x < target.right; x += 64) {
                for (int i = 0; i < rows; ++i) {
                    const int left = std::max(spans[std::size_t(i)].begin, x);
                    const int right = std::min(spans[std::size_t(i)].end, x + 64);
                    if (left >= right)
                        continue;
                    const std::uint64_t mask = maskFrom(left) & maskUpTo(right);
                    std::uint64_t& word = bitmap.row(top + i)[x >> 6];
                    __builtin_prefetch(&word + 16, 1);
                    if (!transparent)
                        word &= ~(shape ? covers.word(x, top + i, mask) : mask);
                    word |= source.word(x, top + i, mask);
                }
            }
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
    const Sheet lifted = lift(bitmap, selected, pivot, quarters & 3);
    fill(bitmap, selected, false);
    if (transparent || selected.rects().size() == 1) {
        layDown(bitmap, lifted, turn, transparent, nullptr);
        return;
    }
    // Paper of a region that is no rectangle must be told from what lies outside of it.
    const Sheet shape = shapeOf(selected, pivot, quarters & 3);
    layDown(bitmap, lifted, turn, transparent, &shape);
}

} // namespace imaging
