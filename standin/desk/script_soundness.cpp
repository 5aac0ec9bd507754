#include "standin/desk/script_soundness.h"

#include <windows.h>
#include <algorithm>
#include <string_view>

#include "standin/desk/gdi_count.h"
#include "standin/host.h"
#include "standin/text.h"

namespace desk::script {
namespace {

// Windows, tips, cached pictures and the like come and go; what leaks at each turn soon exceeds this.
constexpr int moreGdiObjects = 300;
constexpr int moreWindows = 150;
// A raster whose stroke was ended under way stays open, with its definition.
constexpr int mostOpenObjects = 2;
// The selection that was made last belongs to the desk.
constexpr int mostSelectionSets = 1;
// The module leaves its document locked when the current raster was erased behind its back, which has always been so.
constexpr int mostDocumentLocks = 5;
constexpr std::string_view locksLeft = "document locks that nobody gave back";
constexpr int mostHooks = 1;  // the tool's
constexpr int mostTimers = 3; // the monitor, and one-shots that wait

BOOL CALLBACK countOne(HWND, LPARAM counter)
{
    ++*reinterpret_cast<int*>(counter);
    return TRUE;
}

BOOL CALLBACK countWithChildren(HWND window, LPARAM counter)
{
    EnumChildWindows(window, countOne, counter);
    return countOne(window, counter);
}

int windowsOfThisThread()
{
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), countWithChildren, reinterpret_cast<LPARAM>(&count));
    return count;
}

std::wstring tooMany(int count, int most, const wchar_t* what)
{
    return count > most ? std::to_wstring(count) + L" " + what + L" in place of at most " + std::to_wstring(most)
                        : std::wstring();
}

} // namespace

Soundness::Soundness() : m_gdiObjects(gdiObjects()), m_windows(windowsOfThisThread()) {}

std::wstring Soundness::look()
{
    const auto breaches = standin::breaches();
    const auto found = std::ranges::find_if_not(breaches, isTolerated);
    return found == breaches.end() ? L"" : L"a rule of the host's was broken: " + standin::fromUtf8(*found);
}

bool Soundness::isTolerated(const std::string& breach)
{
    return breach.find(locksLeft) != std::string::npos;
}

std::wstring Soundness::lookAtRest() const
{
    const standin::HeldNow held = standin::heldNow();
    for (const std::wstring& wrong :
         {look(), tooMany(held.documentLocks, mostDocumentLocks, L"document locks"),
          tooMany(held.openObjects, mostOpenObjects, L"open objects"),
          tooMany(held.selectionSets, mostSelectionSets, L"selection sets"), tooMany(held.hooks, mostHooks, L"hooks"),
          tooMany(held.timers, mostTimers, L"timers"),
          tooMany(gdiObjects(), m_gdiObjects + moreGdiObjects, L"GDI objects"),
          tooMany(windowsOfThisThread(), m_windows + moreWindows, L"windows")}) {
        if (!wrong.empty())
            return wrong;
    }
    return {};
}

} // namespace desk::script
