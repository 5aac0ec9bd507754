#pragma once

#include <cstddef>
#include <functional>

namespace imaging {

/// Splits [0, count) into consecutive parts, one for each of the machine's cores but none shorter than minimum, and
/// works on them at the same time. Returns when all are done; an exception thrown in one of them is thrown again here.
void inParallel(int count, int minimum, const std::function<void(int begin, int end)>& work);

/// Calls work(0) ... work(count - 1), each as soon as a core is free: for pieces of work of unlike length. Otherwise as
/// above.
void inTurns(int count, const std::function<void(int index)>& work);

/// The rows that are worth a core of their own for work that takes little time beyond reading and writing the words.
int rowsWorthACore(std::ptrdiff_t wordsPerRow);

} // namespace imaging
