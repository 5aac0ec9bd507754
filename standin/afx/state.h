// What the class library keeps: for each thread its handle maps, for the process its program and resource modules.
// Private to the library.
#pragma once

#include <functional>
#include <unordered_map>
#include <vector>

#include "standin/afx/afx_app.h"
#include "standin/afx/afx_gdi.h"
#include "standin/afx/afx_menu.h"
#include "standin/afx/afx_module.h"
#include "standin/afx/afx_thread.h"

namespace afx {

/// From a handle to its object. Permanent objects belong to whoever attached them; temporary ones to the map.
template <typename Object> class HandleMap
{
public:
    Object* permanent(HANDLE handle) const
    {
        const auto found = m_permanent.find(handle);
        return found == m_permanent.end() ? nullptr : found->second;
    }
    void setPermanent(HANDLE handle, Object* object) { m_permanent[handle] = object; }
    void removePermanent(HANDLE handle) { m_permanent.erase(handle); }

    /// `make` yields a new object that already holds the handle.
    Object* any(HANDLE handle, const std::function<Object*()>& make)
    {
        if (!handle)
            return nullptr;
        if (Object* object = permanent(handle))
            return object;
        Object*& temporary = m_temporary[handle];
        if (!temporary)
            temporary = make();
        return temporary;
    }
    /// `release` takes the handle out of an object, so that its destructor leaves the handle alone.
    void deleteTemporary(const std::function<void(Object*)>& release)
    {
        const auto temporary = std::move(m_temporary);
        m_temporary.clear();
        for (const auto& [handle, object] : temporary) {
            release(object);
            delete object;
        }
    }

private:
    std::unordered_map<HANDLE, Object*> m_permanent;
    std::unordered_map<HANDLE, Object*> m_temporary;
};

struct ThreadState : AFX_THREAD_STATE
{
    ThreadState() : AFX_THREAD_STATE{} {}

    HandleMap<CWnd> windows;
    HandleMap<CMenu> menus;
    HandleMap<CDC> contexts;
    HandleMap<CGdiObject> gdiObjects;
    CWinThread* thread = nullptr;
    HHOOK createHook = nullptr;
    HWND lockedOut = nullptr; // its notifications are swallowed while UpdateData fills its controls
    std::wstring windowClassName;
};

ThreadState& threadState();
/// For a thread of the library's own that is about to end.
void endThreadState();
void deleteTemporaryObjects();

struct ProcessState
{
    CWinApp* app = nullptr;
    HINSTANCE instance = nullptr;
    HINSTANCE resources = nullptr;
    std::vector<CDynLinkLibrary*> libraries; // the newest last
};

ProcessState& processState();

/// The module to take string `id` from, in the order of AfxFindResourceHandle.
HINSTANCE findStringModule(UINT id);

} // namespace afx
