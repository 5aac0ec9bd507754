// Where resources come from: the program, and the extension modules that have joined it.
#pragma once

#include "standin/afx/afx_command.h"
#include "standin/afx/afx_string.h"

HALVORAN_STANDIN_API HINSTANCE AfxGetInstanceHandle();
HALVORAN_STANDIN_API HINSTANCE AfxGetResourceHandle();
HALVORAN_STANDIN_API void AfxSetResourceHandle(HINSTANCE hInstResource);
/// The module that holds the resource: the current one, else an extension module, the newest first, else the current
/// one.
HALVORAN_STANDIN_API HINSTANCE AfxFindResourceHandle(LPCWSTR lpszName, LPCWSTR lpszType);
/// Characters copied; 0 when there is no such string.
HALVORAN_STANDIN_API int AfxLoadString(UINT nIDS, LPWSTR lpszBuf, UINT nMaxBuf = 256);

/// Static storage of an extension module, zero at first.
struct AFX_EXTENSION_MODULE
{
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
};

HALVORAN_STANDIN_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule);
/// Takes the module's libraries out of the chain again; with bAll its instance handle is not looked at.
HALVORAN_STANDIN_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll = FALSE);

/// An extension module's place in the chain of resources, for as long as the object lives.
class HALVORAN_STANDIN_API CDynLinkLibrary : public CCmdTarget
{
    DECLARE_DYNAMIC(CDynLinkLibrary)
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem = FALSE);
    CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource);
    ~CDynLinkLibrary() override;

    HMODULE m_hModule;
    HMODULE m_hResource;
    BOOL m_bSystem;
};
