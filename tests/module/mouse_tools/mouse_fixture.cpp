#include "tests/module/mouse_tools/mouse_fixture.h"

#include <cstring>

#include "module/raster/CCurentRaster.h"
#include "module/tools/Stroke.h"
#include "module/tools/ToolMessageHook.h"

namespace test {

void MouseFixture::SetUp()
{
    DeskFixture::SetUp();
    m_viewState = {400, 300, {0, 0, 0}, 75};
    PenWidth = 3;
    LineWidth = 3;
    EraserWidth = 10;
    PenColor = 0;
    LineColor = 0;
    ButtonClickTimer.reset();
    LastToolCommand = 0;
    LastToolIdOnClick = 0;
    pumpAll();
}

CAcraster& MouseFixture::openRaster(const Picture& picture)
{
    return openCurrent(picture, {.x = -40, .y = 30.0 - static_cast<double>(picture.size())});
}

CAcraster& MouseFixture::openGrayRaster()
{
    writeGrayBitmap(file("gray.bmp"), 80, 60);
    return openCurrent(blank(80, 60), {.file = file("gray.bmp"), .x = -40, .y = -30});
}

void MouseFixture::closeRaster()
{
    delete g_pArxApp->m_pTool;
    forgetEdits();
    standin::closeDrawing();
}

Picture MouseFixture::withInk(const std::vector<CPoint>& pixels)
{
    Picture picture = blank(80, 60);
    for (const CPoint& pixel : pixels)
        picture[pixel.y][pixel.x] = '#';
    return picture;
}

void MouseFixture::post(UINT message, CPoint point, UINT flags)
{
    ASSERT_TRUE(PostMessageW(view().m_hWnd, message, flags, MAKELPARAM(point.x, point.y)));
    pumpAll();
}

void MouseFixture::drag(CPoint from, CPoint to, UINT flags)
{
    press(from, flags);
    move(to, flags);
    release(to, flags);
}

void MouseFixture::expectDragErasesItself(CPoint start, CSize tooShort)
{
    press(start);
    const auto before = viewPixels();
    move(start + tooShort);
    EXPECT_TRUE(viewPixels() == before) << "too short to show";
    move(CPoint(120, 200));
    EXPECT_TRUE(viewPixels() != before) << "nothing is drawn";
    move(CPoint(300, 90));
    move(start);
    EXPECT_TRUE(viewPixels() == before) << "something is left behind";
    release(start);
}

void MouseFixture::command(UINT id)
{
    ButtonClickTimer.reset(); // no second press of a button
    waitForNextTimeStamp();   // two commands of one time stamp would count as one
    PostMessageW(view().m_hWnd, WM_COMMAND, id, 0);
    pumpAll();
}

void MouseFixture::escape()
{
    PostMessageW(view().m_hWnd, WM_KEYDOWN, VK_ESCAPE, 0);
    pumpAll();
}

std::vector<COLORREF> MouseFixture::viewPixels()
{
    CRect client;
    view().GetClientRect(client);
    const int width = client.Width();
    const int height = client.Height();
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HDC context = ::GetDC(view().m_hWnd);
    const HDC memory = CreateCompatibleDC(context);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ previous = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, context, 0, 0, SRCCOPY);
    GdiFlush();
    std::vector<COLORREF> pixels(width * height);
    for (size_t i = 0; i < pixels.size(); ++i) {
        const DWORD pixel = static_cast<const DWORD*>(bits)[i];
        pixels[i] = RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
    }
    SelectObject(memory, previous);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ::ReleaseDC(view().m_hWnd, context);
    return pixels;
}

int MouseFixture::selected(CAcraster& raster)
{
    raster.Lock(0);
    const int selection = raster.HasSelection();
    raster.Unlock();
    return selection;
}

void MouseFixture::putOnClipboard(UINT format, const DibBytes& bytes)
{
    // An owner that goes at once: the worker's own taking of the clipboard would else wait for this thread.
    CWnd owner;
    owner.CreateEx(0, L"STATIC", L"clipboard", WS_POPUP, CRect(0, 0, 0, 0), nullptr, 0);
    ASSERT_TRUE(OpenClipboard(owner.m_hWnd));
    EmptyClipboard();
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
    GlobalUnlock(block);
    EXPECT_TRUE(SetClipboardData(format, block));
    CloseClipboard();
    owner.DestroyWindow();
}

void MouseFixture::emptyClipboard()
{
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    CloseClipboard();
}

DibBytes MouseFixture::bitmapOnClipboard()
{
    EXPECT_TRUE(OpenClipboard(nullptr));
    const HGLOBAL block = GetClipboardData(CF_DIB);
    const auto* bytes = block ? static_cast<const BYTE*>(GlobalLock(block)) : nullptr;
    const DibBytes copy = bytes ? DibBytes(bytes, bytes + GlobalSize(block)) : DibBytes();
    GlobalUnlock(block);
    CloseClipboard();
    return copy;
}

DibBytes bytesOf(std::initializer_list<int> values)
{
    DibBytes bytes;
    for (const int value : values)
        bytes.push_back(static_cast<BYTE>(value));
    return bytes;
}

DibBytes little(DWORD value)
{
    return bytesOf({BYTE(value), BYTE(value >> 8), BYTE(value >> 16), BYTE(value >> 24)});
}

DibBytes operator+(DibBytes left, const DibBytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

DibBytes dibHeader(int width, int height, int bits, DWORD length, DWORD compression, const DibBytes& rest)
{
    DibBytes bytes = little(length) + little(width) + little(height) + bytesOf({1, 0, bits, 0}) + little(compression);
    bytes.resize(40);
    bytes = std::move(bytes) + rest;
    bytes.resize(length);
    return bytes;
}

DibBytes dibOf(const Picture& picture)
{
    const int width = static_cast<int>(picture.at(0).size());
    DibBytes bytes = dibHeader(width, -static_cast<int>(picture.size()), 1) +
                     bytesOf({255, 255, 255, 0, 0, 0, 0, 0}); // white, black
    for (const std::string& row : picture) {
        DibBytes packed((width + 31) / 32 * 4);
        for (int x = 0; x < width; ++x) {
            if (row[x] == '#')
                packed[x / 8] |= 0x80 >> x % 8;
        }
        bytes = std::move(bytes) + packed;
    }
    return bytes;
}

} // namespace test
