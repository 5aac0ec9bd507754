#include "module/dialogs/CDNewRaster.h"

#include "module/base/ExtensionModule.h"
#include "module/dialogs/PaperSizes.h"
#include "module/dialogs/UnitFields.h"
#include "module/resources/resource.h"

namespace {

constexpr int firstPage = 3; // A3

CString lastFolder; // of the file dialog; lasts as long as the module

} // namespace

BEGIN_MESSAGE_MAP(CDNewRaster, CPlacementDialog)
ON_EN_KILLFOCUS(IDC_PLACE_X, &CDNewRaster::OnPointLeft)
ON_EN_KILLFOCUS(IDC_PLACE_Y, &CDNewRaster::OnPointLeft)
ON_EN_KILLFOCUS(IDC_PLACE_Z, &CDNewRaster::OnPointLeft)
ON_EN_KILLFOCUS(IDC_PLACE_SCALE, &CDNewRaster::OnFieldLeft)
ON_EN_KILLFOCUS(IDC_NEW_WIDTH, &CDNewRaster::OnFieldLeft)
ON_EN_KILLFOCUS(IDC_NEW_HEIGHT, &CDNewRaster::OnFieldLeft)
ON_EN_KILLFOCUS(IDC_NEW_DPI, &CDNewRaster::OnFieldLeft)
ON_CBN_SELCHANGE(IDC_PLACE_UNIT, &CDNewRaster::Recompute)
ON_CBN_SELCHANGE(IDC_NEW_PAGE, &CDNewRaster::OnPageChosen)
ON_BN_CLICKED(IDC_NEW_BROWSE, &CDNewRaster::OnBrowse)
END_MESSAGE_MAP()

CDNewRaster::CDNewRaster() : CPlacementDialog(IDD_NEW_RASTER), m_nPage(firstPage)
{
    m_dWidth = PaperSizes[firstPage].width / PaperUnitsPerMillimetre;
    m_dHeight = PaperSizes[firstPage].height / PaperUnitsPerMillimetre;
}

void CDNewRaster::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_CBIndex(exchange, IDC_NEW_PAGE, m_nPage);
    ExchangePoint(exchange);
    ExchangeScale(exchange);
    DDX_Text(exchange, IDC_NEW_DPI, m_nDpi);
    ExchangeUnit(exchange);
    DDX_Check(exchange, IDC_PLACE_ZOOM, m_bZoom);
    DDX_LengthValue(exchange, IDC_NEW_HEIGHT, m_dHeight);
    DDX_LengthText(exchange, IDC_NEW_HEIGHT, m_dHeight, 2);
    DDX_LengthValue(exchange, IDC_NEW_WIDTH, m_dWidth);
    DDX_LengthText(exchange, IDC_NEW_WIDTH, m_dWidth, 2);
    DDX_Text(exchange, IDC_NEW_FILE, m_strFile);
    DDX_Check(exchange, IDC_PLACE_SAVE_PATH, m_bSavePath);
}

BOOL CDNewRaster::OnInitDialog()
{
    FillPaperList(*GetDlgItem(IDC_NEW_PAGE), PaperNames::ShortSideFirst);
    CPlacementDialog::OnInitDialog();
    GetDlgItem(IDOK)->EnableWindow(FALSE);
    return TRUE;
}

// A raster that would be too large gets a lower resolution, never a smaller page.
void CDNewRaster::SetSize(double width, double height)
{
    CPlacementDialog::SetSize(width, height);
    LimitResolution(width, height, m_nDpi);
}

void CDNewRaster::OnPageChosen()
{
    UpdateData(TRUE);
    if (m_nPage >= 0) {
        const PaperSize& page = PaperSizes[static_cast<std::size_t>(m_nPage)];
        SetSize(page.width / PaperUnitsPerMillimetre, page.height / PaperUnitsPerMillimetre);
    }
    UpdateData(FALSE);
}

void CDNewRaster::OnPointLeft()
{
    if (!IsFieldLeftForAnother(*this))
        return;
    if (UpdateData(TRUE))
        UpdateData(FALSE);
}

void CDNewRaster::OnBrowse()
{
    if (lastFolder.IsEmpty())
        lastFolder = ProgramFilePath(L"Examples\\");
    CFileDialog dialog(FALSE, L"tif", nullptr, OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY,
                       L"TIFF (*.tif)|*.tif|CALS (*.cal)|*.cal||", this);
    dialog.GetOFN().lpstrInitialDir = lastFolder;
    if (dialog.DoModal() != IDOK)
        return;
    // So that showing the fields takes back nothing of what was ticked or typed.
    const bool read = UpdateData(TRUE);
    m_strFile = dialog.GetPathName();
    lastFolder = m_strFile.Left(m_strFile.ReverseFind(L'\\') + 1);
    m_nFilterIndex = static_cast<int>(dialog.GetOFN().nFilterIndex) - 1;
    GetDlgItem(IDOK)->EnableWindow(TRUE);
    if (read) {
        UpdateData(FALSE);
    } else {
        GetDlgItem(IDC_NEW_FILE)->SetWindowText(m_strFile);
    }
}
