#include "tests/module/mouse_tools/mouse_fixture.h"

#include <cstring>
#include <sstream>

#include "tools/Stroke.h"
#include "tools/ToolMessageHook.h"

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
    openDrawing({picture}, {{.x = -40, .y = 30.0 - static_cast<double>(picture.size())}});
    m_posted.clear();
    return makeCurrent(0);
}

void MouseFixture::closeRaster()
{
    delete g_pArxApp->m_pTool;
    g_pArxApp->DropRaster();
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

std::string MouseFixture::regionOf(CAcraster& raster)
{
    std::vector<BYTE> bytes(GetRegionData(raster.GetRegion(), 0, nullptr));
    auto* data = reinterpret_cast<RGNDATA*>(bytes.data());
    GetRegionData(raster.GetRegion(), static_cast<DWORD>(bytes.size()), data);
    const auto* rects = reinterpret_cast<const RECT*>(data->Buffer);
    std::ostringstream text;
    for (DWORD i = 0; i < data->rdh.nCount; ++i)
        text << (i ? " " : "") << rects[i].left << "," << rects[i].top << "-" << rects[i].right << ","
             << rects[i].bottom;
    return text.str();
}

int MouseFixture::selected(CAcraster& raster)
{
    raster.Lock(0);
    const int selection = raster.HasSelection();
    raster.Unlock();
    return selection;
}

void MouseFixture::deselect(CAcraster& raster)
{
    raster.Lock(0);
    raster.ResetRegion();
    raster.Unlock();
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

DibBytes dibHeader(int width, int height, int bits)
{
    const BITMAPINFOHEADER header = {
        sizeof(BITMAPINFOHEADER), width, height, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 0, 0};
    DibBytes bytes(sizeof(header));
    std::memcpy(bytes.data(), &header, sizeof(header));
    return bytes;
}

DibBytes dibOf(const Picture& picture)
{
    const int width = static_cast<int>(picture.at(0).size());
    DibBytes bytes = dibHeader(width, -static_cast<int>(picture.size()), 1);
    for (const int value : {255, 255, 255, 0, 0, 0, 0, 0}) // white, black
        bytes.push_back(static_cast<BYTE>(value));
    for (const std::string& row : picture) {
        DibBytes packed((width + 31) / 32 * 4);
        for (int x = 0; x < width; ++x) {
            if (row[x] == '#')
                packed[x / 8] |= 0x80 >> x % 8;
        }
        for (const BYTE value : packed)
            bytes.push_back(value);
    }
    return bytes;
}

} // namespace test
