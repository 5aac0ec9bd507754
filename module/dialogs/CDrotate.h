#pragma once

#include "platform/platform.h"

/// "Rotate raster": by how much, and whether the selected area alone. Changes nothing itself.
class CDrotate : public CDialog
{
public:
    enum Mode
    {
        QuarterClockwise,
        QuarterCounterClockwise,
        HalfTurn,
        Free
    };

    CDrotate();

    int m_nMode = QuarterClockwise; // one of Mode
    int m_bOnlySelection = 0;       // on opening: whether the current raster has a selection

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;

    void OnDestroy();
    DECLARE_MESSAGE_MAP()
};
