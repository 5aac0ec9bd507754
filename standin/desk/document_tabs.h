#pragma once

#include <functional>
#include <string>
#include <vector>

#include "standin/afx/afx.h"
#include "standin/desk/ui_fonts.h"
#include "standin/host.h"

namespace desk {

struct DocumentTab
{
    standin::DrawingId drawing = 0;
    std::wstring title;

    friend bool operator==(const DocumentTab&, const DocumentTab&) = default;
};

/// What the row of tabs tells its owner.
struct DocumentTabsEvents
{
    std::function<void(standin::DrawingId)> chosen;
    std::function<void(standin::DrawingId)> closed; // by the cross on the tab, or the middle button
};

/// The row of tabs above the drawing, one for each open drawing. It shows itself while there is more than one.
class DocumentTabs : public CControlBar
{
public:
    DocumentTabs(const UiFonts& fonts, DocumentTabsEvents events);
    ~DocumentTabs() override;

    BOOL Create(CFrameWnd* frame);
    using CControlBar::Create;

    /// True if the row came or went, so that the frame has to be laid out anew.
    bool show(std::vector<DocumentTab> tabs, standin::DrawingId active);

    CSize CalcFixedLayout(BOOL stretch, BOOL horizontal) override;
    void OnUpdateCmdUI(CFrameWnd*, BOOL) override {}

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void DoPaint(CDC* pDC) override;

private:
    CRect tabAt(std::size_t index) const;
    CRect crossIn(const CRect& tab) const;
    void paintTab(CDC& context, std::size_t index) const;
    void pressed(CPoint at, bool close);

    const UiFonts& m_fonts;
    DocumentTabsEvents m_events;
    std::vector<DocumentTab> m_tabs;
    standin::DrawingId m_active = 0;
};

} // namespace desk
