#include "worker/clipboard.h"

#include <cstring>
#include <stdexcept>

#include "platform/platform.h"

namespace worker {

namespace {

// A window that nobody sees: the clipboard takes data only from the owner that emptied it.
class OwnerWindow
{
public:
    OwnerWindow()
        : m_window(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr))
    {}
    ~OwnerWindow() { DestroyWindow(m_window); }
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;

    HWND get() const { return m_window; }

private:
    HWND m_window;
};

// The clipboard, open. Others open it for moments, so it is asked for more than once. Under Wine the opening itself
// asks the owner's window first, and takes 5 s when that one's thread takes no messages.
class OpenedClipboard
{
public:
    explicit OpenedClipboard(HWND owner)
    {
        constexpr int attempts = 50;
        constexpr DWORD pause = 20; // ms
        for (int attempt = 0; !OpenClipboard(owner); ++attempt) {
            if (attempt == attempts)
                throw std::runtime_error("Another program keeps the clipboard.");
            Sleep(pause);
        }
    }
    ~OpenedClipboard() { CloseClipboard(); }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
};

} // namespace

std::vector<std::byte> SystemClipboard::readDib()
{
    const OpenedClipboard clipboard(nullptr);
    const HGLOBAL handle = GetClipboardData(CF_DIB);
    const void* block = handle ? GlobalLock(handle) : nullptr;
    if (!block)
        throw std::runtime_error("There is no bitmap on the clipboard.");
    const auto* bytes = static_cast<const std::byte*>(block);
    std::vector<std::byte> dib(bytes, bytes + GlobalSize(handle));
    GlobalUnlock(handle);
    return dib;
}

void SystemClipboard::putDib(std::span<const std::byte> dib)
{
    const OwnerWindow owner;
    const OpenedClipboard clipboard(owner.get());
    const HGLOBAL handle = GlobalAlloc(GMEM_MOVEABLE, dib.size());
    void* block = handle ? GlobalLock(handle) : nullptr;
    if (!block)
        throw std::runtime_error("There is not enough memory for the clipboard.");
    std::memcpy(block, dib.data(), dib.size());
    GlobalUnlock(handle);
    EmptyClipboard();
    // The clipboard owns the block from here on.
    if (!SetClipboardData(CF_DIB, handle)) {
        GlobalFree(handle);
        throw std::runtime_error("The clipboard did not take the bitmap.");
    }
}

} // namespace worker
