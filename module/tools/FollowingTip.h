#pragma once

#include "platform/platform.h"

/// A tool tip that follows the mouse over the drawing view with one text at a time.
class FollowingTip
{
public:
    void Create(CWnd* view);
    void Destroy();
    /// The text to show from the next message on.
    void Show(UINT textId);
    /// Takes a tip that is up off the screen at once, and lets the view paint what lay under it.
    void Hide();
    /// To be given each message of the view. Only the one after a Show counts: the others are passed on with their
    /// window blanked, so that the tip lets them go by.
    void Relay(MSG* message);

private:
    CWnd* m_pView = nullptr;
    CToolTipCtrl m_control;
    bool m_bPending = false;
};
