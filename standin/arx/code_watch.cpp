#include "standin/arx/code_watch.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <mutex>
#include <process.h>
#include <vector>

#include "standin/afx/afx_thread.h"

namespace standin {

namespace {

struct Timer
{
    HWND window; // null for a timer of the thread
    UINT_PTR id;
    TIMERPROC procedure;
};

struct Hook
{
    HHOOK handle;
    HOOKPROC procedure;
};

struct Thread
{
    HANDLE handle;
    DWORD id;
    const void* code;
};

struct WindowClass
{
    ATOM name;
    HINSTANCE instance;
    WNDPROC procedure;
};

struct Notes
{
    std::mutex mutex; // threads of modules take notes as well
    std::vector<Timer> timers;
    std::vector<Hook> hooks;
    std::vector<Thread> threads;
    std::vector<WindowClass> windowClasses;
    std::map<HMODULE, int> references;
};

// Never destroyed: threads may still end while the process does.
Notes& notes()
{
    static auto& all = *new Notes;
    return all;
}

template <class Function> const void* addressOf(Function* function)
{
    return reinterpret_cast<const void*>(function);
}

UINT_PTR WINAPI setTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure)
{
    const UINT_PTR given = SetTimer(window, id, period, procedure);
    if (given != 0 && procedure) {
        const UINT_PTR key = window ? id : given;
        const std::lock_guard guard(notes().mutex);
        std::erase_if(notes().timers, [&](const Timer& timer) { return timer.window == window && timer.id == key; });
        notes().timers.push_back({window, key, procedure});
    }
    return given;
}

BOOL WINAPI killTimer(HWND window, UINT_PTR id)
{
    {
        const std::lock_guard guard(notes().mutex);
        std::erase_if(notes().timers, [&](const Timer& timer) { return timer.window == window && timer.id == id; });
    }
    return KillTimer(window, id);
}

HHOOK WINAPI setWindowsHook(int kind, HOOKPROC procedure, HINSTANCE instance, DWORD thread)
{
    const HHOOK hook = SetWindowsHookExW(kind, procedure, instance, thread);
    if (hook) {
        const std::lock_guard guard(notes().mutex);
        notes().hooks.push_back({hook, procedure});
    }
    return hook;
}

BOOL WINAPI unhookWindowsHook(HHOOK hook)
{
    {
        const std::lock_guard guard(notes().mutex);
        std::erase_if(notes().hooks, [&](const Hook& noted) { return noted.handle == hook; });
    }
    return UnhookWindowsHookEx(hook);
}

ATOM note(ATOM name, HINSTANCE instance, WNDPROC procedure)
{
    if (name != 0) {
        const std::lock_guard guard(notes().mutex);
        notes().windowClasses.push_back({name, instance, procedure});
    }
    return name;
}

ATOM WINAPI registerClass(const WNDCLASSW* description)
{
    return note(RegisterClassW(description), description->hInstance, description->lpfnWndProc);
}

ATOM WINAPI registerClassEx(const WNDCLASSEXW* description)
{
    return note(RegisterClassExW(description), description->hInstance, description->lpfnWndProc);
}

// The thread is suspended, so that it is on the list before it can take itself off.
void noteThread(HANDLE thread, DWORD id, const void* code, DWORD flags)
{
    HANDLE own = nullptr;
    DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &own, 0, FALSE, DUPLICATE_SAME_ACCESS);
    {
        const std::lock_guard guard(notes().mutex);
        notes().threads.push_back({own, id, code});
    }
    if ((flags & CREATE_SUSPENDED) == 0)
        ResumeThread(thread);
}

HANDLE WINAPI createThread(LPSECURITY_ATTRIBUTES security, SIZE_T stack, LPTHREAD_START_ROUTINE start, LPVOID argument,
                           DWORD flags, LPDWORD id)
{
    DWORD given = 0;
    const HANDLE thread = CreateThread(security, stack, start, argument, flags | CREATE_SUSPENDED, &given);
    if (thread)
        noteThread(thread, given, addressOf(start), flags);
    if (id)
        *id = given;
    return thread;
}

std::uintptr_t __cdecl beginThread(void* security, unsigned stack, unsigned(__stdcall* start)(void*), void* argument,
                                   unsigned flags, unsigned* id)
{
    unsigned given = 0;
    const std::uintptr_t thread = _beginthreadex(security, stack, start, argument, flags | CREATE_SUSPENDED, &given);
    if (thread != 0)
        noteThread(reinterpret_cast<HANDLE>(thread), given, addressOf(start), flags);
    if (id)
        *id = given;
    return thread;
}

CWinThread* beginLibraryThread(AFX_THREADPROC start, LPVOID argument, int priority, UINT stack, DWORD flags,
                               LPSECURITY_ATTRIBUTES security)
{
    CWinThread* thread = AfxBeginThread(start, argument, priority, stack, flags | CREATE_SUSPENDED, security);
    if (thread)
        noteThread(thread->m_hThread, thread->m_nThreadID, addressOf(start), flags);
    return thread;
}

BOOL WINAPI getModuleHandle(DWORD flags, LPCWSTR name, HMODULE* file)
{
    const BOOL found = GetModuleHandleExW(flags, name, file);
    if (found && (flags & GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT) == 0) {
        const std::lock_guard guard(notes().mutex);
        ++notes().references[*file];
    }
    return found;
}

BOOL WINAPI freeLibrary(HMODULE file)
{
    {
        const std::lock_guard guard(notes().mutex);
        --notes().references[file];
    }
    return FreeLibrary(file);
}

// The thread's reference and its work in the file end together.
void WINAPI freeLibraryAndExitThread(HMODULE file, DWORD code)
{
    {
        const std::lock_guard guard(notes().mutex);
        --notes().references[file];
        for (Thread& thread : notes().threads) {
            if (thread.id == GetCurrentThreadId())
                thread.code = nullptr;
        }
    }
    FreeLibraryAndExitThread(file, code);
}

const void* replacementOf(const void* function)
{
    static const std::map<const void*, const void*> replacements = {
        {addressOf(SetTimer), addressOf(setTimer)},
        {addressOf(KillTimer), addressOf(killTimer)},
        {addressOf(SetWindowsHookExW), addressOf(setWindowsHook)},
        {addressOf(UnhookWindowsHookEx), addressOf(unhookWindowsHook)},
        {addressOf(RegisterClassW), addressOf(registerClass)},
        {addressOf(RegisterClassExW), addressOf(registerClassEx)},
        {addressOf(CreateThread), addressOf(createThread)},
        {addressOf(_beginthreadex), addressOf(beginThread)},
        {addressOf(AfxBeginThread), addressOf(beginLibraryThread)},
        {addressOf(GetModuleHandleExW), addressOf(getModuleHandle)},
        {addressOf(FreeLibrary), addressOf(freeLibrary)},
        {addressOf(FreeLibraryAndExitThread), addressOf(freeLibraryAndExitThread)},
    };
    const auto found = replacements.find(function);
    return found == replacements.end() ? nullptr : found->second;
}

bool bend(const void*& import)
{
    const void* replacement = replacementOf(import);
    DWORD before = 0;
    if (!replacement || !VirtualProtect(&import, sizeof import, PAGE_READWRITE, &before))
        return false;
    import = replacement;
    VirtualProtect(&import, sizeof import, before, &before);
    return true;
}

// A file that has just come into memory may lie where another one was.
void forget(HMODULE file)
{
    const std::lock_guard guard(notes().mutex);
    const auto ofFile = [&](const auto& item) { return liesIn(addressOf(item.procedure), file); };
    std::erase_if(notes().timers, ofFile);
    std::erase_if(notes().hooks, ofFile);
    std::erase_if(notes().windowClasses, ofFile);
    for (Thread& thread : notes().threads) {
        if (liesIn(thread.code, file))
            thread.code = nullptr;
    }
    notes().references.erase(file);
}

// The thread list keeps those that have ended until somebody counts.
void forgetEndedThreads()
{
    std::erase_if(notes().threads, [](const Thread& thread) {
        const bool ended = WaitForSingleObject(thread.handle, 0) == WAIT_OBJECT_0;
        if (ended)
            CloseHandle(thread.handle);
        return ended;
    });
}

template <class Item, class End> int endAll(std::vector<Item>& items, HMODULE file, End end)
{
    int ended = 0;
    std::erase_if(items, [&](const Item& item) {
        const bool ours = liesIn(addressOf(item.procedure), file);
        if (ours && end(item))
            ++ended;
        return ours;
    });
    return ended;
}

} // namespace

// Two files that import a function find it at the same address, so that is what an import is known by.
void watchCalls(HMODULE file)
{
    auto* base = reinterpret_cast<std::byte*>(file);
    const auto& start = *reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(base + start.e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (imports.VirtualAddress == 0)
        return;
    bool fresh = false;
    for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
         library->FirstThunk != 0; ++library) {
        for (auto* import = reinterpret_cast<const void**>(base + library->FirstThunk); *import; ++import)
            fresh |= bend(*import);
    }
    if (fresh)
        forget(file);
}

bool liesIn(const void* address, HMODULE file)
{
    HMODULE owner = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    return GetModuleHandleExW(flags, static_cast<LPCWSTR>(address), &owner) && owner == file;
}

LeftInSystem presentCalls()
{
    const std::lock_guard guard(notes().mutex);
    return {static_cast<int>(notes().timers.size()), static_cast<int>(notes().hooks.size())};
}

LeftInSystem endCallsInto(HMODULE file)
{
    const std::lock_guard guard(notes().mutex);
    LeftInSystem left;
    left.timers = endAll(notes().timers, file, [](const Timer& timer) { return KillTimer(timer.window, timer.id); });
    left.hooks = endAll(notes().hooks, file, [](const Hook& hook) { return UnhookWindowsHookEx(hook.handle); });
    left.windowClasses = endAll(notes().windowClasses, file, [](const WindowClass& windowClass) {
        return UnregisterClassW(MAKEINTATOM(windowClass.name), windowClass.instance) ||
               GetLastError() == ERROR_CLASS_HAS_WINDOWS;
    });
    return left;
}

StillRunning stillRunningIn(HMODULE file)
{
    const std::lock_guard guard(notes().mutex);
    forgetEndedThreads();
    const auto& threads = notes().threads;
    const auto runs = [&](const Thread& thread) { return liesIn(thread.code, file); };
    return {int(std::count_if(threads.begin(), threads.end(), runs)), std::max(notes().references[file], 0)};
}

} // namespace standin
