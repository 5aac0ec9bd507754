// What the editor and the host's API ask of the main frame.

#include "standin/desk/commands.h"
#include "standin/desk/coordinate_input.h"
#include "standin/desk/file_dialogs.h"
#include "standin/desk/main_frame.h"

namespace desk {
namespace {

constexpr UINT processInputMessage = WM_APP + 1;

Reply replyOf(const standin::CommandArgument& argument)
{
    if (const auto* point = std::get_if<standin::DrawingPoint>(&argument))
        return {Reply::Kind::point, {point->x, point->y}, {}};
    std::wstring text;
    if (const auto* real = std::get_if<double>(&argument)) {
        text = formatNumber(*real);
    } else if (const auto* integer = std::get_if<int>(&argument)) {
        text = std::to_wstring(*integer);
    } else {
        text = std::get<std::wstring>(argument);
    }
    return text.empty() ? Reply{Reply::Kind::enter, {}, {}} : Reply{Reply::Kind::text, {}, text};
}

} // namespace

// --- EditorWindows ---

void MainFrame::print(const std::wstring& line)
{
    m_commandPanel.print(line);
}

void MainFrame::showPrompt(const std::wstring& prompt)
{
    m_commandPanel.showPrompt(prompt);
}

std::wstring MainFrame::typedText()
{
    return m_commandPanel.typedText();
}

void MainFrame::setTypedText(const std::wstring& text)
{
    m_commandPanel.setTypedText(text);
}

void MainFrame::drawingChanged()
{
    if (view() != nullptr)
        view()->repaintScene();
    showDrawingNames();
}

void MainFrame::viewChanged()
{
    overlayChanged();
}

void MainFrame::overlayChanged()
{
    if (view() != nullptr)
        view()->repaintOverlay();
}

void MainFrame::stateChanged()
{
    showDrawingNames();
    m_statusPanel.showSpace(!standin::drawingOpen() ? L"" : m_editor.session().inModelSpace() ? L"MODEL" : L"LAYOUT");
    const std::size_t picked = m_editor.selection().entities().size();
    if (m_editor.commandRunning()) {
        m_statusPanel.showState(m_editor.runningCommand());
    } else if (picked > 0) {
        m_statusPanel.showState(std::to_wstring(picked) + (picked == 1 ? L" object selected" : L" objects selected"));
    } else {
        m_statusPanel.showState(standin::drawingOpen() ? L"Ready" : L"No drawing is open");
    }
}

void MainFrame::wake()
{
    if (!std::exchange(m_wakePosted, true))
        PostMessage(processInputMessage);
}

bool MainFrame::pumpMessage()
{
    MSG message;
    for (LONG count = 0; !PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE); ++count) {
        if (!AfxGetThread()->OnIdle(count))
            break;
    }
    if (AfxPumpMessage())
        return true;
    PostQuitMessage(0); // for the outer loop as well
    return false;
}

std::optional<std::filesystem::path> MainFrame::askForDrawing(bool toSave)
{
    const auto path = standin::drawingPath();
    return toSave ? askFileToSave(m_hWnd, L"Save drawing as", drawingFilter, path, L"dxf")
                  : askFileToOpen(m_hWnd, L"Open drawing", drawingFilter, path.parent_path());
}

std::optional<std::filesystem::path> MainFrame::askForModule()
{
    return askFileToOpen(m_hWnd, L"Load module", moduleFilter, {});
}

int MainFrame::askToSave(const std::wstring& drawing)
{
    return AfxMessageBox((L"Save changes to " + drawing + L"?").c_str(), MB_YESNOCANCEL | MB_ICONQUESTION);
}

void MainFrame::alert(const std::wstring& text)
{
    print(text);
    if (m_alertsShown)
        AfxMessageBox(text.c_str(), MB_OK | MB_ICONEXCLAMATION);
}

void MainFrame::showHelp()
{
    for (const DeskCommand& command : deskCommands()) {
        std::wstring line = L"  " + std::wstring(command.name);
        if (!command.alias.empty())
            line += L" (" + std::wstring(command.alias) + L")";
        line.resize(std::max<std::size_t>(line.size() + 1, 20), L' ');
        print(line + std::wstring(command.summary));
    }
    print(L"  Wheel zooms, middle button pans; F2 shows more of this transcript.");
}

void MainFrame::reportFrameTimes()
{
    if (view() == nullptr)
        return;
    const FrameTimes times = view()->takeFrameTimes();
    print(std::to_wstring(times.frames) + L" paintings, average " +
          formatNumber(times.frames > 0 ? times.total / times.frames : 0) + L" ms, longest " +
          formatNumber(times.longest) + L" ms");
}

// --- standin::DeskServices ---

void MainFrame::postCommandText(const std::wstring& text)
{
    m_editor.post(text);
}

standin::ViewState MainFrame::viewState()
{
    const ViewTransform& view = m_editor.view();
    return {view.client().width, view.client().height, {view.centre().x, view.centre().y, 0}, view.height()};
}

void MainFrame::redraw()
{
    m_editor.hostChangedDrawing();
}

std::optional<std::vector<standin::Handle>> MainFrame::selectEntities()
{
    return m_editor.askEntities(L"Select objects:");
}

std::vector<standin::Handle> MainFrame::currentSelection()
{
    return m_editor.selection().latest();
}

bool MainFrame::runDeskCommand(const std::vector<standin::CommandArgument>& arguments)
{
    const auto* name = arguments.empty() ? nullptr : std::get_if<std::wstring>(&arguments.front());
    if (name == nullptr)
        return false;
    std::deque<Reply> answers;
    for (std::size_t i = 1; i < arguments.size(); ++i)
        answers.push_back(replyOf(arguments[i]));
    return m_editor.runDeskCommand(*name, std::move(answers));
}

} // namespace desk
