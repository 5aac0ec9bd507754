#pragma once

#include "module/tools/CTool.h"
#include "module/tools/FollowingTip.h"

/// Turns the selected area by a quarter or half turn about a point that the user clicks.
class CBaseRotateTool : public CTool
{
    DECLARE_DYNAMIC(CBaseRotateTool)

public:
    CBaseRotateTool();
    ~CBaseRotateTool() override;
    void UpdateCursor() override;
    int OnLButtonDown(CPoint point, UINT flags) override;
    int OnLButtonUp(CPoint point, UINT flags) override;
    int OnMouseMove(CPoint point, UINT flags) override;
    int OnCommand(UINT id) override;
    int PreMessage(MSG* message) override;

    /// 0: a quarter turn clockwise as seen, 1: counter-clockwise, 2: half a turn.
    void SetChoice(int angleIndex) { m_nAngleIndex = angleIndex; }

private:
    int m_nAngleIndex = 0;
    FollowingTip m_tip;
    bool m_bWaiting = true; // never cleared: commands are swallowed for as long as the tool lives
    bool m_bDone = false;
};
