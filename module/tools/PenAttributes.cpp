#include "module/tools/PenAttributes.h"

#include "module/base/CTempMFC.h"
#include "module/dialogs/CDRasPen.h"
#include "module/raster/CAcraster.h"

bool AskPenAttributes(CAcraster& raster, CPoint screenPoint, int& width, COLORREF& color)
{
    const CTempMFC resources;
    CDRasPen dialog;
    dialog.m_position = screenPoint;
    dialog.m_nWidth = width;
    raster.SetColor(color);
    dialog.m_nColor = raster.GetColorFlag();
    if (dialog.DoModal() != IDOK)
        return false;
    width = dialog.m_nWidth;
    // A raster without two colours offers none.
    if (dialog.m_nColor >= 0)
        raster.SetColorFlag(static_cast<BYTE>(dialog.m_nColor));
    color = CAcraster::ColorFromFlag(raster.GetColorFlag());
    return true;
}
