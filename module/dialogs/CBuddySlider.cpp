#include "module/dialogs/CBuddySlider.h"

#include "module/dialogs/UnitFields.h"
#include "module/raster/Coordinates.h"

namespace {

// From the slider's end to the middle of a thumb that stands there.
constexpr int thumbMargin = 10;
constexpr int pagesOfRange = 6;
constexpr int longestSuffix = 255;
constexpr const wchar_t* suffixFromTemplate = L"Use.Predefined.Unit";

} // namespace

BEGIN_MESSAGE_MAP(CBuddySlider, CBCGPSliderCtrl)
ON_WM_PAINT()
END_MESSAGE_MAP()

bool CBuddySlider::HasLabel() const
{
    return !(GetWindowLongW(m_hWnd, GWL_EXSTYLE) & WS_EX_TRANSPARENT);
}

bool CBuddySlider::IsVertical() const
{
    return (GetWindowLongW(m_hWnd, GWL_STYLE) & TBS_VERT) != 0;
}

void CBuddySlider::SetValues(double minimum, double maximum, int decimals, bool useUnits, const CString& suffix)
{
    m_bValuesSet = true;
    m_dMinimum = minimum;
    m_dMaximum = maximum;
    m_nDecimals = decimals;
    m_strSuffix = suffix;
    m_bUseUnits = useUnits;
    if (HasLabel())
        FindLabel();
}

void CBuddySlider::FindLabel()
{
    const HWND parent = ::GetParent(m_hWnd);
    // Only once: what is hidden is passed over.
    if (!m_hLabel)
        m_hLabel = ::GetNextDlgGroupItem(parent, m_hWnd, TRUE);
    if (m_strSuffix == suffixFromTemplate) {
        wchar_t text[longestSuffix + 1] = {};
        ::GetWindowTextW(m_hLabel, text, longestSuffix + 1);
        m_strSuffix = text;
    }
    ::ShowWindow(m_hLabel, SW_HIDE);
    ::SetWindowTextW(m_hLabel, L"0");

    CRect place;
    GetWindowRect(&place);
    ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    if (IsVertical()) {
        m_nTrackStart = place.top + thumbMargin;
        m_nTrackEnd = place.bottom - thumbMargin;
    } else {
        SetWindowLongW(m_hLabel, GWL_STYLE, GetWindowLongW(m_hLabel, GWL_STYLE) | SS_CENTER);
        m_nLabelBottom = place.top;
        m_nTrackStart = place.left + thumbMargin;
        m_nTrackEnd = place.right - thumbMargin;
    }
}

void CBuddySlider::SetPositions(int minimum, int maximum)
{
    m_bPositionsSet = true;
    SetLineSize(1);
    SetPageSize((maximum - minimum) / pagesOfRange);
    SetRange(minimum, maximum, TRUE);
}

void CBuddySlider::OnPaint()
{
    CBCGPSliderCtrl::OnPaint();
    if (HasLabel()) {
        if (!m_bValuesSet)
            SetValues(0, 100, 0, false, L"");
        if (!m_bPositionsSet)
            SetPositions(0, 100);
        ShowLabel();
    }
    if (m_pfnPaintHook)
        m_pfnPaintHook(m_pHookArgument);
}

void CBuddySlider::ShowLabel()
{
    int first = 0;
    int last = 0;
    GetRange(first, last);
    const double fraction = last == first ? 0 : static_cast<double>(GetPos() - first) / (last - first);
    const CString text = LabelText((m_dMaximum - m_dMinimum) * fraction + m_dMinimum);
    const CSize size = TextSize(text);
    const int thumb = TruncateToInt((m_nTrackEnd - m_nTrackStart) * fraction + m_nTrackStart + 0.5);

    CRect place(CPoint(TruncateToInt(thumb - size.cx * 0.5 + 0.5), m_nLabelBottom - size.cy), size);
    if (IsVertical()) {
        CRect present;
        ::GetWindowRect(m_hLabel, &present);
        ::MapWindowPoints(nullptr, ::GetParent(m_hWnd), reinterpret_cast<POINT*>(&present), 2);
        place = CRect(CPoint(present.left, TruncateToInt(thumb - size.cy * 0.5 + 0.5)), size);
    }
    ::SetWindowTextW(m_hLabel, text);
    ::MoveWindow(m_hLabel, place.left, place.top, place.Width(), place.Height(), TRUE);
    ::ShowWindow(m_hLabel, SW_SHOW);
}

CString CBuddySlider::LabelText(double value) const
{
    if (m_bUseUnits)
        return FormatLength(value, m_nDecimals, true, L"", L"");
    CString text;
    text.Format(L"%.*lf%s", m_nDecimals, value, m_strSuffix.GetString());
    return text;
}

// In the label's own font.
CSize CBuddySlider::TextSize(const CString& text)
{
    CClientDC context(this);
    CFont* former =
        context.SelectObject(CFont::FromHandle(reinterpret_cast<HFONT>(::SendMessageW(m_hLabel, WM_GETFONT, 0, 0))));
    const CSize size = context.GetTextExtent(text);
    context.SelectObject(former);
    return size;
}
