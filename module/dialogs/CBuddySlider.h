#pragma once

#include "platform/platform.h"

/// A slider whose value rides above its thumb: in the static text that stands just before it in the dialog's template,
/// within the same group. A slider with the extended style WS_EX_TRANSPARENT has no label.
class CBuddySlider : public CBCGPSliderCtrl
{
public:
    using PaintHook = void (*)(void* argument);

    /// What the ends of the slider stand for, and how the label shows the value between: with so many decimals and the
    /// suffix, or, with `useUnits`, as a length in millimetres in the drawing's unit. The suffix
    /// "Use.Predefined.Unit" takes the label's text from the template.
    void SetValues(double minimum, double maximum, int decimals, bool useUnits, const CString& suffix);
    void SetPositions(int minimum, int maximum);

    /// Called after each painting.
    PaintHook m_pfnPaintHook = nullptr;
    void* m_pHookArgument = nullptr;

protected:
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()

private:
    bool HasLabel() const;
    bool IsVertical() const;
    void FindLabel();
    void ShowLabel();
    CString LabelText(double value) const;
    CSize TextSize(const CString& text);

    HWND m_hLabel = nullptr;
    int m_nLabelBottom = 0; // of a horizontal slider: its own top
    // The way of the thumb. All of these in the parent's client coordinates.
    int m_nTrackStart = 0;
    int m_nTrackEnd = 0;
    double m_dMinimum = 0;
    double m_dMaximum = 10;
    int m_nDecimals = 0;
    CString m_strSuffix;
    bool m_bUseUnits = false;
    bool m_bValuesSet = false;
    bool m_bPositionsSet = false;
};
