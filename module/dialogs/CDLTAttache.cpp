#include "module/dialogs/CDLTAttache.h"

#include "module/resources/resource.h"

BEGIN_MESSAGE_MAP(CDLTAttache, CPlacementDialog)
ON_EN_KILLFOCUS(IDC_PLACE_SCALE, &CDLTAttache::OnFieldLeft)
ON_EN_KILLFOCUS(IDC_PLACE_X, &CDLTAttache::OnFieldLeft)
ON_EN_KILLFOCUS(IDC_PLACE_Y, &CDLTAttache::OnFieldLeft)
ON_EN_KILLFOCUS(IDC_PLACE_Z, &CDLTAttache::OnFieldLeft)
ON_CBN_SELCHANGE(IDC_PLACE_UNIT, &CDLTAttache::Recompute)
END_MESSAGE_MAP()

CDLTAttache::CDLTAttache(double width, double height) : CPlacementDialog(IDD_INSERT_RASTER)
{
    m_dWidth = width;
    m_dHeight = height;
}

void CDLTAttache::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    ExchangeUnit(exchange);
    ExchangePoint(exchange);
    ExchangeScale(exchange);
    DDX_Check(exchange, IDC_PLACE_ZOOM, m_bZoom);
    DDX_Check(exchange, IDC_PLACE_SAVE_PATH, m_bSavePath);
}
