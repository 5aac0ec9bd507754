#pragma once

#include <functional>
#include <string>

#include "standin/afx/afx.h"
#include "standin/desk/command_input.h"
#include "standin/desk/ui_fonts.h"

namespace desk {

/// What the command panel tells its owner.
struct CommandPanelEvents
{
    std::function<void()> entered;       // Enter, or a blank that ends the line
    std::function<bool()> blanksAreText; // whether a blank belongs to the line just now
    std::function<void()> escaped;
    std::function<void()> heightChanged;
};

/// The command line at the frame's foot: the transcript of what was said, and below it the prompt with the input line.
class CommandPanel : public CControlBar
{
public:
    CommandPanel(const UiFonts& fonts, CommandPanelEvents events);
    ~CommandPanel() override;

    BOOL Create(CFrameWnd* frame);
    using CControlBar::Create;

    void print(const std::wstring& line);
    /// Empty: the command prompt.
    void showPrompt(const std::wstring& prompt);
    std::wstring typedText() const;
    void setTypedText(const std::wstring& text);
    /// A key that another window got is typed here.
    void type(wchar_t character);
    /// More lines of the transcript, or as many as usual.
    void toggleHeight();
    std::wstring transcript() const;
    HWND inputWindow() const { return m_input.m_hWnd; }

    CSize CalcFixedLayout(BOOL stretch, BOOL horizontal) override;
    void OnUpdateCmdUI(CFrameWnd*, BOOL) override {}

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void DoPaint(CDC* pDC) override;

private:
    /// The input line: keys that mean something at a command line are taken out before the edit control sees them.
    class InputLine : public CWnd
    {
    public:
        explicit InputLine(CommandPanel& panel) : m_panel(panel) {}

    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    private:
        CommandPanel& m_panel;
    };

    bool onInputKey(WPARAM key);
    bool onInputCharacter(wchar_t character);
    void layOut();
    int rowHeight() const { return m_fonts.monospaceHeight + 8; }

    const UiFonts& m_fonts;
    CommandPanelEvents m_events;
    CWnd m_transcript;
    InputLine m_input;
    std::wstring m_prompt;
    CommandHistory m_history;
    CBrush m_ground, m_inputGround;
    bool m_tall = false;
};

} // namespace desk
