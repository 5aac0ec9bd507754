#include "module/shell/CAboutDlg.h"

#include <algorithm>

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/resources/resource.h"
#include "module/shell/CDDBPalette.h"
#include "platform/version.h"

BEGIN_MESSAGE_MAP(CAboutDlg, CDialog)
ON_WM_PAINT()
END_MESSAGE_MAP()

CAboutDlg::CAboutDlg() : CDialog(IDD_ABOUT), m_pPicture(std::make_unique<CDDBPalette>(g_pArxApp->m_hInstance)) {}

CAboutDlg::~CAboutDlg() = default;

void CAboutDlg::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_ABOUT_VERSION, m_strVersion);
    DDX_Text(exchange, IDC_ABOUT_PRODUCT, m_strProduct);
    DDX_Text(exchange, IDC_ABOUT_NOTICE, m_strNotice);
}

BOOL CAboutDlg::OnInitDialog()
{
    const CTempMFC resources;
    CDialog::OnInitDialog();
    MakeRoomForPicture();
    CenterWindow();
    m_strVersion.Format(L"%d.%d  (Build:%d.%d)", HALVORAN_MAJOR, HALVORAN_MINOR, HALVORAN_BUILD, HALVORAN_REVISION);
    m_strProduct = L"Halvoran 6.6 for AutoCAD";
    m_strNotice = L"Made by Orvolabs.";
    UpdateData(FALSE);
    return TRUE;
}

void CAboutDlg::OnOK()
{
    const CTempMFC resources;
    CDialog::OnOK();
}

// The template counts in letters, the picture in pixels: how many of them a letter has differs from system to system.
void CAboutDlg::MakeRoomForPicture()
{
    const CSize picture = m_pPicture->GetSize();
    CRect client;
    GetClientRect(&client);
    CRect window;
    GetWindowRect(&window);
    const int wider = std::max<int>(picture.cx - client.Width(), 0);
    SetWindowPos(nullptr, 0, 0, window.Width() + wider, window.Height() + picture.cy, SWP_NOMOVE | SWP_NOZORDER);
    for (CWnd* control = GetWindow(GW_CHILD); control; control = control->GetWindow(GW_HWNDNEXT)) {
        CRect place;
        control->GetWindowRect(&place);
        ScreenToClient(&place);
        control->SetWindowPos(nullptr, place.left + wider / 2, place.top + picture.cy, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
}

void CAboutDlg::OnPaint()
{
    CPaintDC context(this);
    CRect client;
    GetClientRect(&client);
    m_pPicture->Draw(context, CPoint((client.Width() - m_pPicture->GetSize().cx) / 2, 0));
}
