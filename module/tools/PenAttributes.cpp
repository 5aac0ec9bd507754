#include "module/tools/PenAttributes.h"

#include "module/base/CTempMFC.h"
#include "module/dialogs/CDRasPen.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"

bool AskPenAttributes(const CCurentRaster& current, CPoint screenPoint, int& width, COLORREF& color)
{
    const CTempMFC resources;
    CDRasPen dialog;
    dialog.m_position = screenPoint;
    dialog.m_nWidth = width;
    current.m_pRaster->SetColor(color);
    dialog.m_nColor = current.m_pRaster->GetColorFlag();
    if (dialog.DoModal() != IDOK)
        return false;
    width = dialog.m_nWidth;
    // A raster without two colours offers none.
    if (dialog.m_nColor < 0)
        return true;
    const BYTE flag = static_cast<BYTE>(dialog.m_nColor);
    if (CAcraster* raster = current.GetIfCurrent())
        raster->SetColorFlag(flag);
    color = CAcraster::ColorFromFlag(flag);
    return true;
}
