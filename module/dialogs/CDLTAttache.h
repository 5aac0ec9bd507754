#pragma once

#include "module/dialogs/CPlacementDialog.h"

/// "Insert raster": places an existing file.
class CDLTAttache : public CPlacementDialog
{
public:
    /// The raster's size in millimetres.
    CDLTAttache(double width, double height);

protected:
    void DoDataExchange(CDataExchange* exchange) override;

    DECLARE_MESSAGE_MAP()
};
