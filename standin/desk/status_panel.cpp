#include "standin/desk/status_panel.h"

namespace desk {
namespace {

// Lengths are those of a screen with 96 pixels to the inch.
constexpr int height = 24, margin = 10, coordinatesWidth = 230, spaceWidth = 96;
constexpr COLORREF ground = RGB(0xEC, 0xEE, 0xF1), rule = RGB(0xD5, 0xD9, 0xDF), ink = RGB(0x3A, 0x42, 0x4B),
                   accent = RGB(0x2F, 0x6F, 0xDE);

} // namespace

StatusPanel::StatusPanel(const UiFonts& fonts, std::function<void()> spaceClicked)
    : m_fonts(fonts), m_spaceClicked(std::move(spaceClicked))
{}

StatusPanel::~StatusPanel()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

BOOL StatusPanel::Create(CFrameWnd* frame)
{
    m_dwStyle = CBRS_ALIGN_BOTTOM;
    const RECT nowhere{0, 0, 10, 10};
    return CWnd::Create(AfxRegisterWndClass(CS_HREDRAW, LoadCursorW(nullptr, IDC_ARROW)), L"Status",
                        WS_CHILD | WS_VISIBLE, nowhere, frame, AFX_IDW_STATUS_BAR);
}

void StatusPanel::show(std::wstring& field, const std::wstring& text)
{
    if (field == text)
        return;
    field = text;
    if (m_hWnd != nullptr)
        Invalidate(FALSE);
}

void StatusPanel::showCoordinates(const std::wstring& text)
{
    show(m_coordinates, text);
}

void StatusPanel::showState(const std::wstring& text)
{
    show(m_state, text);
}

void StatusPanel::showSpace(const std::wstring& text)
{
    show(m_space, text);
}

CSize StatusPanel::CalcFixedLayout(BOOL, BOOL)
{
    return {32767, m_fonts.scaled(height)};
}

CRect StatusPanel::spaceButton() const
{
    CRect client;
    GetClientRect(&client);
    const int right = client.right - m_fonts.scaled(margin);
    return {right - m_fonts.scaled(spaceWidth), m_fonts.scaled(3), right, client.bottom - m_fonts.scaled(2)};
}

LRESULT StatusPanel::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_ERASEBKGND)
        return TRUE;
    if (message == WM_LBUTTONDOWN) {
        if (!m_space.empty() && spaceButton().PtInRect(CPoint(lParam)))
            m_spaceClicked();
        return 0;
    }
    return CControlBar::WindowProc(message, wParam, lParam);
}

void StatusPanel::DoPaint(CDC* pDC)
{
    CRect client;
    GetClientRect(&client);
    CDC memory;
    memory.CreateCompatibleDC(pDC);
    const HBITMAP bitmap = CreateCompatibleBitmap(pDC->GetSafeHdc(), client.Width(), client.Height());
    const HGDIOBJ formerBitmap = SelectObject(memory.GetSafeHdc(), bitmap);
    const HGDIOBJ formerFont = SelectObject(memory.GetSafeHdc(), m_fonts.text.GetSafeHandle());
    memory.FillSolidRect(&client, ground);
    memory.FillSolidRect(0, 0, client.right, 1, rule);
    memory.SetBkMode(TRANSPARENT);
    const auto draw = [&](const std::wstring& text, CRect box, COLORREF color, UINT alignment) {
        memory.SetTextColor(color);
        memory.DrawText(text.c_str(), static_cast<int>(text.size()), &box,
                        alignment | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    };
    const int gap = m_fonts.scaled(margin), coordinatesEnd = m_fonts.scaled(coordinatesWidth);
    draw(m_coordinates, {gap, 0, coordinatesEnd, client.bottom}, ink, DT_LEFT);
    memory.FillSolidRect(coordinatesEnd, m_fonts.scaled(5), 1, client.bottom - m_fonts.scaled(9), rule);
    const CRect space = spaceButton();
    draw(m_state, {coordinatesEnd + gap, 0, space.left - gap, client.bottom}, ink, DT_LEFT);
    if (!m_space.empty()) {
        memory.FillSolidRect(space, RGB(0xFF, 0xFF, 0xFF));
        draw(m_space, space, accent, DT_CENTER);
    }
    BitBlt(pDC->GetSafeHdc(), 0, 0, client.Width(), client.Height(), memory.GetSafeHdc(), 0, 0, SRCCOPY);
    SelectObject(memory.GetSafeHdc(), formerFont);
    SelectObject(memory.GetSafeHdc(), formerBitmap);
    DeleteObject(bitmap);
}

} // namespace desk
