#include "tests/module/support/held_objects.h"

#include <commctrl.h>
#include <cstring>
#include <gtest/gtest.h>
#include <set>

#include "standin/desk/gdi_count.h"

namespace test {

namespace {

std::set<HHOOK> hooksHeld;
std::set<UINT_PTR> timersHeld;

// The system's own, which the program's calls are led past while a watch lives.
template <typename Function> Function* systemCall(const char* name, const wchar_t* library = L"user32.dll")
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}

UINT_PTR WINAPI noteSetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure)
{
    static const auto system = systemCall<decltype(SetTimer)>("SetTimer");
    const UINT_PTR timer = system(window, id, period, procedure);
    if (timer && !window)
        timersHeld.insert(timer);
    return timer;
}

BOOL WINAPI noteKillTimer(HWND window, UINT_PTR id)
{
    static const auto system = systemCall<decltype(KillTimer)>("KillTimer");
    const BOOL killed = system(window, id);
    if (killed && !window)
        timersHeld.erase(id);
    return killed;
}

HHOOK WINAPI noteSetHook(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread)
{
    static const auto system = systemCall<decltype(SetWindowsHookExW)>("SetWindowsHookExW");
    const HHOOK hook = system(kind, procedure, module, thread);
    if (hook)
        hooksHeld.insert(hook);
    return hook;
}

BOOL WINAPI noteRemoveHook(HHOOK hook)
{
    static const auto system = systemCall<decltype(UnhookWindowsHookEx)>("UnhookWindowsHookEx");
    const BOOL removed = system(hook);
    if (removed)
        hooksHeld.erase(hook);
    return removed;
}

DWORD WINAPI hastyTime()
{
    static DWORD time = 0;
    return time += 25;
}

ULONG_PTR realTime()
{
    return reinterpret_cast<ULONG_PTR>(systemCall<void()>("GetTickCount", L"kernel32.dll"));
}

template <typename Function> ULONG_PTR addressOf(Function* function)
{
    return reinterpret_cast<ULONG_PTR>(function);
}

struct Detour
{
    const char* name;
    ULONG_PTR note;
};
const Detour detours[] = {
    {"SetTimer", addressOf(noteSetTimer)},
    {"KillTimer", addressOf(noteKillTimer)},
    {"SetWindowsHookExW", addressOf(noteSetHook)},
    {"UnhookWindowsHookEx", addressOf(noteRemoveHook)},
};

// Puts `to` in the place of `from` among the functions that this program imports; how often it stood there.
int replaceImport(ULONG_PTR from, ULONG_PTR to)
{
    auto* base = reinterpret_cast<BYTE*>(GetModuleHandleW(nullptr));
    const auto* headers =
        reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    int replaced = 0;
    const auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; library->Name; ++library) {
        for (auto* place = reinterpret_cast<ULONG_PTR*>(base + library->FirstThunk); *place; ++place) {
            if (*place != from)
                continue;
            DWORD protection = 0;
            VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &protection);
            *place = to;
            VirtualProtect(place, sizeof(*place), protection, &protection);
            ++replaced;
        }
    }
    return replaced;
}

template <typename Visit> void forEachThreadWindow(Visit visit)
{
    const auto call = [](HWND window, LPARAM data) -> BOOL {
        (*reinterpret_cast<Visit*>(data))(window);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), call, reinterpret_cast<LPARAM>(&visit));
}

// Where the operating system does not answer, every number that a handle could have is tried.
int kernelHandles()
{
    DWORD count = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &count) && count)
        return static_cast<int>(count);
    int used = 0;
    for (ULONG_PTR number = 4; number < 0x4000; number += 4) {
        DWORD flags = 0;
        used += GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags) != FALSE;
    }
    return used;
}

bool isCursor(HANDLE handle)
{
    ICONINFO info = {};
    if (!GetIconInfo(static_cast<HICON>(handle), &info))
        return false;
    DeleteObject(info.hbmMask);
    if (info.hbmColor)
        DeleteObject(info.hbmColor);
    return true;
}

} // namespace

HookAndTimerWatch::HookAndTimerWatch()
{
    hooksHeld.clear();
    timersHeld.clear();
    for (const Detour& detour : detours)
        EXPECT_GT(replaceImport(addressOf(systemCall<void()>(detour.name)), detour.note), 0)
            << detour.name << " is not watched";
}

HookAndTimerWatch::~HookAndTimerWatch()
{
    for (const Detour& detour : detours)
        replaceImport(detour.note, addressOf(systemCall<void()>(detour.name)));
}

int HookAndTimerWatch::hooks()
{
    return static_cast<int>(hooksHeld.size());
}

int HookAndTimerWatch::threadTimers()
{
    return static_cast<int>(timersHeld.size());
}

HastyClock::HastyClock()
{
    EXPECT_GT(replaceImport(realTime(), addressOf(hastyTime)), 0);
}

HastyClock::~HastyClock()
{
    replaceImport(addressOf(hastyTime), realTime());
}

HeldObjects HeldObjects::now()
{
    HeldObjects held;
    forEachThreadWindow([&held](HWND) { ++held.windows; });
    // The lower halves of the handles of windows, cursors and menus are even numbers, and stand for the whole.
    for (ULONG_PTR number = 0x20; number < 0xFFF0; number += 2) {
        const auto handle = reinterpret_cast<HANDLE>(number);
        held.cursors += isCursor(handle);
        held.menus += IsMenu(static_cast<HMENU>(handle)) != FALSE;
    }
    held.gdi = gdiObjects();
    held.handles = kernelHandles();
    return held;
}

std::ostream& operator<<(std::ostream& out, const HeldObjects& held)
{
    return out << held.gdi << " graphics objects, " << held.windows << " windows, " << held.cursors << " cursors, "
               << held.menus << " menus, " << held.handles << " handles";
}

int toolTips()
{
    int count = 0;
    forEachThreadWindow([&count](HWND window) {
        wchar_t name[64] = {};
        GetClassNameW(window, name, 64);
        count += std::wcscmp(name, TOOLTIPS_CLASSW) == 0;
    });
    return count;
}

} // namespace test
