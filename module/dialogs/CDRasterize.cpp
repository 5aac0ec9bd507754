#include "module/dialogs/CDRasterize.h"

#include <cwchar>

#include "module/base/CDefault.h"
#include "module/dialogs/PenSwatches.h"
#include "module/raster/Coordinates.h"
#include "module/resources/resource.h"

namespace {

constexpr double widthColumnShare = 0.66;
constexpr double colorColumnShare = 0.34;
constexpr int scrollBarWidth = 16;
constexpr double widthLimit = 5.0; // millimetres; no pen is as wide
constexpr double unitsPerMillimetre = 100;

CString WidthText(double millimetres)
{
    CString text;
    text.Format(L"%.2lf mm", millimetres);
    return text;
}

CString String(UINT id)
{
    CString text;
    text.LoadString(id);
    return text;
}

} // namespace

BEGIN_MESSAGE_MAP(CDRasterize, CDialog)
ON_BN_CLICKED(IDC_RASTERIZE_TO_FILE, &CDRasterize::OnToFile)
ON_BN_CLICKED(IDC_RASTERIZE_FROM_FILE, &CDRasterize::OnFromFile)
ON_BN_CLICKED(IDC_RASTERIZE_SAVE, &CDRasterize::OnSave)
ON_NOTIFY(LVN_KEYDOWN, IDC_RASTERIZE_PENS, &CDRasterize::OnListKey)
ON_NOTIFY(LVN_ENDLABELEDITW, IDC_RASTERIZE_PENS, &CDRasterize::OnLabelEdited)
END_MESSAGE_MAP()

CDRasterize::CDRasterize() : CDialog(IDD_RASTERIZE), m_pPens(std::make_unique<CPenList>(SettingsSection, 1.0)) {}

CDRasterize::~CDRasterize() = default;

void CDRasterize::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_RASTERIZE_PENS, m_list);
    DDX_Check(exchange, IDC_RASTERIZE_ONLY_SELECTION, m_bOnlySelection);
}

BOOL CDRasterize::OnInitDialog()
{
    CDialog::OnInitDialog();
    FillList();
    EnableSave(false);
    GetDlgItem(IDC_RASTERIZE_ONLY_SELECTION)->EnableWindow(m_bOnlySelection);
    return TRUE;
}

void CDRasterize::FillList()
{
    CRect place;
    m_list.GetWindowRect(&place);
    m_list.InsertColumn(0, String(IDS_LINE_WIDTH), LVCFMT_LEFT, TruncateToInt(widthColumnShare * place.Width()));
    m_list.InsertColumn(1, String(IDS_COLOR), LVCFMT_LEFT,
                        TruncateToInt(colorColumnShare * place.Width()) - scrollBarWidth);
    MakePenSwatches(m_swatches, CPenList::Count);
    m_list.SetImageList(&m_swatches, LVSIL_SMALL);
    for (int row = 0; row < CPenList::Count; ++row) {
        CString color;
        color.Format(L"%d", row + 1);
        m_list.InsertItem(row, L"", row);
        m_list.SetItemText(row, 1, color);
    }
    ShowWidths();
}

void CDRasterize::ShowWidths()
{
    for (int row = 0; row < CPenList::Count; ++row)
        m_list.SetItemText(row, 0, WidthText(m_pPens->Width(row) / unitsPerMillimetre));
}

void CDRasterize::EnableSave(bool enable)
{
    GetDlgItem(IDC_RASTERIZE_SAVE)->EnableWindow(enable);
}

void CDRasterize::OnOK()
{
    m_pPens->StoreSettings(SettingsSection);
    CDialog::OnOK();
}

void CDRasterize::OnToFile()
{
    m_pPens->WriteFile(L"");
}

void CDRasterize::OnFromFile()
{
    if (!m_pPens->ReadFile(L""))
        return;
    ShowWidths();
    EnableSave(true);
}

void CDRasterize::OnSave()
{
    m_pPens->StoreSettings(SettingsSection);
    // The focus must not stay on a button that goes grey: no key would reach the dialog any more.
    GetDlgItem(IDOK)->SetFocus();
    EnableSave(false);
}

void CDRasterize::OnListKey(NMHDR* header, LRESULT* result)
{
    *result = 0;
    if (reinterpret_cast<const NMLVKEYDOWN*>(header)->wVKey != VK_F2)
        return;
    const int row = m_list.GetNextItem(-1, LVNI_SELECTED);
    if (row >= 0)
        m_list.EditLabel(row);
}

void CDRasterize::OnLabelEdited(NMHDR* header, LRESULT* result)
{
    // The control's own change is refused: the row shows the width that was understood.
    *result = FALSE;
    const LVITEMW& item = reinterpret_cast<const NMLVDISPINFOW*>(header)->item;
    if (!item.pszText)
        return;
    const double width = _wtof(item.pszText);
    if (!(width > 0 && width < widthLimit))
        return;
    m_list.SetItemText(item.iItem, 0, WidthText(width));
    // Cut off, not rounded as Width does: 0.29 becomes 28.
    m_pPens->m_widths[static_cast<std::size_t>(item.iItem)] = TruncateToInt(width * unitsPerMillimetre);
    EnableSave(true);
}
