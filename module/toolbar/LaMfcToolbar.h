#pragma once

#include "module/shell/CFloatingBar.h"

/// The module's toolbar in the host's frame. A click posts a command to the host, so that all work runs as ordinary
/// commands; two buttons have a menu behind an arrow. While the raster's objects are closed for a host call, and while
/// no document is open, clicks do nothing.
class LaMfcToolbar : public CFloatingBar
{
public:
    LaMfcToolbar() = default;
    ~LaMfcToolbar() override;

    using CFloatingBar::Create;
    /// Makes the window, docked at the foot of the host's frame, and shows it if the settings say so. 0 if it can't be
    /// made; the user has been told then, and the object stays without a window.
    int Create();

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnUpdateButton(CCmdUI* button);
    DECLARE_MESSAGE_MAP()

private:
    void LoadImages(CImageList& images, UINT bitmapId, UINT message);
    void AddArrow(UINT id);
    void FollowFloating();
    bool OnDropDown(UINT id);
    bool OnButton(UINT id);
    CPoint BelowButton(UINT id);
    void ShowSettingsMenu();

    CImageList m_images;
    CImageList m_disabledImages;
};

/// Makes the module's toolbar unless there is one; LaMfcToolbar::Create's result, and 1 if there was one.
int CreateToolbar();
