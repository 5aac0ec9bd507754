// Groups of more than a few pixels are found by labelling runs, band by band. A group belongs to the band in which its
// first row lies. As a group that counts is at most `side` rows high, a band sees all of its own groups in a window
// that begins one row above it, where a group of an earlier band would show, and ends `side` + 1 rows below: a group
// that gets there is too high. Bands are at least as high as what their windows reach beyond them. So every second band
// can be worked on at the same time, and the others after that: no window reaches rows that another thread is changing,
// and as groups vanish whole or not at all, it does not matter that some are gone already.

#include "imaging/small_groups.h"

#include <algorithm>
#include <vector>

#include "imaging/bits.h"
#include "imaging/error.h"
#include "imaging/parallel.h"
#include "imaging/specks.h"

namespace imaging {

namespace {

// At some 50 bytes each, with their groups and while they are moved to larger memory, 650 MB.
constexpr std::size_t mostRuns = 13'000'000;

// The runs of one window and the groups that they form.
class Window
{
public:
    Window(Bitmap& bitmap, GroupsOf kind, int side, const Region* region)
        : m_bitmap(bitmap), m_kind(kind), m_side(side), m_region(region), m_edges(roomForEdges(bitmap.width()))
    {}

    // Removes the small groups whose first row is in [begin, end).
    void work(int begin, int end)
    {
        m_runs.clear();
        m_groups.assign(1, Group());
        const int top = std::max(begin - 1, 0);
        const int bottom = int(std::min<std::int64_t>(std::int64_t(end) + m_side + 1, m_bitmap.height()));
        std::size_t previous = 0;
        std::size_t current = 0;
        for (int y = top; y < bottom; ++y) {
            findRuns(y);
            if (m_runs.size() > mostRuns)
                throw ImagingError("The image has too many small parts for a filter of this size.");
            joinRow(previous, current, y);
            previous = current;
            current = m_runs.size();
        }
        for (const Run& run : m_runs) {
            const std::uint32_t group = root(run.group);
            if (group != kept && m_groups[group].top >= begin && m_groups[group].top < end)
                setSpan(m_bitmap.row(run.y), run.begin, run.end, m_kind == GroupsOf::paper);
        }
    }

private:
    struct Run
    {
        int begin;
        int end;
        int y;
        std::uint32_t group;
    };

    struct Group
    {
        std::uint32_t parent = 0;
        int left = 0;
        int right = 0;
        int top = 0;
    };

    // The group of everything that stays: what is too large, at the border or not wholly in the region.
    static constexpr std::uint32_t kept = 0;

    std::uint32_t root(std::uint32_t group)
    {
        while (m_groups[group].parent != group) {
            m_groups[group].parent = m_groups[m_groups[group].parent].parent;
            group = m_groups[group].parent;
        }
        return group;
    }

    void findRuns(int y)
    {
        std::span<int> edges = findInkEdges(m_bitmap.row(y), m_bitmap.width(), m_edges);
        if (m_kind == GroupsOf::paper) {
            // Paper lies between the ink: from the left border to the first edge, and from the last one to the right.
            edges = {edges.data() - 1, edges.size() + 2};
            edges.front() = 0;
            edges.back() = m_bitmap.width();
        }
        const std::span<const Rect> selected = m_region ? m_region->band(y) : std::span<const Rect>();
        auto span = selected.begin();
        for (std::size_t i = 0; i < edges.size(); i += 2) {
            const Run run{edges[i], edges[i + 1], y, 0};
            if (run.begin == run.end)
                continue;
            bool stays = run.end - run.begin > m_side || atBorder(run);
            if (m_region && !stays) {
                while (span != selected.end() && span->right < run.end)
                    ++span;
                stays = span == selected.end() || span->left > run.begin;
            }
            m_runs.push_back(run);
            m_runs.back().group = stays ? kept : unlabelled;
        }
    }

    bool atBorder(const Run& run) const
    {
        return m_kind == GroupsOf::paper &&
               (run.begin == 0 || run.end == m_bitmap.width() || run.y == 0 || run.y == m_bitmap.height() - 1);
    }

    // Joins the runs of row y, from `current` on, to those of the row above, from `previous` on.
    void joinRow(std::size_t previous, const std::size_t current, int y)
    {
        const int reach = m_kind == GroupsOf::ink ? 1 : 0;
        for (std::size_t i = current; i < m_runs.size(); ++i) {
            Run& run = m_runs[i];
            while (previous < current && m_runs[previous].end + reach <= run.begin)
                ++previous;
            for (std::size_t j = previous; j < current && m_runs[j].begin < run.end + reach; ++j) {
                run.group =
                    run.group == unlabelled ? extend(m_runs[j].group, run) : join(run.group, m_runs[j].group, y);
            }
            if (run.group == unlabelled) {
                run.group = std::uint32_t(m_groups.size());
                m_groups.push_back({run.group, run.begin, run.end, y});
            }
        }
    }

    std::uint32_t extend(std::uint32_t index, const Run& run)
    {
        index = root(index);
        if (index == kept)
            return kept;
        Group& group = m_groups[index];
        group.left = std::min(group.left, run.begin);
        group.right = std::max(group.right, run.end);
        return keepIfLarge(index, run.y);
    }

    std::uint32_t join(std::uint32_t a, std::uint32_t b, int y)
    {
        a = root(a);
        b = root(b);
        if (a == b)
            return a;
        if (a == kept || b == kept) {
            m_groups[a].parent = m_groups[b].parent = kept;
            return kept;
        }
        m_groups[b].parent = a;
        Group& group = m_groups[a];
        group.left = std::min(group.left, m_groups[b].left);
        group.right = std::max(group.right, m_groups[b].right);
        group.top = std::min(group.top, m_groups[b].top);
        return keepIfLarge(a, y);
    }

    std::uint32_t keepIfLarge(std::uint32_t index, int y)
    {
        Group& group = m_groups[index];
        if (group.right - group.left <= m_side && y - group.top < m_side)
            return index;
        group.parent = kept;
        return kept;
    }

    static constexpr std::uint32_t unlabelled = ~std::uint32_t(0);

    Bitmap& m_bitmap;
    const GroupsOf m_kind;
    const int m_side;
    const Region* const m_region;
    std::vector<int> m_edges;
    std::vector<Run> m_runs;
    std::vector<Group> m_groups;
};

} // namespace

void removeSmallGroups(Bitmap& bitmap, GroupsOf kind, int side, const Region* region)
{
    const Rect area = region ? region->box().intersect(bitmap.bounds()) : bitmap.bounds();
    if (side < 1 || area.empty())
        return;
    side = std::min(side, std::max(bitmap.width(), bitmap.height()));
    const int height = std::max(256, side + 2);
    const int bands = (area.height() + height - 1) / height;
    // As many windows at a time as may together hold that many runs, whatever the pixels.
    const std::int64_t most = std::int64_t(height + side + 2) * (bitmap.width() / 2 + 1);
    const int windows = int(std::max<std::int64_t>(1, std::int64_t(mostRuns) / most));
    for (int first : {0, 1}) {
        const int count = (bands - first + 1) / 2;
        const auto topOf = [&](int band) { return area.top + (2 * band + first) * height; };
        const auto bottomOf = [&](int band) { return std::min(topOf(band) + height, area.bottom); };
        if (side <= largestSpeck) {
            inParallel(count, 1, [&](int begin, int end) {
                for (int i = begin; i < end; ++i)
                    removeSpecks(bitmap, kind, side, region, topOf(i), bottomOf(i));
            });
            continue;
        }
        inParallel(count, (count + windows - 1) / windows, [&](int begin, int end) {
            Window window(bitmap, kind, side, region);
            for (int i = begin; i < end; ++i)
                window.work(topOf(i), bottomOf(i));
        });
    }
}

} // namespace imaging
