// Control bars at a frame's edges: docking sites, floating frames and the status line.
#pragma once

#include "standin/afx/afx_frame.h"

#define CBRS_ALIGN_LEFT 0x1000L
#define CBRS_ALIGN_TOP 0x2000L
#define CBRS_ALIGN_RIGHT 0x4000L
#define CBRS_ALIGN_BOTTOM 0x8000L
#define CBRS_ALIGN_ANY 0xF000L
#define CBRS_BORDER_LEFT 0x0100L
#define CBRS_BORDER_TOP 0x0200L
#define CBRS_BORDER_RIGHT 0x0400L
#define CBRS_BORDER_BOTTOM 0x0800L
#define CBRS_BORDER_ANY 0x0F00L
#define CBRS_TOOLTIPS 0x0010L
#define CBRS_FLYBY 0x0020L
#define CBRS_FLOAT_MULTI 0x0040L
#define CBRS_SIZE_FIXED 0x0002L
#define CBRS_SIZE_DYNAMIC 0x0004L
#define CBRS_HIDE_INPLACE 0x0008L
#define CBRS_FLOATING 0x80L
#define CBRS_ORIENT_HORZ (CBRS_ALIGN_TOP | CBRS_ALIGN_BOTTOM)
#define CBRS_ORIENT_VERT (CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT)
#define CBRS_ORIENT_ANY (CBRS_ORIENT_HORZ | CBRS_ORIENT_VERT)
#define CBRS_GRIPPER 0x00400000L
#define CBRS_ALL 0x0040FFFFL
#define CBRS_TOP (CBRS_ALIGN_TOP | CBRS_BORDER_BOTTOM)
#define CBRS_BOTTOM (CBRS_ALIGN_BOTTOM | CBRS_BORDER_TOP)
#define CBRS_LEFT (CBRS_ALIGN_LEFT | CBRS_BORDER_RIGHT)
#define CBRS_RIGHT (CBRS_ALIGN_RIGHT | CBRS_BORDER_LEFT)

// Styles of a status bar pane.
#define SBPS_NORMAL 0x0000
#define SBPS_STRETCH 0x08000000

#define LM_STRETCH 0x01
#define LM_HORZ 0x02
#define LM_HORZDOCK 0x08
#define LM_VERTDOCK 0x10

/// lParam of WM_SIZEPARENT: a bar takes its part off the rectangle and moves itself there.
struct AFX_SIZEPARENTPARAMS
{
    HDWP hDWP; // null: only measure
    RECT rect;
    SIZE sizeTotal;
    BOOL bStretch;
};

class HALVORAN_STANDIN_API CControlBar : public CWnd
{
    DECLARE_DYNAMIC(CControlBar)
public:
    ~CControlBar() override;

    DWORD GetBarStyle() const { return m_dwStyle; }
    void SetBarStyle(DWORD dwStyle) { m_dwStyle = dwStyle & CBRS_ALL; }
    void SetBorders(LPCRECT lpRect);
    void SetBorders(int cxLeft = 0, int cyTop = 0, int cxRight = 0, int cyBottom = 0);
    CRect GetBorders() const { return m_borders; }
    CFrameWnd* GetDockingFrame() const { return m_pDockSite; }
    BOOL IsFloating() const;
    BOOL IsDocked() const { return m_pDockBar != nullptr; }
    void EnableDocking(DWORD dwDockStyle);
    BOOL IsVisible() const;
    virtual CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz);
    virtual CSize CalcDynamicLayout(int nLength, DWORD dwMode);
    /// The size at the place where the bar is now.
    CSize currentSize();
    /// Brings the states of the bar's buttons up to date.
    virtual void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) = 0;

    BOOL m_bAutoDelete = FALSE;
    DWORD m_dwStyle = 0;
    DWORD m_dwDockStyle = 0;
    CFrameWnd* m_pDockSite = nullptr;
    CDockBar* m_pDockBar = nullptr;

protected:
    CControlBar() = default;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    void PostNcDestroy() override;
    virtual void DoPaint(CDC* pDC);
    void DrawBorders(CDC* pDC, CRect& rect);
    void DrawGripper(CDC* pDC, const CRect& rect);
    /// The inside of a rectangle without borders and gripper.
    void CalcInsideRect(CRect& rect, BOOL bHorz) const;
    BOOL IsHorizontal() const;
    /// Whether a client point lies on something that takes clicks itself; the rest of the bar is there to drag it by.
    virtual BOOL hitsTool(CPoint point) const;

    afx_msg int OnCreate(LPCREATESTRUCT lpcs);
    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg LRESULT OnSizeParent(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);

    CRect m_borders{6, 1, 6, 1};
    CSize m_available; // what the frame offered at the last layout

    friend class CFrameWnd;
    friend class CDockBar;
    friend class CMiniDockFrameWnd;
    DECLARE_MESSAGE_MAP()

private:
    /// Until the button comes up; `grab` is the screen point where it went down.
    void trackDrag(CPoint grab);
    void toggleFloating();
    void floatAt(CPoint corner);
    CPoint m_floatPosition{-1, -1}; // where the bar floated last, on the screen
    UINT m_formerSide = 0;          // the dock bar that the bar left to float; 0 if there was none
    CRect m_formerPlace;            // in that dock bar
};

/// One side of a frame, or the inside of a floating frame: holds docked bars in rows, the first row at the upper or
/// left edge. A bar keeps the place along its row where it was put, as far as the side is long enough and others leave
/// it.
class HALVORAN_STANDIN_API CDockBar : public CControlBar
{
    DECLARE_DYNAMIC(CDockBar)
public:
    explicit CDockBar(BOOL bFloating = FALSE) : m_bFloating(bFloating) {}
    ~CDockBar() override;

    using CWnd::Create;
    BOOL Create(CWnd* pParentWnd, DWORD dwStyle, UINT nID);
    /// With a screen rectangle the bar goes where its middle lies: into a row, or into one of its own in front of the
    /// first or behind the last. Without one it gets the last row for itself.
    void DockControlBar(CControlBar* pBar, LPCRECT lpRect = nullptr);
    void RemoveControlBar(CControlBar* pBar);
    int GetDockedCount() const { return static_cast<int>(docked().size()); }
    CControlBar* GetDockedControlBar(int index) const { return docked().at(static_cast<std::size_t>(index)); }
    CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz) override;
    void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) override;

    BOOL m_bFloating;

private:
    struct Docked
    {
        CControlBar* bar;
        int offset; // where along the side it was put
    };
    using Row = std::vector<Docked>;
    struct Place
    {
        CControlBar* bar;
        CRect rect;
    };
    std::vector<CControlBar*> docked() const;
    /// Where the visible bars go within a side of the given length, and the size of them all.
    CSize arrange(int length, bool horizontal, std::vector<Place>& places);
    bool horizontal() const;
    int length() const;
    /// The row of a client rectangle; a new one if it lies beside all of them.
    Row& rowAt(const CRect& rect);
    void insertAt(CControlBar* pBar, const CRect& rect);
    void takeOut(CControlBar* pBar);
    /// Of one row, with room for all of its bars.
    static void arrangeRow(std::vector<Place>& places, std::size_t first, int length, bool horizontal);

    std::vector<Row> m_rows;

    friend class CFrameWnd;
    friend class CMiniDockFrameWnd;

public:
    /// Moves the bars into their places.
    void layOutBars();
};

/// The small frame around a floating bar. It deletes itself with its window.
class HALVORAN_STANDIN_API CMiniDockFrameWnd : public CFrameWnd
{
    DECLARE_DYNCREATE(CMiniDockFrameWnd)
public:
    CMiniDockFrameWnd();

    BOOL Create(CFrameWnd* pParent, CPoint point);
    using CFrameWnd::Create;
    void RecalcLayout(BOOL bNotify = TRUE) override;
    CDockBar* GetDockBar() { return &m_wndDockBar; }

protected:
    afx_msg void OnClose();
    afx_msg void OnNcLButtonDown(UINT nHitTest, CPoint point);
    afx_msg void OnNcLButtonDblClk(UINT nHitTest, CPoint point);
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    afx_msg void OnDestroy();

    CDockBar m_wndDockBar{TRUE};
    CFrameWnd* m_pOwnerFrame = nullptr;

    friend class CFrameWnd;
    DECLARE_MESSAGE_MAP()
};
