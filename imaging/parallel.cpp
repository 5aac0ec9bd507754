#include "imaging/parallel.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace imaging {

void inParallel(int count, int minimum, const std::function<void(int begin, int end)>& work)
{
    const int cores = std::max(1, int(std::thread::hardware_concurrency()));
    const int parts = std::clamp(count / std::max(1, minimum), 1, cores);
    if (parts == 1) {
        if (count > 0)
            work(0, count);
        return;
    }
    std::mutex guard;
    std::exception_ptr failure;
    const auto run = [&](int part) {
        try {
            work(int(std::int64_t(count) * part / parts), int(std::int64_t(count) * (part + 1) / parts));
        } catch (...) {
            const std::lock_guard lock(guard);
            failure = std::current_exception();
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(std::size_t(parts));
    for (int part = 1; part < parts; ++part) {
        try {
            threads.emplace_back(run, part);
        } catch (const std::system_error&) {
            run(part); // The system has no thread to spare: this one does the part itself.
        }
    }
    run(0);
    for (std::thread& thread : threads)
        thread.join();
    if (failure)
        std::rethrow_exception(failure);
}

void inTurns(int count, const std::function<void(int index)>& work)
{
    std::atomic<int> next = 0;
    inParallel(count, 1, [&](int, int) {
        for (int index = next++; index < count; index = next++)
            work(index);
    });
}

int rowsWorthACore(std::ptrdiff_t wordsPerRow)
{
    // A thread costs some tens of microseconds, in which 256 KB can be worked on.
    constexpr std::ptrdiff_t words = 256 * 1024 / 8;
    return int(words / std::max<std::ptrdiff_t>(wordsPerRow, 1)) + 1;
}

} // namespace imaging
