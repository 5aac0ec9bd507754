#include "bench/desk/bench_desk.h"

#include <algorithm>
#include <stdexcept>

#include "imaging/bitmap.h"
#include "imaging/fill.h"
#include "imaging/raster_file.h"
#include "module/raster/CCurentRaster.h"
#include "module/start/CModuleApp.h"
#include "tests/module/support/test_drawing.h"

namespace bench {

namespace {

CWinApp program(L"Halvoran benchmark");

class BenchView : public CView
{
protected:
    void OnDraw(CDC*) override {}
};

// Two ruled lines of ink to a hundred pixels each way, such as a drawing's sheet has.
imaging::Bitmap ruledSheet(imaging::Size size)
{
    imaging::Bitmap sheet(size);
    for (int y = 0; y < size.height; y += 50)
        imaging::fill(sheet, imaging::Rect{0, y, size.width, std::min(y + 3, size.height)}, true);
    for (int x = 0; x < size.width; x += 50)
        imaging::fill(sheet, imaging::Rect{x, 0, std::min(x + 3, size.width), size.height}, true);
    return sheet;
}

} // namespace

BenchDesk::BenchDesk() : m_folder(test::freshFolder("desk_bench"))
{
    if (!AfxWinInit(GetModuleHandleW(nullptr), nullptr, GetCommandLineW(), SW_SHOWNORMAL))
        throw std::runtime_error("The class library did not start.");
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    m_frame = new CMDIFrameWnd;
    m_frame->Create(nullptr, L"desk", WS_OVERLAPPEDWINDOW, CRect(0, 0, 100, 100));
    auto* child = new CMDIChildWnd;
    child->Create(nullptr, L"drawing", WS_CHILD | WS_VISIBLE, CFrameWnd::rectDefault, m_frame);
    m_view = new BenchView;
    const LPCWSTR windowClass =
        AfxRegisterWndClass(CS_DBLCLKS, nullptr, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    m_view->CreateEx(WS_EX_TOPMOST, windowClass, L"view", WS_POPUP, CRect(CPoint(0, 0), CSize(viewWidth, viewHeight)),
                     nullptr, 0);
    m_view->ShowWindow(SW_SHOWNA);
    m_view->UpdateWindow();
    child->SetActiveView(m_view, FALSE);
    standin::setDeskServices(this);
    g_pArxApp = new CModuleApp;
}

BenchDesk::~BenchDesk()
{
    delete g_pArxApp;
    g_pArxApp = nullptr;
    standin::closeDrawing();
    m_frame->MDIGetActive()->SetActiveView(nullptr, FALSE);
    m_view->DestroyWindow();
    m_frame->DestroyWindow();
    standin::setDeskServices(nullptr);
    std::error_code error;
    std::filesystem::remove_all(m_folder, error);
}

CAcraster& BenchDesk::openSheet(imaging::Size pixels)
{
    const std::filesystem::path raster = m_folder / "sheet.tif";
    imaging::writeRaster(raster, ruledSheet(pixels), {400, 400}, imaging::Format::TiffGroup4);
    return openSheet(raster);
}

CAcraster& BenchDesk::openSheet(const std::filesystem::path& raster)
{
    const imaging::Size pixels = imaging::inspectRaster(raster).size;
    m_sheet = pixels;
    test::writeDrawing(m_folder / "sheet.dxf", {{.file = raster, .width = pixels.width, .height = pixels.height}});
    if (const standin::Failure failure = standin::openDrawing(m_folder / "sheet.dxf"))
        throw std::runtime_error(std::filesystem::path(*failure).string());
    ads_name set = {};
    ads_name name = {};
    acedSSGet(L"X", nullptr, nullptr, nullptr, set);
    acedSSName(set, 0, name);
    acedSSFree(set);
    g_pArxApp->m_pRaster = new CAcraster(name);
    g_pArxApp->m_pRaster->Unlock();
    g_pArxApp->m_pRaster->KeepLoaded();
    return *g_pArxApp->m_pRaster;
}

void BenchDesk::closeSheet()
{
    DropCurrentRaster();
    standin::closeDrawing();
}

void BenchDesk::showAt(double scale)
{
    m_viewState = {viewWidth, viewHeight, {m_sheet.width / 2.0, m_sheet.height / 2.0, 0}, viewHeight / scale};
}

void BenchDesk::showWhole(double share)
{
    showAt(share * 0.95 * std::min(double(viewWidth) / m_sheet.width, double(viewHeight) / m_sheet.height));
}

void BenchDesk::moveBy(int viewPixels)
{
    m_viewState.centre.x += viewPixels * m_viewState.viewHeight / m_viewState.height;
}

} // namespace bench
