#pragma once

#include <windows.h>
#include <atomic>
#include <functional>

namespace desk::script {

/// Thrown on the script thread when the desk's window is gone.
struct DeskGone
{};

/// The script thread's foothold on the thread of the windows: a hidden window whose messages are handled in every
/// message loop of that thread, those of modal dialogs and menus included.
class Foothold
{
public:
    /// On the thread of the windows.
    Foothold();
    ~Foothold();
    Foothold(const Foothold&) = delete;
    Foothold& operator=(const Foothold&) = delete;

    DWORD threadId() const { return m_threadId; }
    /// On the windows' thread, when the desk's window is about to go: from then on nothing is run any more.
    void close() { m_open = false; }

    // The rest is for the script thread, and throws DeskGone.

    /// Runs the function on the windows' thread, between messages, and waits for it.
    void ask(const std::function<void()>& function) const;
    /// Waits until the messages posted so far have been taken from the queue and handled.
    void waitForPosted() const;
    /// Queued behind what was posted before: the keys Shift and Control count as held, or not, from then on.
    void postHeldKeys(bool shift, bool control) const;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    std::atomic<bool> m_open = true;
    DWORD m_threadId;
    HWND m_window;
    HANDLE m_passed = CreateEventW(nullptr, FALSE, FALSE, nullptr); // what was posted has been handled
};

} // namespace desk::script
