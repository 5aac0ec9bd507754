// Works windows that run a loop of their own, as a hand would: by a timer of the thread.
#pragma once

#include <windows.h>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// Steps run in their order at the thread's timer; each is asked again until it returns true. A step that is never done
// fails the test and closes whatever dialogs of this thread are open, so that the test comes back.
class Driver
{
public:
    explicit Driver(std::vector<std::function<bool()>> steps) : m_steps(std::move(steps))
    {
        current() = this;
        m_timer = ::SetTimer(nullptr, 0, 10, tick);
    }
    ~Driver()
    {
        ::KillTimer(nullptr, m_timer);
        current() = nullptr;
        EXPECT_EQ(m_next, m_steps.size()) << "not every step was reached";
    }
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

private:
    static Driver*& current()
    {
        static Driver* driver = nullptr;
        return driver;
    }
    static BOOL CALLBACK giveUp(HWND window, LPARAM)
    {
        if (::IsWindowVisible(window))
            ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
        return TRUE;
    }
    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD)
    {
        Driver* driver = current();
        if (!driver || driver->m_busy)
            return;
        driver->m_busy = true;
        if (driver->m_next < driver->m_steps.size() && driver->m_steps[driver->m_next]()) {
            ++driver->m_next;
            driver->m_waited = 0;
        } else if (++driver->m_waited > 1500) {
            ADD_FAILURE() << "step " << driver->m_next << " never came about";
            ::EnumThreadWindows(::GetCurrentThreadId(), giveUp, 0);
            driver->m_waited = 0;
        }
        if (current() == driver)
            driver->m_busy = false;
    }

    std::vector<std::function<bool()>> m_steps;
    std::size_t m_next = 0;
    int m_waited = 0;
    bool m_busy = false;
    UINT_PTR m_timer = 0;
};

// A visible window of this thread with the given title, or null.
inline HWND windowTitled(const std::wstring& title)
{
    struct Search
    {
        const std::wstring& title;
        HWND found;
    } search{title, nullptr};
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM parameter) -> BOOL {
            Search* wanted = reinterpret_cast<Search*>(parameter);
            wchar_t text[256]{};
            ::GetWindowTextW(window, text, 256);
            if (::IsWindowVisible(window) && wanted->title == text)
                wanted->found = window;
            return wanted->found == nullptr;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// A driver's step: once a window of that title is there, works it.
inline std::function<bool()> atWindow(const std::wstring& title, const std::function<void(HWND)>& work)
{
    return [=] {
        const HWND window = windowTitled(title);
        if (window)
            work(window);
        return window != nullptr;
    };
}

// Handles the messages that are waiting until `done` holds; false when it did not within ten seconds.
inline bool pumpUntil(const std::function<bool()>& done)
{
    const ULONGLONG start = ::GetTickCount64();
    while (!done()) {
        MSG message{};
        if (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        } else if (::GetTickCount64() - start > 10000) {
            return false;
        } else {
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        }
    }
    return true;
}
