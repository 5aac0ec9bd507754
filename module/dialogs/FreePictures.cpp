#include "module/dialogs/FreePictures.h"

void FreePictures(CWnd& dialog)
{
    for (HWND control = GetWindow(dialog.m_hWnd, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        // A label answers 0.
        if (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_STATIC) {
            const LRESULT former = SendMessageW(control, STM_SETIMAGE, IMAGE_BITMAP, 0);
            DeleteObject(reinterpret_cast<HGDIOBJ>(former));
        }
    }
}
