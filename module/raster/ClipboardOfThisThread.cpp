#include "module/raster/ClipboardOfThisThread.h"

#include "platform/platform.h"

namespace {

// Opens the clipboard if a window of this thread owns it.
bool OpenIfOwned()
{
    const HWND owner = GetClipboardOwner();
    return owner && GetWindowThreadProcessId(owner, nullptr) == GetCurrentThreadId() && OpenClipboard(nullptr);
}

} // namespace

void ReleaseClipboardOfThisThread()
{
    if (!OpenIfOwned())
        return;
    EmptyClipboard();
    CloseClipboard();
}

void RenderClipboardOfThisThread()
{
    if (!OpenIfOwned())
        return;
    GetClipboardData(CF_DIB);
    CloseClipboard();
}
