#include "module/shell/CSplashWnd.h"

#include "module/base/CArxApp.h"
#include "module/resources/resource.h"
#include "module/shell/CDDBPalette.h"

namespace {

constexpr UINT_PTR closeTimer = 1;
constexpr UINT timeToShow = 2000; // ms

bool splashEnabled = false;
CSplashWnd* splash = nullptr;

CSize PictureSize()
{
    BITMAP form = {};
    CBitmap picture;
    if (picture.LoadBitmap(IDB_SPLASH))
        picture.GetObject(sizeof(form), &form);
    return CSize(form.bmWidth, form.bmHeight);
}

} // namespace

BEGIN_MESSAGE_MAP(CSplashWnd, CWnd)
ON_WM_CREATE()
ON_WM_PAINT()
ON_WM_TIMER()
END_MESSAGE_MAP()

void CSplashWnd::Enable(bool enabled)
{
    splashEnabled = enabled;
}

void CSplashWnd::Show()
{
    if (!splashEnabled || splash)
        return;
    splash = new CSplashWnd;
    if (splash->Open())
        splash->UpdateWindow();
}

void CSplashWnd::Close()
{
    if (splash)
        splash->DestroyWindow();
}

CSplashWnd::~CSplashWnd()
{
    splash = nullptr;
}

// False of one that has deleted itself.
BOOL CSplashWnd::Open()
{
    const CSize size = PictureSize();
    const LPCWSTR windowClass = AfxRegisterWndClass(0, LoadCursorW(nullptr, IDC_ARROW));
    return CreateEx(0, windowClass, nullptr, WS_POPUP | WS_VISIBLE, 0, 0, size.cx, size.cy, nullptr, nullptr);
}

void CSplashWnd::PostNcDestroy()
{
    delete this;
}

int CSplashWnd::OnCreate(LPCREATESTRUCT create)
{
    if (CWnd::OnCreate(create) == -1)
        return -1;
    CenterWindow();
    SetTimer(closeTimer, timeToShow, nullptr);
    return 0;
}

void CSplashWnd::OnPaint()
{
    CPaintDC context(this);
    CDDBPalette(g_pArxApp->m_hInstance).Draw(context, CPoint(0, 0));
}

void CSplashWnd::OnTimer(UINT_PTR)
{
    DestroyWindow();
    // What it covered of the frame is painted at once.
    if (CWnd* main = AfxGetMainWnd())
        main->UpdateWindow();
}
