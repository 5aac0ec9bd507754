// Another program at the clipboard. Its words, each with a file:
//
// put: leaves the file's bytes on the clipboard as a bitmap, and ends.
//
// serve: only promises them, renders them when they are asked for, and ends when the clipboard has another owner.
//
// get: writes the bitmap that is there to the file. The exit code is 2 when there is none.

#include <windows.h>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

std::vector<char> bitmap; // what is put there

HGLOBAL blockOfBitmap()
{
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bitmap.size());
    std::memcpy(GlobalLock(block), bitmap.data(), bitmap.size());
    GlobalUnlock(block);
    return block;
}

LRESULT CALLBACK ownerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_RENDERFORMAT) {
        SetClipboardData(CF_DIB, blockOfBitmap());
        return 0;
    }
    if (message == WM_DESTROYCLIPBOARD)
        PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

bool openClipboard(HWND owner)
{
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (OpenClipboard(owner))
            return true;
        Sleep(20);
    }
    return false;
}

int put(const wchar_t* file, bool promised)
{
    std::ifstream in(std::filesystem::path(file), std::ios::binary);
    bitmap.assign(std::istreambuf_iterator<char>(in), {});
    const HWND owner = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    if (!openClipboard(owner))
        return 1;
    EmptyClipboard();
    // From here on it hears of the clipboard: the emptying was its own.
    SetWindowLongPtrW(owner, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ownerProcedure));
    SetClipboardData(CF_DIB, promised ? nullptr : blockOfBitmap());
    CloseClipboard();
    MSG message;
    while (promised && GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}

int get(const wchar_t* file)
{
    if (!openClipboard(nullptr))
        return 1;
    const HGLOBAL block = GetClipboardData(CF_DIB);
    const auto* bytes = block ? static_cast<const char*>(GlobalLock(block)) : nullptr;
    if (bytes)
        std::ofstream(std::filesystem::path(file), std::ios::binary)
            .write(bytes, static_cast<std::streamsize>(GlobalSize(block)));
    CloseClipboard();
    return bytes ? 0 : 2;
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    if (count != 3)
        return 3;
    const std::wstring work = arguments[1];
    if (work == L"get")
        return get(arguments[2]);
    return put(arguments[2], work == L"serve");
}
