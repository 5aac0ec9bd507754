#pragma once

#include <memory>

#include "platform/platform.h"

/// An interactive tool in the host's drawing view. While it lives, ToolMessageHook hands it the view's mouse messages
/// and the menu commands, and the host does not see them. At most one lives, in CArxApp::m_pTool; deleting it, from
/// wherever, ends it. Who makes a tool calls Start next, and deletes it if that returns 0.
///
/// Points are in view space; flags are a mouse message's wParam. A 0 from the handlers OnLButtonDown to OnCommand ends
/// the tool.
class CTool : public CObject
{
    DECLARE_DYNAMIC(CTool)

public:
    /// Ends the tool that was active, and becomes the active one.
    CTool();
    ~CTool() override;

    /// 0 declines.
    virtual int Start();
    /// Undoes Start; see EndStarted.
    virtual void Stop();
    /// Tells the tools apart for others: see ToolIds.
    virtual int ToolId();
    virtual void UpdateCursor();
    virtual int OnLButtonDown(CPoint point, UINT flags);
    virtual int OnRButtonDown(CPoint point, UINT flags);
    virtual int OnLButtonUp(CPoint point, UINT flags);
    virtual int OnRButtonUp(CPoint point, UINT flags);
    virtual int OnLButtonDblClk(CPoint point, UINT flags);
    virtual int OnMouseMove(CPoint point, UINT flags);
    /// 0 also lets the command go on to the host.
    virtual int OnCommand(UINT id);
    /// Sees each of the view's messages first; not 0 keeps it from everyone else.
    virtual int PreMessage(MSG* message);

    /// False once the view's window has gone, with its drawing: m_pView points to nothing then. The hook ends the tool
    /// at the next message.
    bool HasView() const { return IsWindow(m_hView) != FALSE; }

    /// False as well once the user has gone on to another drawing, or to none.
    bool IsInActiveView() const;

    /// How many tools have been made. Who keeps a tool's address while messages are worked off compares this as well:
    /// the tool may have ended, and another one been made at the same address.
    static unsigned MadeSoFar();

    /// Keeps a copy of what the screen shows of the view, and puts it back.
    void SaveScreen();
    void RestoreScreen();

    bool m_bBusy = false; // a pop-up menu of the tool's is up: the mouse is left to it
    CWnd* m_pView;        // the drawing view; see HasView

protected:
    /// Shows one of the module's cursors, or the arrow for 0.
    static void SetToolCursor(UINT cursorId);

    /// For the destructors of the tools that have a Stop of their own: calls it if Start has set m_bStarted.
    void EndStarted();

    bool m_bStarted = false; // set by the Start of a tool that has something to undo

private:
    HWND m_hView;
    std::unique_ptr<CBitmap> m_pSaveUnder;
};

enum ToolIds
{
    ToolIdNone = 0,
    ToolIdSelectRaster = 1,
    ToolIdArea = 2,
    ToolIdPen = 3,
    ToolIdLine = 4,
    ToolIdEraser = 5,
    ToolIdPaste = 7,
    ToolIdFreeRotate = 9,
};
