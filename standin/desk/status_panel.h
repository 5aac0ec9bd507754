#pragma once

#include <functional>
#include <string>

#include "standin/afx/afx.h"
#include "standin/desk/ui_fonts.h"

namespace desk {

/// The line at the frame's very foot: coordinates, what is going on, and the space that is shown.
class StatusPanel : public CControlBar
{
public:
    /// `spaceClicked`: the user wants the other space.
    StatusPanel(const UiFonts& fonts, std::function<void()> spaceClicked);
    ~StatusPanel() override;

    BOOL Create(CFrameWnd* frame);
    using CControlBar::Create;

    void showCoordinates(const std::wstring& text);
    void showState(const std::wstring& text);
    void showSpace(const std::wstring& text);

    CSize CalcFixedLayout(BOOL stretch, BOOL horizontal) override;
    void OnUpdateCmdUI(CFrameWnd*, BOOL) override {}

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void DoPaint(CDC* pDC) override;

private:
    void show(std::wstring& field, const std::wstring& text);
    CRect spaceButton() const;

    const UiFonts& m_fonts;
    std::function<void()> m_spaceClicked;
    std::wstring m_coordinates, m_state, m_space;
};

} // namespace desk
