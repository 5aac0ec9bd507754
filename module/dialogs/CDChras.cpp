#include "module/dialogs/CDChras.h"

#include <algorithm>
#include <cstdlib>

#include "module/base/SayOnCommandLine.h"
#include "module/dialogs/PaperSizes.h"
#include "module/dialogs/UnitFields.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/Coordinates.h"
#include "module/resources/resource.h"

namespace {

constexpr int smallestDpi = 20;
constexpr int largestDpi = 2000;
constexpr double shortestSide = 1; // millimetres
constexpr double longestSide = 10000;
constexpr int pageTolerance = 50000; // 5 mm, in the units of PaperSizes
constexpr double paperUnitsPerInch = MillimetresPerInch * PaperUnitsPerMillimetre;

// The page of this size in the units of PaperSizes, or -1.
int FindPage(int width, int height)
{
    const auto isNear = [](long long one, long long other) { return std::abs(one - other) < pageTolerance; };
    for (std::size_t page = 0; page < PaperSizes.size(); ++page) {
        if (isNear(PaperSizes[page].width, width) && isNear(PaperSizes[page].height, height))
            return static_cast<int>(page);
    }
    return -1;
}

int WholeMillimetres(double length)
{
    return TruncateToInt(length + 0.5);
}

} // namespace

BEGIN_MESSAGE_MAP(CDChras, CDialog)
ON_CBN_SELCHANGE(IDC_CHANGE_PAGE, &CDChras::OnPageChosen)
ON_EN_KILLFOCUS(IDC_CHANGE_WIDTH, &CDChras::OnFieldLeft)
ON_EN_KILLFOCUS(IDC_CHANGE_HEIGHT, &CDChras::OnFieldLeft)
ON_EN_KILLFOCUS(IDC_CHANGE_DPI, &CDChras::OnFieldLeft)
END_MESSAGE_MAP()

CDChras::CDChras() : CDialog(IDD_CHANGE_RASTER) {}

void CDChras::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_CHANGE_CURRENT_PAGE, m_strPage);
    DDX_LengthValue(exchange, IDC_CHANGE_CURRENT_WIDTH, m_dCurrentWidth);
    DDX_LengthText(exchange, IDC_CHANGE_CURRENT_WIDTH, m_dCurrentWidth, 0);
    DDX_LengthValue(exchange, IDC_CHANGE_CURRENT_HEIGHT, m_dCurrentHeight);
    DDX_LengthText(exchange, IDC_CHANGE_CURRENT_HEIGHT, m_dCurrentHeight, 0);
    DDX_Text(exchange, IDC_CHANGE_CURRENT_DPI, m_nCurrentDpi);
    DDX_CBIndex(exchange, IDC_CHANGE_PAGE, m_nPage);
    DDX_LengthValue(exchange, IDC_CHANGE_WIDTH, m_dWidth);
    DDX_LengthText(exchange, IDC_CHANGE_WIDTH, m_dWidth, 0);
    DDX_LengthValue(exchange, IDC_CHANGE_HEIGHT, m_dHeight);
    DDX_LengthText(exchange, IDC_CHANGE_HEIGHT, m_dHeight, 0);
    DDX_Text(exchange, IDC_CHANGE_DPI, m_nDpi);
    DDV_MinMaxInt(exchange, m_nDpi, smallestDpi, largestDpi);
}

BOOL CDChras::OnInitDialog()
{
    FillPaperList(*GetDlgItem(IDC_CHANGE_PAGE), PaperNames::LongSideFirst);
    ReadRaster();
    CDialog::OnInitDialog();
    return TRUE;
}

// A raster that nearly has the size of a page is offered that very size.
void CDChras::ReadRaster()
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    m_nCurrentDpi = m_nDpi = current.m_pRaster->GetDpi();
    if (m_nDpi <= 0)
        return;
    const CSize size = current.m_pRaster->GetSize();
    int width = TruncateToInt(static_cast<double>(size.cx) / m_nDpi * paperUnitsPerInch + 0.5);
    int height = TruncateToInt(static_cast<double>(size.cy) / m_nDpi * paperUnitsPerInch + 0.5);
    m_dCurrentWidth = width / PaperUnitsPerMillimetre;
    m_dCurrentHeight = height / PaperUnitsPerMillimetre;

    m_strPage.LoadString(IDS_PAGE_ALTERED);
    m_nPage = FindPage(width, height);
    if (m_nPage >= 0) {
        m_strPage = PaperName(m_nPage, PaperNames::LongSideFirst).SpanExcluding(L"(");
        const PaperSize& page = PaperSizes[static_cast<std::size_t>(m_nPage)];
        width = page.width;
        height = page.height;
    }
    m_dWidth = width / PaperUnitsPerMillimetre;
    m_dHeight = height / PaperUnitsPerMillimetre;
}

void CDChras::OnPageChosen()
{
    UpdateData(TRUE);
    if (m_nPage >= 0) {
        const PaperSize& page = PaperSizes[static_cast<std::size_t>(m_nPage)];
        m_dWidth = page.width / PaperUnitsPerMillimetre;
        m_dHeight = page.height / PaperUnitsPerMillimetre;
    }
    UpdateData(FALSE);
    ApplyLimits();
}

void CDChras::OnFieldLeft()
{
    if (!IsFieldLeftForAnother(*this))
        return;
    UpdateData(TRUE);
    ApplyLimits();
}

void CDChras::ApplyLimits()
{
    m_dWidth = std::clamp(m_dWidth, shortestSide, longestSide);
    m_dHeight = std::clamp(m_dHeight, shortestSide, longestSide);
    LimitResolution(m_dWidth, m_dHeight, m_nDpi);
    UpdateData(FALSE);
}

bool CDChras::IsUnchanged() const
{
    return m_nDpi == m_nCurrentDpi && WholeMillimetres(m_dWidth) == WholeMillimetres(m_dCurrentWidth) &&
           WholeMillimetres(m_dHeight) == WholeMillimetres(m_dCurrentHeight);
}

void CDChras::OnOK()
{
    // A resolution out of range was told to the user; the work goes on with it all the same, and the dialog stays.
    UpdateData(TRUE);
    if (!IsUnchanged())
        Change();
    CDialog::OnOK();
}

void CDChras::Change()
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    CAcraster& raster = *current.m_pRaster;
    const CSize wanted(PixelsOfLength(m_dWidth, m_nDpi), PixelsOfLength(m_dHeight, m_nDpi));
    const CSize result = wanted.cx > 0 && wanted.cy > 0 ? raster.KeepProportions(wanted) : CSize(0, 0);
    if (result.cx < 1 || result.cy < 1 || result.cx > LargestRasterWidth || result.cy > LargestRasterHeight) {
        SayOnCommandLine(L"The raster was not changed: there can be none of that size.");
        return;
    }
    const CWaitCursor wait;
    raster.Resample(wanted, m_nDpi);
    raster.Reload(true);
    // Once more, now that the drawing has the new size.
    raster.ResetRegion();
}
