#pragma once

#include "platform/platform.h"

class CAcraster;
class CCheckDef;
class CDefault;
class CFloatingBar;
class CSaveRaster;
class CTool;

/// What lives as long as the module is loaded, for all floors of it to meet at. There is one, made and deleted by the
/// entry point: the CModuleApp of the top floor, which starts and stops the module. This floor only names the classes
/// above it.
class CArxApp
{
public:
    CArxApp();
    virtual ~CArxApp() = default;
    CArxApp(const CArxApp&) = delete;
    CArxApp& operator=(const CArxApp&) = delete;

    CFloatingBar* m_pToolbar = nullptr; // the LaMfcToolbar, owned; null after it was deleted for an unloading, and
                                        // without a window if it could not be made
    HINSTANCE m_hInstance = nullptr;    // of the module's file
    CAcraster* m_pRaster = nullptr;     // the current raster, owned; null when none is; see DropCurrentRaster
    CTool* m_pTool = nullptr;           // the active tool; sets and clears this itself, and is ended by deleting it
    UINT m_nClipFormat;                 // clipboard format of the module's own
    CString m_strTempFile;              // a name in the temporary folder; what stands under it at the end is deleted
    CDefault* m_pDefault = nullptr;     // the settings, owned
    bool m_bSuspended = false;          // the raster's objects are closed for a host call
    CSaveRaster* m_pSaveList = nullptr; // the newest reactor on an edited definition; see CSaveRaster
    double m_dLastScale = 1;            // last confirmed for a raster that was placed, in drawing units per millimetre
    int m_nLastUnit = 0;                // likewise, the row of the list of drawing units
    CCheckDef* m_pReactor = nullptr;    // owned; made at the first drawing
    void* m_pAppId = nullptr;           // the host's id for the module
};

extern CArxApp* g_pArxApp;

/// Set while a host command runs.
extern bool g_bInCommand;
