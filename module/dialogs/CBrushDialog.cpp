#include "module/dialogs/CBrushDialog.h"

#include <commctrl.h>

#include "module/dialogs/UnitFields.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"

namespace {

constexpr int narrowest = 1;
constexpr int widest = 100;

} // namespace

BEGIN_MESSAGE_MAP(CBrushDialog, CDialog)
ON_EN_CHANGE(IDC_BRUSH_WIDTH, &CBrushDialog::OnWidthChanged)
END_MESSAGE_MAP()

CBrushDialog::CBrushDialog(UINT templateId) : CDialog(templateId) {}

CString CBrushDialog::LengthOfWidth() const
{
    if (m_nDpi <= 0)
        return L"";
    return FormatLength(MillimetresPerInch / m_nDpi * m_nWidth, 2, true, L"", L"");
}

void CBrushDialog::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    // Read is the spin button, which takes from the field beside it what lies in its range, and else keeps its number.
    if (exchange->m_bSaveAndValidate) {
        m_nWidth = LOWORD(::SendDlgItemMessageW(m_hWnd, IDC_BRUSH_SPIN, UDM_GETPOS, 0, 0));
    } else {
        DDX_Text(exchange, IDC_BRUSH_WIDTH, m_nWidth);
    }
    DDX_Text(exchange, IDC_BRUSH_LENGTH, m_strLength);
}

void CBrushDialog::ReadRaster(CAcraster* raster)
{
    m_nDpi = raster ? raster->GetDpi() : 0;
}

BOOL CBrushDialog::OnInitDialog()
{
    SetWindowPos(nullptr, m_position.x, m_position.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    {
        const CCurentRaster current;
        ReadRaster(current.m_pRaster);
    }
    m_strLength = LengthOfWidth();
    ::SendDlgItemMessageW(m_hWnd, IDC_BRUSH_SPIN, UDM_SETRANGE, 0, MAKELPARAM(widest, narrowest));
    ::SendDlgItemMessageW(m_hWnd, IDC_BRUSH_SPIN, UDM_SETPOS, 0, MAKELPARAM(m_nWidth, 0));
    CDialog::OnInitDialog();
    GetDlgItem(IDC_BRUSH_WIDTH)->SetFocus();
    m_bInitialising = false;
    // The focus is set.
    return FALSE;
}

void CBrushDialog::OnWidthChanged()
{
    if (m_bInitialising)
        return;
    UpdateData(TRUE);
    m_strLength = LengthOfWidth();
    UpdateData(FALSE);
}
