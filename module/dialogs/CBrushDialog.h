#pragma once

#include "platform/platform.h"

class CAcraster;

/// What the dialogs of the pen and of the eraser have in common: the width in pixels, with the length that it is at the
/// raster's resolution. Opens at a place on the screen.
class CBrushDialog : public CDialog
{
public:
    CPoint m_position{0, 0}; // of the top left corner, in screen coordinates
    int m_nWidth = 1;        // pixels, 1 to 100

protected:
    explicit CBrushDialog(UINT templateId);

    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;

    /// Before the fields are shown; null if the current raster has gone.
    virtual void ReadRaster(CAcraster* raster);

    void OnWidthChanged();
    DECLARE_MESSAGE_MAP()

private:
    CString LengthOfWidth() const;

    bool m_bInitialising = true;
    int m_nDpi = 0;
    CString m_strLength;
};
