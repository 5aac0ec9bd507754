#include "module/dialogs/CDRasPen.h"

#include "module/raster/CAcraster.h"
#include "module/resources/resource.h"

namespace {

constexpr UINT rowHeight = 12;

void FillWithColor(HDC context, const CRect& place, COLORREF color)
{
    CBrush brush(color);
    FillRect(context, &place, static_cast<HBRUSH>(brush.GetSafeHandle()));
}

void FrameWithColor(HDC context, const CRect& place, COLORREF color)
{
    CBrush brush(color);
    FrameRect(context, &place, static_cast<HBRUSH>(brush.GetSafeHandle()));
}

} // namespace

BEGIN_MESSAGE_MAP(CDRasPen, CBrushDialog)
ON_WM_MEASUREITEM()
ON_WM_DRAWITEM()
END_MESSAGE_MAP()

CDRasPen::CDRasPen() : CBrushDialog(IDD_PEN) {}

void CDRasPen::DoDataExchange(CDataExchange* exchange)
{
    CBrushDialog::DoDataExchange(exchange);
    DDX_CBIndex(exchange, IDC_PEN_COLOR, m_nColor);
}

void CDRasPen::ReadRaster(CAcraster* raster)
{
    CBrushDialog::ReadRaster(raster);
    const int colors = raster ? raster->GetImageKind() : 0;
    for (int color = 0; color < colors; ++color) {
        CString name;
        name.Format(L"%d", color);
        GetDlgItem(IDC_PEN_COLOR)->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.GetString()));
    }
}

void CDRasPen::OnMeasureItem(int /*controlId*/, LPMEASUREITEMSTRUCT item)
{
    item->itemHeight = rowHeight;
}

void CDRasPen::OnDrawItem(int /*controlId*/, LPDRAWITEMSTRUCT item)
{
    // A change of the focus or of the choice alone paints nothing.
    if (!(item->itemAction & ODA_DRAWENTIRE) || item->itemID > 1)
        return;
    CRect place(item->rcItem);
    place.DeflateRect(3, 2);
    FillWithColor(item->hDC, place, CAcraster::ColorFromFlag(static_cast<BYTE>(item->itemID)));
    place.DeflateRect(1, 0);
    FrameWithColor(item->hDC, place, item->itemState & ODS_FOCUS ? 0 : 0xFFFFFF);
}
