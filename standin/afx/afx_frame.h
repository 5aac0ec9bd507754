// Frame windows, single and with documents inside.
#pragma once

#include <vector>

#include "standin/afx/afx_window.h"

class CControlBar;
class CDockBar;
class CMDIChildWnd;
class CMiniDockFrameWnd;
class CView;

#define AFX_IDW_CONTROLBAR_FIRST 0xE800
#define AFX_IDW_TOOLBAR 0xE800
#define AFX_IDW_STATUS_BAR 0xE801
#define AFX_IDW_DOCKBAR_TOP 0xE81B
#define AFX_IDW_DOCKBAR_LEFT 0xE81C
#define AFX_IDW_DOCKBAR_RIGHT 0xE81D
#define AFX_IDW_DOCKBAR_BOTTOM 0xE81E
#define AFX_IDW_DOCKBAR_FLOAT 0xE81F
#define AFX_IDW_CONTROLBAR_LAST 0xE8FF
#define AFX_IDW_PANE_FIRST 0xE900
#define AFX_IDW_PANE_LAST 0xE9FF

#define AFX_IDS_IDLEMESSAGE 0xE001

struct CCreateContext
{
    CRuntimeClass* m_pNewViewClass = nullptr;
    CFrameWnd* m_pCurrentFrame = nullptr;
};

/// A frame lays its control bars out at its edges; what is left goes to the window with AFX_IDW_PANE_FIRST, its view.
/// The frame object deletes itself when its window is destroyed.
class HALVORAN_STANDIN_API CFrameWnd : public CWnd
{
    DECLARE_DYNCREATE(CFrameWnd)
public:
    CFrameWnd() = default;
    ~CFrameWnd() override;

    static const CRect rectDefault;

    virtual BOOL Create(LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle = WS_OVERLAPPEDWINDOW,
                        const RECT& rect = rectDefault, CWnd* pParentWnd = nullptr, LPCWSTR lpszMenuName = nullptr,
                        DWORD dwExStyle = 0, CCreateContext* pContext = nullptr);
    /// With the menu, accelerators, icon and title string of that number in the module's resources.
    virtual BOOL LoadFrame(UINT nIDResource, DWORD dwDefaultStyle = WS_OVERLAPPEDWINDOW, CWnd* pParentWnd = nullptr,
                           CCreateContext* pContext = nullptr);
    BOOL LoadAccelTable(LPCWSTR lpszResourceName);
    virtual CFrameWnd* GetActiveFrame();
    CView* GetActiveView() const { return m_pViewActive; }
    void SetActiveView(CView* pViewNew, BOOL bNotify = TRUE);
    virtual void RecalcLayout(BOOL bNotify = TRUE);
    virtual void ActivateFrame(int nCmdShow = -1);

    void EnableDocking(DWORD dwDockStyle);
    /// nDockBarID 0: the first side that the bar allows.
    void DockControlBar(CControlBar* pBar, UINT nDockBarID = 0, LPCRECT lpRect = nullptr);
    void DockControlBar(CControlBar* pBar, CDockBar* pDockBar, LPCRECT lpRect = nullptr);
    void FloatControlBar(CControlBar* pBar, CPoint point, DWORD dwStyle = 0x2000);
    void ShowControlBar(CControlBar* pBar, BOOL bShow, BOOL bDelay);
    CControlBar* GetControlBar(UINT nID);
    /// The dock bar under a screen point on a side that dwDockStyle allows, or null.
    CDockBar* DockBarAt(POINT screen, DWORD dwDockStyle);
    void AddControlBar(CControlBar* pBar);
    void RemoveControlBar(CControlBar* pBar);

    void SetMessageText(LPCWSTR lpszText);
    void SetMessageText(UINT nID);
    /// The text of a command's string up to its newline.
    virtual void GetMessageString(UINT nID, CString& rMessage) const;
    virtual CWnd* GetMessageBar();

    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

    BOOL m_bAutoMenuEnable = TRUE;
    HMENU m_hMenuDefault = nullptr;
    HACCEL m_hAccelTable = nullptr;

protected:
    virtual BOOL OnCreateClient(LPCREATESTRUCT lpcs, CCreateContext* pContext);
    CWnd* CreateView(CCreateContext* pContext, UINT nID = AFX_IDW_PANE_FIRST);
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    void PostNcDestroy() override;

    afx_msg int OnCreate(LPCREATESTRUCT lpcs);
    afx_msg void OnDestroy();
    afx_msg void OnClose();
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnInitMenuPopup(CMenu* pMenu, UINT nIndex, BOOL bSysMenu);
    afx_msg void OnMenuSelect(UINT nItemID, UINT nFlags, HMENU hSysMenu);
    afx_msg LRESULT OnSetMessageString(WPARAM wParam, LPARAM lParam);

    int createHelper(LPCREATESTRUCT lpcs, CCreateContext* pContext);
    CDockBar* dockBar(UINT id);

    CView* m_pViewActive = nullptr;
    std::vector<CControlBar*> m_bars;
    std::vector<CDockBar*> m_dockBars;
    std::vector<CMiniDockFrameWnd*> m_floatingFrames;
    BOOL m_bInRecalcLayout = FALSE;
    CString m_strTitle;

    friend class CControlBar;
    friend class CMiniDockFrameWnd;
    DECLARE_MESSAGE_MAP()
};

/// The frame of a program with several documents: its client area holds the children's frames.
class HALVORAN_STANDIN_API CMDIFrameWnd : public CFrameWnd
{
    DECLARE_DYNCREATE(CMDIFrameWnd)
public:
    CMDIFrameWnd() = default;

    HWND m_hWndMDIClient = nullptr;

    CMDIChildWnd* MDIGetActive(BOOL* pbMaximized = nullptr) const;
    void MDIActivate(CWnd* pWndActivate);
    void MDIMaximize(CWnd* pWnd);
    void MDIRestore(CWnd* pWnd);
    virtual BOOL CreateClient(LPCREATESTRUCT lpCreateStruct, CMenu* pWindowMenu);

    CFrameWnd* GetActiveFrame() override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    BOOL OnCreateClient(LPCREATESTRUCT lpcs, CCreateContext* pContext) override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    afx_msg void OnSetFocus(CWnd* pOldWnd);
    DECLARE_MESSAGE_MAP()
};

class HALVORAN_STANDIN_API CMDIChildWnd : public CFrameWnd
{
    DECLARE_DYNCREATE(CMDIChildWnd)
public:
    CMDIChildWnd() = default;

    virtual BOOL Create(LPCWSTR lpszClassName, LPCWSTR lpszWindowName,
                        DWORD dwStyle = WS_CHILD | WS_VISIBLE | WS_OVERLAPPEDWINDOW, const RECT& rect = rectDefault,
                        CMDIFrameWnd* pParentWnd = nullptr, CCreateContext* pContext = nullptr);
    using CFrameWnd::Create;
    void MDIDestroy();
    void MDIActivate();
    void MDIMaximize();
    void MDIRestore();
    CMDIFrameWnd* GetMDIFrame();
    BOOL DestroyWindow() override;
    void ActivateFrame(int nCmdShow = -1) override;

protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;

    afx_msg int OnCreate(LPCREATESTRUCT lpcs);
    afx_msg void OnMDIActivate(BOOL bActivate, CWnd* pActivateWnd, CWnd* pDeactivateWnd);
    DECLARE_MESSAGE_MAP()
};
