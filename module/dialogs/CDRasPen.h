#pragma once

#include "module/dialogs/CBrushDialog.h"

/// "Pen attributes": width and colour of the pen or the line. Changes nothing itself.
class CDRasPen : public CBrushDialog
{
public:
    CDRasPen();

    int m_nColor = 0; // colour flag of CAcraster

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    void ReadRaster(CAcraster* raster) override;

    void OnMeasureItem(int controlId, LPMEASUREITEMSTRUCT item);
    void OnDrawItem(int controlId, LPDRAWITEMSTRUCT item);
    DECLARE_MESSAGE_MAP()
};
