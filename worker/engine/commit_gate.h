#pragma once

#include <mutex>
#include <stdexcept>

namespace worker {

/// Thrown by work that comes to its writing after the worker was told to leave.
class StoppedError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Keeps the end of the process from cutting a file in two: work writes its results inside the gate, and whoever ends
/// the process closes the gate first. Used by both threads.
class CommitGate
{
public:
    /// Runs `write`, which close() then waits for. Throws StoppedError once the gate is closed.
    template <typename Write> void pass(Write&& write)
    {
        const std::lock_guard lock(m_mutex);
        if (m_closed)
            throw StoppedError("The worker was told to leave.");
        write();
    }

    /// Returns when no writing is under way; none begins after that.
    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
    }

private:
    std::mutex m_mutex;
    bool m_closed = false;
};

} // namespace worker
