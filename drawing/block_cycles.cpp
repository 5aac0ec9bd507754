#include "drawing/block_cycles.h"

#include <algorithm>
#include <unordered_set>

namespace drawing {

namespace {

// The edges of a block are a run of the sorted edges, of which some have been followed.
struct Visit
{
    Handle block = 0;
    std::size_t next = 0;
};

std::size_t firstEdgeOf(const std::vector<BlockEdge>& edges, Handle block)
{
    const auto found = std::lower_bound(edges.begin(), edges.end(), block,
                                        [](const BlockEdge& edge, Handle handle) { return edge.from < handle; });
    return static_cast<std::size_t>(found - edges.begin());
}

} // namespace

// Depth first with a stack of its own, as a file may nest blocks deeper than the program's stack could follow.
std::optional<BlockEdge> findBlockCycle(std::vector<BlockEdge> edges)
{
    std::stable_sort(edges.begin(), edges.end(),
                     [](const BlockEdge& a, const BlockEdge& b) { return a.from < b.from; });
    std::unordered_set<Handle> done;
    std::unordered_set<Handle> open;
    for (const BlockEdge& start : edges) {
        if (done.contains(start.from)) {
            continue;
        }
        std::vector<Visit> stack{{start.from, firstEdgeOf(edges, start.from)}};
        open = {start.from};
        while (!stack.empty()) {
            Visit& visit = stack.back();
            if (visit.next == edges.size() || edges[visit.next].from != visit.block) {
                open.erase(visit.block);
                done.insert(visit.block);
                stack.pop_back();
                continue;
            }
            const BlockEdge& edge = edges[visit.next++];
            if (open.contains(edge.to)) {
                return edge;
            }
            if (!done.contains(edge.to)) {
                open.insert(edge.to);
                stack.push_back({edge.to, firstEdgeOf(edges, edge.to)});
            }
        }
    }
    return std::nullopt;
}

} // namespace drawing
