// A desk with a frame that bars can be docked in, and a document window in it.
#pragma once

#include "module/toolbar/LaMfcToolbar.h"
#include "standin/afx/afx.h"
#include "tests/module/support/desk_fixture.h"

namespace test {

// The module's values in the registry, of which these tests leave none.
constexpr const wchar_t* settingsKey = L"Software\\Orvolabs\\HVA6\\ProgramDefault";

class ToolbarFixture : public DeskFixture
{
protected:
    void SetUp() override;
    void TearDown() override;

    CMDIFrameWnd* frame() override { return m_frameGone ? nullptr : m_frame; }
    bool runDeskCommand(const std::vector<standin::CommandArgument>& arguments) override;

    // The module's toolbar, made.
    LaMfcToolbar& toolbar();
    void openDocument();
    void closeDocument();
    void click(UINT id);
    // Brings the buttons' states up to date.
    LRESULT stateOf(UINT id);
    // Posts the press on a button's arrow, opens its menu and looks at it while it is up.
    void openMenu(UINT id, const std::function<void(HMENU menu)>& look);
    HWND floatingFrame() { return GetAncestor(toolbar(), GA_ROOT); }

    bool m_frameGone = false;
    std::vector<standin::CommandArgument> m_run; // by acedCommand
    CString m_companyThen;                       // the registry name that was current then

private:
    CMDIFrameWnd* m_frame = nullptr;
    CMDIChildWnd* m_document = nullptr;
};

} // namespace test
