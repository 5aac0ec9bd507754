#pragma once

#include "module/tools/CTool.h"

/// Lives as long as the toolbar's raster menu is up, and carries out what is chosen there.
class CRasMenuTool : public CTool
{
    DECLARE_DYNAMIC(CRasMenuTool)

public:
    CRasMenuTool() = default;

    int OnLButtonDown(CPoint point, UINT flags) override;
    int OnRButtonDown(CPoint point, UINT flags) override;
    int OnCommand(UINT id) override;
};
