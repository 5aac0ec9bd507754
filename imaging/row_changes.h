// A row of a bitmap as the places where it changes between paper and ink, and back.
#pragma once

#include <cstdint>
#include <span>

namespace imaging {

/// Fills a row of the given width with runs: what begins as paper changes at each place. They ascend, two at one place
/// cancel each other, and the last one is the width. With inverted, the row begins as ink. The padding is paper.
void layRuns(std::uint64_t* row, int width, std::span<const int> changes, bool inverted);

} // namespace imaging
