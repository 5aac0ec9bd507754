#include "module/dialogs/CSizeFilterDialog.h"

#include "module/resources/resource.h"

namespace {

constexpr int smallestSize = 1;
constexpr int largestSize = 20;
constexpr double smallestLength = 0.1; // millimetres
constexpr double largestLength = 2.0;

} // namespace

CSizeFilterDialog::CSizeFilterDialog(UINT templateId) : CDialog(templateId) {}

void CSizeFilterDialog::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_FILTER_SIZE, m_slider);
    // The slider takes no position that lies outside its range.
    if (!exchange->m_bSaveAndValidate)
        m_slider.SetPositions(smallestSize, largestSize);
    DDX_Check(exchange, IDC_FILTER_ONLY_SELECTION, m_bOnlySelection);
    DDX_Slider(exchange, IDC_FILTER_SIZE, m_nSize);
}

BOOL CSizeFilterDialog::OnInitDialog()
{
    CDialog::OnInitDialog();
    m_slider.SetValues(smallestLength, largestLength, 1, true, L"");
    m_slider.SetPositions(smallestSize, largestSize);
    GetDlgItem(IDC_FILTER_ONLY_SELECTION)->EnableWindow(m_bOnlySelection);
    return TRUE;
}
