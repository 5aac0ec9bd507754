#include "imaging/region.h"

#include <climits>

namespace imaging {

/// Takes bands from top to bottom and keeps the list canonical while it grows.
class RegionBuilder
{
public:
    /// The spans of the band being built, as alternating left and right edges.
    std::vector<int> edges;

    /// Ends the band [top, bottom). Bands come in order of y.
    void endBand(int top, int bottom)
    {
        if (!edges.empty() && !joinsLastBand(top, bottom)) {
            lastBand_ = result_.rects_.size();
            for (std::size_t i = 0; i < edges.size(); i += 2)
                result_.rects_.push_back({edges[i], top, edges[i + 1], bottom});
        }
        edges.clear();
    }

    Region finish()
    {
        Rect box;
        for (const Rect& rect : result_.rects_)
            box = box.unite(rect);
        result_.box_ = box;
        return std::move(result_);
    }

private:
    bool joinsLastBand(int top, int bottom)
    {
        std::vector<Rect>& rects = result_.rects_;
        const std::size_t count = rects.size() - lastBand_;
        if (rects.empty() || count * 2 != edges.size() || rects[lastBand_].bottom != top)
            return false;
        for (std::size_t i = 0; i < count; ++i) {
            const Rect& rect = rects[lastBand_ + i];
            if (rect.left != edges[2 * i] || rect.right != edges[2 * i + 1])
                return false;
        }
        for (std::size_t i = 0; i < count; ++i)
            rects[lastBand_ + i].bottom = bottom;
        return true;
    }

    Region result_;
    std::size_t lastBand_ = 0;
};

namespace {

/// Walks a region band by band.
class BandCursor
{
public:
    explicit BandCursor(const Region& region) : next_(region.rects().data()), end_(next_ + region.rects().size())
    {
        advance();
    }

    bool done() const { return band_.empty(); }
    int top() const { return band_.front().top; }
    int bottom() const { return band_.front().bottom; }
    bool covers(int y) const { return !done() && top() <= y; }

    /// The next row after y at which this region changes.
    int nextChange(int y) const
    {
        if (done())
            return INT_MAX;
        return covers(y) ? bottom() : top();
    }

    std::span<const Rect> spansAt(int y) const { return covers(y) ? band_ : std::span<const Rect>(); }

    void moveTo(int y)
    {
        if (!done() && bottom() <= y)
            advance();
    }

private:
    void advance()
    {
        const Rect* first = next_;
        while (next_ != end_ && next_->top == first->top)
            ++next_;
        band_ = {first, next_};
    }

    const Rect* next_;
    const Rect* end_;
    std::span<const Rect> band_;
};

/// The edges of a band's spans, from left to right.
class EdgeCursor
{
public:
    explicit EdgeCursor(std::span<const Rect> spans) : spans_(spans) {}

    int position() const
    {
        if (edge_ / 2 >= spans_.size())
            return INT_MAX;
        const Rect& rect = spans_[edge_ / 2];
        return edge_ % 2 ? rect.right : rect.left;
    }

    void advance() { ++edge_; }
    bool inside() const { return edge_ % 2 != 0; }

private:
    std::span<const Rect> spans_;
    std::size_t edge_ = 0;
};

template <class Keep>
void combineSpans(std::span<const Rect> a, std::span<const Rect> b, Keep keep, std::vector<int>& edges)
{
    EdgeCursor inA(a);
    EdgeCursor inB(b);
    bool kept = false;
    for (;;) {
        const int x = std::min(inA.position(), inB.position());
        if (x == INT_MAX)
            return;
        if (inA.position() == x)
            inA.advance();
        if (inB.position() == x)
            inB.advance();
        if (keep(inA.inside(), inB.inside()) != kept) {
            kept = !kept;
            edges.push_back(x);
        }
    }
}

/// Sweeps both regions from top to bottom; keep(in a, in b) says which pixels belong to the result.
template <class Keep> Region combine(const Region& a, const Region& b, Keep keep)
{
    RegionBuilder builder;
    BandCursor bandsA(a);
    BandCursor bandsB(b);
    int y = std::min(bandsA.nextChange(INT_MIN), bandsB.nextChange(INT_MIN));
    while (!bandsA.done() || !bandsB.done()) {
        const int next = std::min(bandsA.nextChange(y), bandsB.nextChange(y));
        combineSpans(bandsA.spansAt(y), bandsB.spansAt(y), keep, builder.edges);
        builder.endBand(y, next);
        bandsA.moveTo(next);
        bandsB.moveTo(next);
        y = next;
    }
    return builder.finish();
}

Region uniteAll(std::span<const Rect> rects)
{
    if (rects.size() == 1)
        return Region(rects.front());
    const std::size_t half = rects.size() / 2;
    return unite(uniteAll(rects.first(half)), uniteAll(rects.subspan(half)));
}

} // namespace

Region::Region(const Rect& rect)
{
    if (!rect.empty()) {
        rects_.push_back(rect);
        box_ = rect;
    }
}

Region Region::fromRects(std::span<const Rect> rects)
{
    std::vector<Rect> sorted;
    for (const Rect& rect : rects) {
        if (!rect.empty())
            sorted.push_back(rect);
    }
    if (sorted.empty())
        return Region();
    // In order of y the halves meet in few bands, so that uniting them costs little more than joining the lists.
    std::sort(sorted.begin(), sorted.end(),
              [](const Rect& a, const Rect& b) { return a.top != b.top ? a.top < b.top : a.left < b.left; });
    return uniteAll(sorted);
}

std::span<const Rect> Region::band(int y) const
{
    const auto first =
        std::partition_point(rects_.begin(), rects_.end(), [y](const Rect& rect) { return rect.bottom <= y; });
    const auto last = std::partition_point(first, rects_.end(), [y](const Rect& rect) { return rect.top <= y; });
    return {first, last};
}

bool Region::contains(Point p) const
{
    return containsSpan(p.y, p.x, p.x + 1);
}

bool Region::containsSpan(int y, int left, int right) const
{
    const std::span<const Rect> spans = band(y);
    const auto span =
        std::partition_point(spans.begin(), spans.end(), [left](const Rect& rect) { return rect.right <= left; });
    return span != spans.end() && span->left <= left && right <= span->right;
}

void Region::offset(int dx, int dy)
{
    for (Rect& rect : rects_)
        rect = rect.offset(dx, dy);
    box_ = box_.offset(dx, dy);
}

Region unite(const Region& a, const Region& b)
{
    return combine(a, b, [](bool inA, bool inB) { return inA || inB; });
}

Region subtract(const Region& a, const Region& b)
{
    return combine(a, b, [](bool inA, bool inB) { return inA && !inB; });
}

Region intersect(const Region& a, const Region& b)
{
    return combine(a, b, [](bool inA, bool inB) { return inA && inB; });
}

} // namespace imaging
