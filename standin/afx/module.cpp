#include <algorithm>

#include "standin/afx/afx_module.h"
#include "standin/afx/state.h"

IMPLEMENT_DYNAMIC(CDynLinkLibrary, CCmdTarget)

HINSTANCE AfxGetInstanceHandle()
{
    const HINSTANCE instance = afx::processState().instance;
    return instance ? instance : GetModuleHandleW(nullptr);
}

HINSTANCE AfxGetResourceHandle()
{
    const HINSTANCE resources = afx::processState().resources;
    return resources ? resources : AfxGetInstanceHandle();
}

void AfxSetResourceHandle(HINSTANCE hInstResource)
{
    afx::processState().resources = hInstResource;
}

namespace {

// The first of the resource modules that `holds` accepts, else the current one.
template <typename Holds> HINSTANCE findModule(Holds holds)
{
    const HINSTANCE current = AfxGetResourceHandle();
    if (holds(current))
        return current;
    // Modules marked as the system's come after the others.
    const auto& libraries = afx::processState().libraries;
    for (const BOOL system : {FALSE, TRUE}) {
        for (auto library = libraries.rbegin(); library != libraries.rend(); ++library) {
            if (((*library)->m_bSystem != FALSE) == (system != FALSE) && (*library)->m_hResource &&
                holds((*library)->m_hResource))
                return (*library)->m_hResource;
        }
    }
    if (holds(AfxGetInstanceHandle()))
        return AfxGetInstanceHandle();
    return current;
}

} // namespace

HINSTANCE AfxFindResourceHandle(LPCWSTR lpszName, LPCWSTR lpszType)
{
    return findModule([=](HINSTANCE module) { return FindResourceW(module, lpszName, lpszType) != nullptr; });
}

HINSTANCE afx::findStringModule(UINT id)
{
    return findModule([=](HINSTANCE module) {
        LPCWSTR text = nullptr;
        return LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0) > 0;
    });
}

int AfxLoadString(UINT nIDS, LPWSTR lpszBuf, UINT nMaxBuf)
{
    if (nMaxBuf == 0)
        return 0;
    lpszBuf[0] = L'\0';
    return LoadStringW(afx::findStringModule(nIDS), nIDS, lpszBuf, static_cast<int>(nMaxBuf));
}

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule)
{
    // A second call for the same module is harmless.
    if (state.bInitialized)
        return TRUE;
    state.bInitialized = TRUE;
    state.hModule = hModule;
    state.hResource = hModule;
    return hModule != nullptr;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll)
{
    if (!state.bInitialized)
        return;
    const std::vector<CDynLinkLibrary*> libraries = afx::processState().libraries;
    for (CDynLinkLibrary* library : libraries) {
        if (bAll || library->m_hModule == state.hModule)
            delete library;
    }
    state.bInitialized = FALSE;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem)
    : m_hModule(state.hModule), m_hResource(state.hResource), m_bSystem(bSystem)
{
    afx::processState().libraries.push_back(this);
}

CDynLinkLibrary::CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource)
    : m_hModule(hModule), m_hResource(hResource), m_bSystem(FALSE)
{
    afx::processState().libraries.push_back(this);
}

CDynLinkLibrary::~CDynLinkLibrary()
{
    std::erase(afx::processState().libraries, this);
}
