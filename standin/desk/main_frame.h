#pragma once

#include "standin/afx/afx.h"
#include "standin/desk/command_panel.h"
#include "standin/desk/document_tabs.h"
#include "standin/desk/drawing_view.h"
#include "standin/desk/drawing_windows.h"
#include "standin/desk/editor.h"
#include "standin/desk/outside_files.h"
#include "standin/desk/status_panel.h"
#include "standin/desk/ui_fonts.h"
#include "standin/host.h"

namespace desk {

/// The desk's main window: menu, drawing windows and their tabs, command line and status line; it gives the host's API
/// what it needs of the desk. It deletes itself with its window.
class MainFrame : public CMDIFrameWnd, private EditorWindows, private standin::DeskServices
{
public:
    MainFrame();
    ~MainFrame() override;

    /// Posted when a script is over: the program ends without asking.
    static constexpr UINT endOfScriptMessage = WM_APP + 2;

    static constexpr imaging::Size usualSize{1240, 900};

    /// Of that size; an empty one stands for the place that was kept, or, without any, for the usual size.
    bool create(imaging::Size size);
    /// From now on the place of the window is kept for the next start.
    void keepPlace() { m_placeKept = true; }
    /// Without boxes, what is to be told stands in the transcript alone.
    void setAlertsShown(bool shown) { m_alertsShown = shown; }
    /// Called just before the window goes.
    void whenClosed(std::function<void()> closed) { m_closed = std::move(closed); }

    Editor& editor() { return m_editor; }
    /// Of the drawing that is shown; null while no drawing is open.
    DrawingView* view() { return m_drawingWindows.view(); }
    CommandPanel& commandPanel() { return m_commandPanel; }

    void RecalcLayout(BOOL bNotify = TRUE) override;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    void onDeskCommand(UINT id);
    void onUpdateDeskCommand(CCmdUI* item);
    DECLARE_MESSAGE_MAP()

private:
    /// EditorWindows
    void print(const std::wstring& line) override;
    void showPrompt(const std::wstring& prompt) override;
    std::wstring typedText() override;
    void setTypedText(const std::wstring& text) override;
    void drawingChanged() override;
    void viewChanged() override;
    void overlayChanged() override;
    void stateChanged() override;
    void wake() override;
    bool pumpMessage() override;
    std::optional<std::filesystem::path> askForDrawing(bool toSave) override;
    std::optional<std::filesystem::path> askForModule() override;
    int askToSave(const std::wstring& drawing) override;
    void fileUsed(const std::filesystem::path& file) override { m_files.used(file); }
    void alert(const std::wstring& text) override;
    void showHelp() override;
    void close() override;
    void showDrawingWindow(standin::DrawingId drawing) override;
    void closeDrawingWindow(standin::DrawingId drawing) override;
    void reportFrameTimes() override;

    /// standin::DeskServices; alert serves both
    CMDIFrameWnd* frame() override { return this; }
    CView* drawingView() override { return view(); }
    void postCommandText(const std::wstring& text) override;
    standin::ViewState viewState() override;
    void redraw() override;
    std::optional<std::vector<standin::Handle>> selectEntities() override;
    std::vector<standin::Handle> currentSelection() override;
    bool runDeskCommand(const std::vector<standin::CommandArgument>& arguments) override;

    DrawingView* makeView();
    std::wstring titleOf(standin::DrawingId drawing) const;
    void showDrawingNames();
    void closeLater(standin::DrawingId drawing);
    void fillMenuLists(HMENU popup);
    void chooseListed(UINT id);
    void updateListed(CCmdUI& item);
    /// Types it at the command line, after what runs has been cancelled.
    void typeCommand(const std::wstring& text);
    void showStatusText(UINT id, LPCWSTR text);
    bool keysAreForDesk(const MSG& message);
    void toggleGround();
    void hovered(Vec2 view);
    void onClose();
    void closeAtOnce();
    void shutDown();

    UiFonts m_fonts;
    Editor m_editor;
    CommandPanel m_commandPanel;
    StatusPanel m_statusPanel;
    OutsideFiles m_files;
    DocumentTabs m_tabs;
    DrawingWindows m_drawingWindows;
    std::function<void()> m_closed;
    bool m_dark = false;
    bool m_wakePosted = false;
    bool m_quitting = false;
    bool m_placeKept = false;
    bool m_alertsShown = true;
    HICON m_bigIcon = nullptr, m_smallIcon = nullptr;
};

} // namespace desk
