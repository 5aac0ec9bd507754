#include "standin/desk/editor.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "standin/desk/commands.h"
#include "standin/desk/coordinate_input.h"
#include "standin/text.h"

namespace desk {
namespace {

// Half the side of the pick box, in view pixels.
constexpr double pickReach = 4;
// A press and release nearer together than this is a click, not a drag.
constexpr double clickSlack = 4;

const wchar_t* const commandPrompt = L"Command:";
const wchar_t* const noDrawing = L"No drawing is open.";

} // namespace

Editor::Editor(EditorWindows& windows)
    : m_windows(windows),
      m_prompter(
          windows, [this] { processInput(); }, [this](const std::wstring& text) { return selectByText(text); }),
      m_noDrawing(0, windows, m_fonts)
{}

// --- The keyboard ---

void Editor::post(const std::wstring& text)
{
    m_queue.post(text);
    m_windows.wake();
}

void Editor::processInput()
{
    // What a tool edited while no command ran is a step of its own.
    if (m_running == 0)
        endOfEdit();
    // A module's command takes no typed input: the text waits until it has ended.
    while (!m_queue.empty() && (m_running == 0 || m_prompter.wantsAnswer()))
        feed(m_queue.take());
}

void Editor::feed(wchar_t character)
{
    std::wstring line = m_windows.typedText();
    switch (typeCharacter(line, character, blanksAreText())) {
    case LineEvent::changed:
        m_windows.setTypedText(line);
        break;
    case LineEvent::entered:
        enterLine(line);
        break;
    case LineEvent::cancelled:
        cancelCommand();
        break;
    case LineEvent::refresh:
        regenerate();
        break;
    }
}

void Editor::enterKey()
{
    enterLine(m_windows.typedText());
}

void Editor::enterLine(const std::wstring& line)
{
    m_windows.setTypedText(L"");
    if (m_prompter.present() != nullptr) {
        m_prompter.type(line);
        return;
    }
    if (m_running > 0)
        return;
    const std::wstring command = line.empty() ? m_lastCommand : line;
    if (!command.empty())
        execute(command);
}

void Editor::cancelCommand()
{
    m_windows.setTypedText(L"");
    m_active->selection.cancelWindow();
    m_prompter.cancel();
    m_windows.overlayChanged();
}

void Editor::escapeKey()
{
    m_queue.clear();
    const bool nothingToCancel = m_running == 0 && !m_active->selection.windowCorner() && m_windows.typedText().empty();
    cancelCommand();
    if (nothingToCancel)
        m_active->selection.clear();
}

// --- The mouse ---

void Editor::mouseMove(Vec2 view)
{
    m_cursor = view;
    if (overlay())
        m_windows.overlayChanged();
}

void Editor::leftDown(Vec2 view, bool shift)
{
    m_cursor = m_pressedAt = view;
    const Vec2 at = this->view().toDrawing(view);
    const Prompt* prompt = m_prompter.present();
    const bool selecting = prompt != nullptr ? prompt->entities : m_running == 0;
    if (prompt != nullptr && prompt->points && !prompt->entities) {
        m_prompter.point(at);
    } else if (selecting && m_active->selection.windowCorner()) {
        m_active->selection.finishWindow(scene(), at);
    } else if (selecting) {
        pickAt(at, shift);
    }
}

void Editor::leftUp(Vec2 view)
{
    const Vec2 moved = view - m_pressedAt;
    if (m_active->selection.windowCorner() && std::max(std::abs(moved.x), std::abs(moved.y)) >= clickSlack)
        m_active->selection.finishWindow(scene(), this->view().toDrawing(view));
}

std::optional<Editor::Overlay> Editor::overlay() const
{
    const Vec2 at = view().toDrawing(m_cursor);
    if (const auto corner = m_active->selection.windowCorner())
        return Overlay{Prompt::Rubber::rectangle, *corner, at, true, Selection::crosses(*corner, at)};
    const Prompt* prompt = m_prompter.present();
    if (prompt != nullptr && prompt->rubber != Prompt::Rubber::none)
        return Overlay{prompt->rubber, prompt->base, at, false, false};
    return std::nullopt;
}

void Editor::showPending(std::vector<Vec2> points)
{
    m_active->pending = std::move(points);
    m_windows.overlayChanged();
}

// --- Commands ---

void Editor::execute(const std::wstring& line)
{
    m_lastCommand = line;
    print(std::wstring(commandPrompt) + L" " + line);
    runNamed(line);
    m_windows.showPrompt(L"");
    m_windows.stateChanged();
    if (m_running == 0 && m_toShow != 0)
        showDrawing(std::exchange(m_toShow, 0));
    if (!m_queue.empty())
        m_windows.wake();
}

void Editor::runNamed(const std::wstring& name)
{
    const std::wstring upper = standin::upperCase(name);
    ++m_running;
    const std::wstring outerName = std::exchange(m_runningName, upper);
    m_windows.stateChanged();
    if (const DeskCommand* command = findDeskCommand(upper)) {
        m_runningName = command->name;
        m_windows.stateChanged();
        if (command->needsDrawing && !standin::drawingOpen()) {
            print(noDrawing);
        } else {
            standin::beginDeskCommand(std::wstring(command->name));
            const auto outcome = command->run(*this);
            standin::endDeskCommand(std::wstring(command->name), outcome);
            if (outcome == standin::CommandOutcome::cancelled)
                print(L"*Cancel*");
        }
    } else if (standin::hasModuleCommand(upper)) {
        // Modules' commands take it for granted that there is a document.
        if (standin::drawingOpen()) {
            standin::runModuleCommand(upper);
        } else {
            print(noDrawing);
        }
    } else if (const auto variable = standin::systemVariable(upper)) {
        askVariable(upper, *variable);
    } else {
        print(L"Unknown command \"" + name + L"\". Press F1 for help.");
    }
    endOfEdit();
    m_runningName = outerName;
    --m_running;
}

bool Editor::runDeskCommand(const std::wstring& name, std::deque<Reply> answers)
{
    const DeskCommand* command = findDeskCommand(name);
    if (command == nullptr || (command->needsDrawing && !standin::drawingOpen()))
        return false;
    const Prompter::AnswersBeforehand given(m_prompter, std::move(answers));
    command->run(*this);
    return true;
}

// --- Selecting ---

std::optional<std::vector<drawing::Handle>> Editor::askEntities(const std::wstring& text)
{
    Prompt prompt;
    prompt.text = text;
    prompt.entities = true;
    const Reply reply = ask(prompt);
    m_active->selection.cancelWindow();
    if (reply.kind == Reply::Kind::cancel) {
        m_active->selection.clear();
        return std::nullopt;
    }
    return std::vector<drawing::Handle>(m_active->selection.entities().begin(), m_active->selection.entities().end());
}

bool Editor::selectByText(const std::wstring& text)
{
    if (standin::upperCase(text) == L"ALL") {
        selectAll();
        return true;
    }
    const auto point = parsePoint(text, m_prompter.lastPoint());
    if (!point)
        return false;
    m_prompter.setLastPoint(*point);
    if (m_active->selection.windowCorner()) {
        m_active->selection.finishWindow(scene(), *point);
    } else {
        pickAt(*point, false);
    }
    return true;
}

void Editor::pickAt(Vec2 at, bool remove)
{
    m_active->selection.pick(scene(), at, pickReach * view().unitsPerPixel(), remove);
}

void Editor::selectAll()
{
    m_active->selection.set(m_active->session.entitiesOfSpace());
}

// --- Edits ---

void Editor::addEntity(std::unique_ptr<drawing::Entity> entity)
{
    m_active->session.add(std::move(entity));
    drawingChanged();
}

bool Editor::eraseEntities(const std::vector<drawing::Handle>& entities)
{
    const bool all = m_active->session.erase(entities);
    m_active->selection.clear();
    drawingChanged();
    return all;
}

bool Editor::undo()
{
    const bool done = m_active->session.undo();
    historyMoved();
    return done;
}

bool Editor::redo()
{
    const bool done = m_active->session.redo();
    historyMoved();
    return done;
}

void Editor::endOfEdit()
{
    if (m_active == &m_noDrawing)
        return;
    m_active->session.endOfCommand();
    std::vector<EditHistory*> histories;
    for (const auto& each : m_drawings)
        histories.push_back(&each->session.history());
    limitKeptPixels(histories);
}

void Editor::historyMoved()
{
    m_active->selection.clear();
    drawingChanged();
}

} // namespace desk
