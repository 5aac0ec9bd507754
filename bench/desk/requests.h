#pragma once

#include <filesystem>

#include "bench/desk/bench_desk.h"

namespace bench {

/// Prints what a request of the worker takes on the raster file, and what its parts take when done one by one.
void benchRequests(BenchDesk& desk, const std::filesystem::path& sheet);

} // namespace bench
