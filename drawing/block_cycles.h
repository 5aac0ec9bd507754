#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "drawing/object.h"

namespace drawing {

/// A block holds a reference to another. `tag` is the caller's.
struct BlockEdge
{
    Handle from = 0;
    Handle to = 0;
    std::size_t tag = 0;
};

/// A reference by which a block comes to hold itself, if there is one.
std::optional<BlockEdge> findBlockCycle(std::vector<BlockEdge> edges);

} // namespace drawing
