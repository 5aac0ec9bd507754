// Groups are found by labelling runs, band by band. A group belongs to the band in which its first row lies. As a group
// that counts is at most `side` rows high, a band sees all of its own groups in a window that begins one row above it,
// where a group of an earlier band would show, and ends `side` + 1 rows below: a group that gets there is too high.
// Bands are at least as high as what their windows reach beyond them. So every second band can be worked on at the same
// time, and the others after that: no window reaches rows that another thread is changing, and as groups vanish whole
// or not at all, it does not matter that some are gone already.

#include "imaging/small_groups.h"

#include "imaging/bits.h"
#include "imaging/parallel.h"

#include <algorithm>
#include <vector>

namespace imaging {

namespace {

/// The runs of one window and the groups that they form.
class Window
{
public:
    Window(Bitmap& bitmap, GroupsOf kind, int side, const Region* region)
        : bitmap_(bitmap), kind_(kind), side_(side), region_(region), edges_(std::size_t(bitmap.width()) + 3)
    {}

    /// Removes the small groups whose first row is in [begin, end).
    void work(int begin, int end)
    {
        runs_.clear();
        groups_.assign(1, Group());
        const int top = std::max(begin - 1, 0);
        const int bottom = int(std::min<std::int64_t>(std::int64_t(end) + side_ + 1, bitmap_.height()));
        std::size_t previous = 0;
        std::size_t current = 0;
        for (int y = top; y < bottom; ++y) {
            findRuns(y);
            joinRow(previous, current, y);
            previous = current;
            current = runs_.size();
        }
        for (const Run& run : runs_) {
            const std::uint32_t group = root(run.group);
            if (group != kept && groups_[group].top >= begin && groups_[group].top < end)
                setSpan(bitmap_.row(run.y), run.begin, run.end, kind_ == GroupsOf::paper);
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

    /// The group of everything that stays: what is too large, at the border or not wholly in the region.
    static constexpr std::uint32_t kept = 0;

    std::uint32_t root(std::uint32_t group)
    {
        while (groups_[group].parent != group) {
            groups_[group].parent = groups_[groups_[group].parent].parent;
            group = groups_[group].parent;
        }
        return group;
    }

    void findRuns(int y)
    {
        int* edges = edges_.data();
        std::size_t count = findInkEdges(bitmap_.row(y), bitmap_.width(), edges + 1);
        if (kind_ == GroupsOf::paper) {
            // Paper lies between the ink: from the left border to the first edge, and from the last one to the right.
            edges[0] = 0;
            edges[count + 1] = bitmap_.width();
            count += 2;
        } else {
            ++edges;
        }
        const std::span<const Rect> selected = region_ ? region_->band(y) : std::span<const Rect>();
        auto span = selected.begin();
        for (std::size_t i = 0; i < count; i += 2) {
            const Run run{edges[i], edges[i + 1], y, 0};
            if (run.begin == run.end)
                continue;
            bool stays = run.end - run.begin > side_ || atBorder(run);
            if (region_ && !stays) {
                while (span != selected.end() && span->right < run.end)
                    ++span;
                stays = span == selected.end() || span->left > run.begin;
            }
            runs_.push_back(run);
            runs_.back().group = stays ? kept : unlabelled;
        }
    }

    bool atBorder(const Run& run) const
    {
        return kind_ == GroupsOf::paper &&
               (run.begin == 0 || run.end == bitmap_.width() || run.y == 0 || run.y == bitmap_.height() - 1);
    }

    /// Joins the runs of row y, from `current` on, to those of the row above, from `previous` on.
    void joinRow(std::size_t previous, const std::size_t current, int y)
    {
        const int reach = kind_ == GroupsOf::ink ? 1 : 0;
        for (std::size_t i = current; i < runs_.size(); ++i) {
            Run& run = runs_[i];
            while (previous < current && runs_[previous].end + reach <= run.begin)
                ++previous;
            for (std::size_t j = previous; j < current && runs_[j].begin < run.end + reach; ++j)
                run.group = run.group == unlabelled ? extend(runs_[j].group, run) : join(run.group, runs_[j].group, y);
            if (run.group == unlabelled) {
                run.group = std::uint32_t(groups_.size());
                groups_.push_back({run.group, run.begin, run.end, y});
            }
        }
    }

    std::uint32_t extend(std::uint32_t index, const Run& run)
    {
        index = root(index);
        if (index == kept)
            return kept;
        Group& group = groups_[index];
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
            groups_[a].parent = groups_[b].parent = kept;
            return kept;
        }
        groups_[b].parent = a;
        Group& group = groups_[a];
        group.left = std::min(group.left, groups_[b].left);
        group.right = std::max(group.right, groups_[b].right);
        group.top = std::min(group.top, groups_[b].top);
        return keepIfLarge(a, y);
    }

    std::uint32_t keepIfLarge(std::uint32_t index, int y)
    {
        Group& group = groups_[index];
        if (group.right - group.left <= side_ && y - group.top < side_)
            return index;
        group.parent = kept;
        return kept;
    }

    static constexpr std::uint32_t unlabelled = ~std::uint32_t(0);

    Bitmap& bitmap_;
    const GroupsOf kind_;
    const int side_;
    const Region* const region_;
    std::vector<int> edges_;
    std::vector<Run> runs_;
    std::vector<Group> groups_;
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
    for (int first : {0, 1}) {
        inParallel((bands - first + 1) / 2, 1, [&](int begin, int end) {
            Window window(bitmap, kind, side, region);
            for (int i = begin; i < end; ++i) {
                const int top = area.top + (2 * i + first) * height;
                window.work(top, std::min(top + height, area.bottom));
            }
        });
    }
}

} // namespace imaging
