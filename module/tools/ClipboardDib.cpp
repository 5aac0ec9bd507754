#include "module/tools/ClipboardDib.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

// A width or height of more is no picture that anybody has copied.
constexpr LONG largestSide = 1 << 20;

size_t StrideOf(const BITMAPINFOHEADER& header)
{
    return (static_cast<size_t>(header.biWidth) * header.biBitCount + 31) / 32 * 4;
}

size_t BitsSize(const BITMAPINFOHEADER& header)
{
    return StrideOf(header) * std::abs(header.biHeight);
}

// Not every program fills up the last row.
size_t LeastBitsSize(const BITMAPINFOHEADER& header)
{
    const size_t rowBytes = (static_cast<size_t>(header.biWidth) * header.biBitCount + 7) / 8;
    return BitsSize(header) - StrideOf(header) + rowBytes;
}

} // namespace

ClipboardDib::ClipboardDib(UINT ownFormat)
{
    if (!OpenClipboard(nullptr))
        return;
    if (!GetClipboardData(ownFormat))
        m_handle = GetClipboardData(CF_DIB);
    if (m_handle) {
        m_blockSize = GlobalSize(m_handle);
        if (const void* block = GlobalLock(m_handle)) {
            m_header = Validate(block);
            if (!m_header)
                GlobalUnlock(m_handle);
        }
    }
    CloseClipboard();
}

ClipboardDib::~ClipboardDib()
{
    if (m_header)
        GlobalUnlock(m_handle);
}

const BITMAPINFOHEADER* ClipboardDib::Validate(const void* block) const
{
    if (m_blockSize < sizeof(BITMAPINFOHEADER))
        return nullptr;
    const auto* header = static_cast<const BITMAPINFOHEADER*>(block);
    const bool sane = header->biSize >= sizeof(BITMAPINFOHEADER) && header->biSize < m_blockSize &&
                      header->biWidth > 0 && header->biWidth <= largestSide && header->biHeight != 0 &&
                      header->biHeight <= largestSide && header->biHeight >= -largestSide &&
                      (header->biCompression == BI_RGB || header->biCompression == BI_BITFIELDS) &&
                      LeastBitsSize(*header) <= m_blockSize - header->biSize;
    return sane ? header : nullptr;
}

CSize ClipboardDib::GetSize() const
{
    return CSize(m_header->biWidth, std::abs(m_header->biHeight));
}

// The preview takes every bitmap for one with a palette, of 256 colours at 8 bits and of two otherwise. One of 4 or 24
// bits floats a little askew for that; the worker, which reads the clipboard by itself, pastes it right.
size_t ClipboardDib::BitsOffset() const
{
    return m_header->biSize + (m_header->biBitCount == 8 ? 1024 : 8);
}

void ClipboardDib::StretchTo(CDC& target, CSize size) const
{
    const size_t needed = BitsSize(*m_header);
    const size_t offset = BitsOffset();
    const auto* bits = reinterpret_cast<const BYTE*>(m_header) + offset;
    std::vector<BYTE> padded; // a short palette puts the bits nearer to the header, and the block ends sooner
    if (offset + needed > m_blockSize) {
        padded.resize(needed);
        if (offset < m_blockSize)
            std::memcpy(padded.data(), bits, m_blockSize - offset);
        bits = padded.data();
    }
    // The system reads a colour table of its own reckoning behind the header, so it gets one that is surely there.
    std::vector<BYTE> info(m_header->biSize + 256 * sizeof(RGBQUAD));
    std::memcpy(info.data(), m_header, std::min(info.size(), m_blockSize));
    const CSize source = GetSize();
    StretchDIBits(target.m_hDC, 0, 0, size.cx, size.cy, 0, 0, source.cx, source.cy, bits,
                  reinterpret_cast<const BITMAPINFO*>(info.data()), DIB_RGB_COLORS, SRCCOPY);
}
