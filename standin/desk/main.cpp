// The drawing desk: starts the window, loads modules, opens the drawing, plays the script.

#include <windows.h>
#include <memory>
#include <shellapi.h>
#include <vector>

#include "standin/afx/afx.h"
#include "standin/desk/main_frame.h"
#include "standin/desk/options.h"
#include "standin/desk/script_console.h"
#include "standin/desk/script_player.h"
#include "standin/text.h"

namespace {

using desk::script::Outcome;

std::vector<std::wstring> programArguments()
{
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::wstring> arguments(words + 1, words + count);
    LocalFree(words);
    return arguments;
}

class DeskApp : public CWinApp
{
public:
    DeskApp() : CWinApp(L"Halvoran Desk") {}

    BOOL InitInstance() override;
    int ExitInstance() override;

private:
    bool begin();
    void playScript(std::vector<desk::script::Step> steps);

    desk::Options m_options;
    desk::MainFrame* m_frame = nullptr;
    std::unique_ptr<desk::script::Console> m_console;
    std::unique_ptr<desk::script::Player> m_player;
    int m_status = 0;
};

DeskApp theDesk;

// Loads and opens what the command line asks for. False if anything of it failed, which the command line then says.
bool DeskApp::begin()
{
    bool done = true;
    // A module enters itself in the list, so those that it does not know come first.
    if (m_options.modules.empty()) {
        for (const std::wstring& failure : standin::loadUnlistedModules())
            m_frame->commandPanel().print(failure);
    }
    for (const std::wstring& failure : standin::loadStartupModules())
        m_frame->commandPanel().print(failure);
    for (const auto& module : m_options.modules) {
        if (const auto failure = standin::loadModule(module)) {
            m_frame->commandPanel().print(*failure);
            done = false;
        }
    }
    const bool opened = m_frame->editor().openDrawing(
        m_options.drawing.empty() ? std::filesystem::path() : std::filesystem::absolute(m_options.drawing));
    return done && opened;
}

void DeskApp::playScript(std::vector<desk::script::Step> steps)
{
    desk::script::Player::Limits limits;
    limits.run = m_options.runLimitSeconds * 1000;
    m_player = std::make_unique<desk::script::Player>(*m_frame, *m_console, limits);
    m_player->start(std::move(steps));
}

BOOL DeskApp::InitInstance()
{
    std::vector<desk::script::Step> steps;
    try {
        m_options = desk::parseOptions(programArguments());
        m_console = std::make_unique<desk::script::Console>(m_options.log);
        if (m_options.help) {
            m_console->line(desk::usage);
            return FALSE;
        }
        if (!m_options.script.empty())
            steps = desk::script::load(m_options.script);
    } catch (const std::exception& error) {
        if (!m_console)
            m_console = std::make_unique<desk::script::Console>(std::filesystem::path());
        m_console->line(standin::fromUtf8(error.what()));
        m_status = static_cast<int>(Outcome::badScript);
        return FALSE;
    }

    SetRegistryKey(L"Orvolabs");
    m_frame = new desk::MainFrame;
    // A script finds the same window at every run.
    const bool byHand = m_options.script.empty();
    if (!byHand && m_options.size.empty())
        m_options.size = desk::MainFrame::usualSize;
    if (!m_frame->create(m_options.size)) {
        m_console->line(L"The main window can't be made.");
        m_status = static_cast<int>(Outcome::badScript);
        return FALSE;
    }
    m_pMainWnd = m_frame;
    if (byHand)
        m_frame->keepPlace();
    m_frame->ShowWindow(SW_SHOW);
    m_frame->UpdateWindow();
    // Nobody is there to close a box before the script has begun.
    m_frame->setAlertsShown(byHand);
    const bool begun = begin();
    m_frame->setAlertsShown(true);
    if (byHand)
        return TRUE;
    if (begun) {
        playScript(std::move(steps));
    } else {
        m_console->line(L"The script was not played:\n" + m_frame->commandPanel().transcript());
        m_status = static_cast<int>(Outcome::badScript);
        m_frame->PostMessage(desk::MainFrame::endOfScriptMessage);
    }
    return TRUE;
}

int DeskApp::ExitInstance()
{
    if (m_player) {
        // The run may only now notice that the desk is gone.
        desk::script::Player& player = *m_player;
        player.finish();
        m_status = static_cast<int>(player.outcome());
        m_player.reset();
    }
    m_console.reset();
    CWinApp::ExitInstance();
    return m_status;
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR commandLine, int show)
{
    return AfxWinMain(instance, previous, commandLine, show);
}
