#include "module/shell/CAboutDlg.h"

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/resources/resource.h"
#include "module/shell/CDDBPalette.h"

namespace {

constexpr int majorVersion = 6;
constexpr int minorVersion = 6;
constexpr int build = 12094;
constexpr int subBuild = 1;

} // namespace

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
    CenterWindow();
    m_strVersion.Format(L"%d.%d  (Build:%d.%d)", majorVersion, minorVersion, build, subBuild);
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

// The picture lies at the dialog's upper edge. The template leaves room for it.
void CAboutDlg::OnPaint()
{
    CPaintDC context(this);
    CRect client;
    GetClientRect(&client);
    m_pPicture->Draw(context, CPoint((client.Width() - m_pPicture->GetSize().cx) / 2, 0));
}
