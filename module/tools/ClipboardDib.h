#pragma once

#include "platform/platform.h"

/// The clipboard's device-independent bitmap, as the preview of a paste takes it: locked while the object lives.
class ClipboardDib
{
public:
    /// Is empty when the clipboard can't be opened, holds no such bitmap or one that is cut short, or holds data of the
    /// module's own format.
    explicit ClipboardDib(UINT ownFormat);
    ~ClipboardDib();
    ClipboardDib(const ClipboardDib&) = delete;
    ClipboardDib& operator=(const ClipboardDib&) = delete;

    explicit operator bool() const { return m_header != nullptr; }
    /// In pixels, both positive.
    CSize GetSize() const;
    /// Draws the whole bitmap over (0, 0) to `size`.
    void StretchTo(CDC& target, CSize size) const;

private:
    const BITMAPINFOHEADER* Validate(const void* block) const;
    size_t BitsOffset() const;

    HGLOBAL m_handle = nullptr; // the clipboard's
    size_t m_blockSize = 0;
    const BITMAPINFOHEADER* m_header = nullptr;
};
