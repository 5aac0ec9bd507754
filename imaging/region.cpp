#include "imaging/region.h"

#include <climits>

namespace imaging {

// Takes bands from top to bottom and keeps the list canonical while it grows.
class RegionBuilder
{
public:
    // The spans of the band being built, as alternating left and right edges.
    std::vector<int> edges;

    // Ends the band [top, bottom). Bands come in order of y.
    void endBand(int top, int bottom)
    {
        if (!edges.empty() && !joinsLastBand(top, bottom)) {
            m_lastBand = m_result.m_rects.size();
            for (std::size_t i = 0; i < edges.size(); i += 2)
                m_result.m_rects.push_back({edges[i], top, edges[i + 1], bottom});
        }
        edges.clear();
    }

    Region finish()
    {
        Rect box;
        for (const Rect& rect : m_result.m_rects)
            box = box.unite(rect);
        m_result.m_box = box;
        return std::move(m_result);
    }

private:
    bool joinsLastBand(int top, int bottom)
    {
        std::vector<Rect>& rects = m_result.m_rects;
        const std::size_t count = rects.size() - m_lastBand;
        if (rects.empty() || count * 2 != edges.size() || rects[m_lastBand].bottom != top)
            return false;
        for (std::size_t i = 0; i < count; ++i) {
            const Rect& rect = rects[m_lastBand + i];
            if (rect.left != edges[2 * i] || rect.right != edges[2 * i + 1])
                return false;
        }
        for (std::size_t i = 0; i < count; ++i)
            rects[m_lastBand + i].bottom = bottom;
        return true;
    }

    Region m_result;
    std::size_t m_lastBand = 0;
};

namespace {

// Walks a region band by band.
class BandCursor
{
public:
    explicit BandCursor(const Region& region) : m_next(region.rects().data()), m_end(m_next + region.rects().size())
    {
        advance();
    }

    bool done() const { return m_band.empty(); }
    int top() const { return m_band.front().top; }
    int bottom() const { return m_band.front().bottom; }
    bool covers(int y) const { return !done() && top() <= y; }

    // The next row after y at which this region changes.
    int nextChange(int y) const
    {
        if (done())
            return INT_MAX;
        return covers(y) ? bottom() : top();
    }

    std::span<const Rect> spansAt(int y) const { return covers(y) ? m_band : std::span<const Rect>(); }

    void moveTo(int y)
    {
        if (!done() && bottom() <= y)
            advance();
    }

private:
    void advance()
    {
        const Rect* first = m_next;
        while (m_next != m_end && m_next->top == first->top)
            ++m_next;
        m_band = {first, m_next};
    }

    const Rect* m_next;
    const Rect* m_end;
    std::span<const Rect> m_band;
};

// The edges of a band's spans, from left to right.
class EdgeCursor
{
public:
    explicit EdgeCursor(std::span<const Rect> spans) : m_spans(spans) {}

    int position() const
    {
        if (m_edge / 2 >= m_spans.size())
            return INT_MAX;
        const Rect& rect = m_spans[m_edge / 2];
        return m_edge % 2 ? rect.right : rect.left;
    }

    void advance() { ++m_edge; }
    bool inside() const { return m_edge % 2 != 0; }

private:
    std::span<const Rect> m_spans;
    std::size_t m_edge = 0;
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

// Sweeps both regions from top to bottom; keep(in a, in b) says which pixels belong to the result.
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
        m_rects.push_back(rect);
        m_box = rect;
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
        std::partition_point(m_rects.begin(), m_rects.end(), [y](const Rect& rect) { return rect.bottom <= y; });
    const auto last = std::partition_point(first, m_rects.end(), [y](const Rect& rect) { return rect.top <= y; });
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
    for (Rect& rect : m_rects)
        rect = rect.offset(dx, dy);
    m_box = m_box.offset(dx, dy);
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
