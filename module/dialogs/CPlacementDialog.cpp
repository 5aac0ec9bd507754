#include "module/dialogs/CPlacementDialog.h"

#include "module/base/CArxApp.h"
#include "module/dialogs/UnitFields.h"
#include "module/resources/resource.h"

namespace {

constexpr const wchar_t* drawingUnits[] = {L"Millimeter", L"Centimeter", L"Meter", L"Kilometer",
                                           L"Inch",       L"Feet",       L"Yard",  L"Mile"};

} // namespace

CPlacementDialog::CPlacementDialog(UINT templateId)
    : CDialog(templateId), m_dScale(g_pArxApp->m_dLastScale), m_nUnit(g_pArxApp->m_nLastUnit)
{}

BOOL CPlacementDialog::OnInitDialog()
{
    for (const wchar_t* unit : drawingUnits)
        GetDlgItem(IDC_PLACE_UNIT)->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(unit));
    SetSize(m_dWidth, m_dHeight);
    CDialog::OnInitDialog();
    return TRUE;
}

void CPlacementDialog::SetSize(double width, double height)
{
    m_strSize.Format(L"%.1lf , %.1lf", m_dScale * width, m_dScale * height);
    m_dWidth = width;
    m_dHeight = height;
}

void CPlacementDialog::ExchangePoint(CDataExchange* exchange)
{
    constexpr int decimals = 4;
    const auto coordinate = [exchange](int id, double& value) {
        DDX_LengthValue(exchange, id, value);
        DDX_LengthText(exchange, id, value, decimals);
    };
    coordinate(IDC_PLACE_X, m_insertion.x);
    coordinate(IDC_PLACE_Y, m_insertion.y);
    coordinate(IDC_PLACE_Z, m_insertion.z);
}

void CPlacementDialog::ExchangeScale(CDataExchange* exchange)
{
    DDX_LengthValue(exchange, IDC_PLACE_SCALE, m_dScale);
    DDX_LengthText(exchange, IDC_PLACE_SCALE, m_dScale, 2);
    DDX_Text(exchange, IDC_PLACE_SIZE, m_strSize);
}

void CPlacementDialog::ExchangeUnit(CDataExchange* exchange)
{
    DDX_CBIndex(exchange, IDC_PLACE_UNIT, m_nUnit);
}

void CPlacementDialog::Recompute()
{
    // A field that can't be read is left for the user to mend, and the others as he has them.
    if (!UpdateData(TRUE))
        return;
    SetSize(m_dWidth, m_dHeight);
    UpdateData(FALSE);
}

void CPlacementDialog::OnFieldLeft()
{
    if (IsFieldLeftForAnother(*this))
        Recompute();
}

void CPlacementDialog::OnOK()
{
    // What the fields held when one of them was left last, before the closing exchange.
    g_pArxApp->m_nLastUnit = m_nUnit;
    g_pArxApp->m_dLastScale = m_dScale;
    CDialog::OnOK();
}
