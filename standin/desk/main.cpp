// The drawing desk: starts the window, loads modules, opens the drawing, plays the script.

#include "standin/afx/afx.h"
#include "standin/desk/main_frame.h"
#include "standin/desk/options.h"
#include "standin/desk/script_console.h"
#include "standin/desk/script_player.h"
#include "standin/desk/text_encoding.h"

#include <memory>
#include <vector>

#include <shellapi.h>

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

    desk::Options options_;
    desk::MainFrame* frame_ = nullptr;
    std::unique_ptr<desk::script::Console> console_;
    std::unique_ptr<desk::script::Player> player_;
    int status_ = 0;
};

DeskApp theDesk;

// Loads and opens what the command line asks for. False if anything of it failed, which the command line then says.
bool DeskApp::begin()
{
    bool done = true;
    for (const std::wstring& failure : standin::loadStartupModules())
        frame_->commandPanel().print(failure);
    for (const auto& module : options_.modules) {
        if (const auto failure = standin::loadModule(module)) {
            frame_->commandPanel().print(*failure);
            done = false;
        }
    }
    const bool opened = frame_->editor().openDrawing(
        options_.drawing.empty() ? std::filesystem::path() : std::filesystem::absolute(options_.drawing));
    return done && opened;
}

void DeskApp::playScript(std::vector<desk::script::Step> steps)
{
    desk::script::Player::Limits limits;
    limits.run = options_.runLimitSeconds * 1000;
    player_ = std::make_unique<desk::script::Player>(*frame_, *console_, limits);
    player_->start(std::move(steps));
}

BOOL DeskApp::InitInstance()
{
    std::vector<desk::script::Step> steps;
    try {
        options_ = desk::parseOptions(programArguments());
        console_ = std::make_unique<desk::script::Console>(options_.log);
        if (options_.help) {
            console_->line(desk::usage);
            return FALSE;
        }
        if (!options_.script.empty())
            steps = desk::script::load(options_.script);
    } catch (const std::exception& error) {
        if (!console_)
            console_ = std::make_unique<desk::script::Console>(std::filesystem::path());
        console_->line(desk::fromUtf8(error.what()));
        status_ = static_cast<int>(Outcome::badScript);
        return FALSE;
    }

    SetRegistryKey(L"Orvolabs");
    frame_ = new desk::MainFrame;
    if (!frame_->create(options_.width, options_.height)) {
        console_->line(L"The main window can't be made.");
        status_ = static_cast<int>(Outcome::badScript);
        return FALSE;
    }
    m_pMainWnd = frame_;
    frame_->ShowWindow(SW_SHOW);
    frame_->UpdateWindow();
    // Nobody is there to close a box before the script has begun.
    frame_->setAlertsShown(options_.script.empty());
    const bool begun = begin();
    frame_->setAlertsShown(true);
    if (options_.script.empty())
        return TRUE;
    if (begun) {
        playScript(std::move(steps));
    } else {
        console_->line(L"The script was not played:\n" + frame_->commandPanel().transcript());
        status_ = static_cast<int>(Outcome::badScript);
        frame_->PostMessage(desk::MainFrame::endOfScriptMessage);
    }
    return TRUE;
}

int DeskApp::ExitInstance()
{
    if (player_) {
        // The run may only now notice that the desk is gone.
        desk::script::Player& player = *player_;
        player.finish();
        status_ = static_cast<int>(player.outcome());
        player_.reset();
    }
    console_.reset();
    CWinApp::ExitInstance();
    return status_;
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR commandLine, int show)
{
    return AfxWinMain(instance, previous, commandLine, show);
}
