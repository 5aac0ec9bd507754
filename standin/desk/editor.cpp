#include "standin/desk/editor.h"

#include <windows.h>
#include <algorithm>
#include <utility>

#include "standin/desk/commands.h"
#include "standin/desk/coordinate_input.h"

namespace desk {
namespace {

// Half the side of the pick box, in view pixels.
constexpr double pickReach = 4;
// A press and release nearer together than this is a click, not a drag.
constexpr double clickSlack = 4;
// How far a curve may stray from its straight pieces, in pixels: when flattened anew, and until it is done again.
constexpr double freshTolerance = 0.2;
constexpr double coarsestTolerance = 0.6;
constexpr double finestTolerance = 0.02;
constexpr std::size_t keptViews = 50;

const wchar_t* const commandPrompt = L"Command:";

} // namespace

Editor::Editor(EditorWindows& windows) : m_windows(windows) {}

// --- Input ---

void Editor::post(const std::wstring& text)
{
    m_queue.post(text);
    m_windows.wake();
}

void Editor::processInput()
{
    // A module's command takes no typed input: the text waits until it has ended.
    while (!m_queue.empty() && (m_running == 0 || (m_waiting != nullptr && !m_waiting->reply)))
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

void Editor::enterLine(const std::wstring& line)
{
    m_windows.setTypedText(L"");
    if (m_waiting != nullptr) {
        answerText(line);
        return;
    }
    if (m_running > 0)
        return;
    const std::wstring command = line.empty() ? m_lastCommand : line;
    if (!command.empty())
        execute(command);
}

void Editor::enterKey()
{
    enterLine(m_windows.typedText());
}

void Editor::cancelCommand()
{
    m_windows.setTypedText(L"");
    m_windowCorner.reset();
    answer({Reply::Kind::cancel, {}, {}});
    m_windows.overlayChanged();
}

void Editor::escapeKey()
{
    m_queue.clear();
    const bool nothingToCancel = m_running == 0 && !m_windowCorner && m_windows.typedText().empty();
    cancelCommand();
    if (nothingToCancel)
        clearSelection();
}

void Editor::answer(Reply reply)
{
    if (m_waiting != nullptr && !m_waiting->reply) {
        m_waiting->reply = std::move(reply);
        m_windows.wake(); // so that a pump that waits for a message comes back
    }
}

void Editor::answerText(const std::wstring& text)
{
    const Prompt& prompt = m_waiting->prompt;
    m_windows.print(prompt.text + L" " + text);
    if (text.empty()) {
        answer({Reply::Kind::enter, {}, {}});
    } else if (prompt.entities) {
        if (!selectByText(text))
            m_windows.print(L"Click objects, or type ALL; Enter when done.");
    } else if (const auto point = parsePoint(text, m_lastPoint); point && prompt.points) {
        m_lastPoint = *point;
        answer({Reply::Kind::point, *point, text});
    } else {
        answer({Reply::Kind::text, {}, text});
    }
}

Reply Editor::ask(const Prompt& prompt)
{
    if (m_answers != nullptr) {
        if (m_answers->empty())
            return {Reply::Kind::cancel, {}, {}};
        Reply reply = std::move(m_answers->front());
        m_answers->pop_front();
        return reply;
    }
    Waiting waiting{prompt, std::nullopt};
    Waiting* const outer = std::exchange(m_waiting, &waiting);
    m_windows.showPrompt(prompt.text);
    processInput();
    while (!waiting.reply) {
        if (!m_windows.pumpMessage()) {
            waiting.reply = Reply{};
        } else {
            processInput();
        }
    }
    m_waiting = outer;
    m_windows.showPrompt(L"");
    m_windows.overlayChanged();
    return *waiting.reply;
}

void Editor::mouseMove(Vec2 view)
{
    m_cursor = view;
    if (overlay())
        m_windows.overlayChanged();
}

void Editor::leftDown(Vec2 view, bool shift)
{
    m_cursor = m_pressedAt = view;
    const bool selecting = (m_waiting != nullptr && m_waiting->prompt.entities) || m_running == 0;
    if (m_waiting != nullptr && m_waiting->prompt.points && !m_waiting->prompt.entities) {
        m_lastPoint = m_view.toDrawing(view);
        m_windows.setTypedText(L"");
        m_windows.print(m_waiting->prompt.text + L" " + formatPoint(m_lastPoint));
        answer({Reply::Kind::point, m_lastPoint, {}});
    } else if (selecting && m_windowCorner) {
        finishWindow(m_view.toDrawing(view));
    } else if (selecting) {
        pickAt(view, shift);
    }
}

void Editor::leftUp(Vec2 view)
{
    const Vec2 moved = view - m_pressedAt;
    if (m_windowCorner && std::max(std::abs(moved.x), std::abs(moved.y)) >= clickSlack)
        finishWindow(m_view.toDrawing(view));
}

// --- Commands ---

void Editor::execute(const std::wstring& line)
{
    m_lastCommand = line;
    m_windows.print(std::wstring(commandPrompt) + L" " + line);
    runNamed(line);
    m_windows.showPrompt(L"");
    m_windows.stateChanged();
    if (!m_queue.empty())
        m_windows.wake();
}

void Editor::runNamed(const std::wstring& name)
{
    const std::wstring upper = upperCase(name);
    ++m_running;
    const std::wstring outerName = std::exchange(m_runningName, upper);
    m_windows.stateChanged();
    if (const DeskCommand* command = findDeskCommand(upper)) {
        m_runningName = command->name;
        m_windows.stateChanged();
        if (command->needsDrawing && !standin::drawingOpen()) {
            print(L"No drawing is open.");
        } else {
            standin::beginDeskCommand(std::wstring(command->name));
            const auto outcome = command->run(*this);
            standin::endDeskCommand(std::wstring(command->name), outcome);
            if (outcome == standin::CommandOutcome::cancelled)
                print(L"*Cancel*");
        }
    } else if (standin::hasModuleCommand(upper)) {
        standin::runModuleCommand(upper);
    } else if (const auto variable = standin::systemVariable(upper)) {
        runVariable(upper, *variable);
    } else {
        print(L"Unknown command \"" + name + L"\". Press F1 for help.");
    }
    m_history.commit();
    m_runningName = outerName;
    --m_running;
}

bool Editor::runDeskCommand(const std::wstring& name, std::deque<Reply> answers)
{
    const DeskCommand* command = findDeskCommand(name);
    if (command == nullptr || (command->needsDrawing && !standin::drawingOpen()))
        return false;
    std::deque<Reply>* const outer = std::exchange(m_answers, &answers);
    command->run(*this);
    m_answers = outer;
    return true;
}

void Editor::runVariable(const std::wstring& name, const standin::VariableValue& present)
{
    std::wstring shown;
    if (const auto* integer = std::get_if<std::int16_t>(&present)) {
        shown = std::to_wstring(*integer);
    } else if (const auto* real = std::get_if<double>(&present)) {
        shown = formatNumber(*real);
    } else if (const auto* point = std::get_if<standin::DrawingPoint>(&present)) {
        shown = formatPoint({point->x, point->y});
    } else {
        shown = std::get<std::wstring>(present);
    }

    Prompt prompt;
    prompt.text = L"Enter new value for " + name + L" <" + shown + L">:";
    prompt.points = false;
    const Reply reply = ask(prompt);
    if (reply.kind != Reply::Kind::text)
        return;
    standin::VariableValue value = reply.text;
    if (const auto number = parseNumber(reply.text)) {
        if (std::holds_alternative<std::int16_t>(present)) {
            value = static_cast<std::int16_t>(*number);
        } else if (std::holds_alternative<double>(present)) {
            value = *number;
        }
    } else if (const auto point = parsePoint(reply.text, {})) {
        value = standin::DrawingPoint{point->x, point->y, 0};
    }
    const bool wasModel = inModelSpace();
    if (!standin::setSystemVariable(name, value)) {
        print(name + L" can't be set to " + reply.text + L".");
        return;
    }
    if (inModelSpace() != wasModel) {
        clearSelection();
        drawingChanged();
        zoomExtents();
    }
}

// --- Edits ---

void Editor::addEntity(std::unique_ptr<drawing::Entity> entity)
{
    drawing::Document& document = standin::document();
    drawing::Block& space = inModelSpace() ? document.modelSpace() : document.paperSpace();
    entity->layer = document.header.text("$CLAYER", "0");
    const drawing::Entity& added = document.addEntity(space, std::move(entity));
    m_history.record({added.handle, true});
    drawingChanged();
}

bool Editor::eraseEntities(const std::vector<drawing::Handle>& entities)
{
    bool all = true;
    for (const drawing::Handle entity : entities) {
        if (standin::eraseEntity(entity)) {
            m_history.record({entity, false});
        } else {
            all = false;
        }
    }
    m_selected.clear();
    drawingChanged();
    return all;
}

bool Editor::undo()
{
    const bool done = m_history.undo([](drawing::Handle entity, bool present) {
        return present ? standin::restoreEntity(entity)
                       : standin::eraseEntity(entity, standin::LayerLock::overridden);
    });
    clearSelection();
    drawingChanged();
    return done;
}

bool Editor::redo()
{
    const bool done = m_history.redo([](drawing::Handle entity, bool present) {
        return present ? standin::restoreEntity(entity)
                       : standin::eraseEntity(entity, standin::LayerLock::overridden);
    });
    clearSelection();
    drawingChanged();
    return done;
}

// --- Selection ---

std::optional<std::vector<drawing::Handle>> Editor::askEntities(const std::wstring& text)
{
    Prompt prompt;
    prompt.text = text;
    prompt.entities = true;
    const Reply reply = ask(prompt);
    m_windowCorner.reset();
    if (reply.kind == Reply::Kind::cancel) {
        clearSelection();
        return std::nullopt;
    }
    return std::vector<drawing::Handle>(m_selected.begin(), m_selected.end());
}

bool Editor::selectByText(const std::wstring& text)
{
    if (upperCase(text) == L"ALL") {
        selectAll();
        return true;
    }
    if (const auto point = parsePoint(text, m_lastPoint)) {
        m_lastPoint = *point;
        if (m_windowCorner) {
            finishWindow(*point);
        } else {
            pickAt(m_view.toView(*point), false);
        }
        return true;
    }
    return false;
}

void Editor::pickAt(Vec2 view, bool shift)
{
    const Vec2 at = m_view.toDrawing(view);
    const drawing::Handle found = scene().pick(at, pickReach * m_view.unitsPerPixel());
    if (found == 0) {
        m_windowCorner = at;
        m_removeWithWindow = shift;
        return;
    }
    if (shift) {
        m_selected.erase(found);
    } else {
        m_selected.insert(found);
    }
    selectionChanged();
}

void Editor::finishWindow(Vec2 corner)
{
    Box window;
    window.add(*m_windowCorner);
    window.add(corner);
    const bool crossing = corner.x < m_windowCorner->x;
    m_windowCorner.reset();
    for (const drawing::Handle entity : scene().pickWindow(window, crossing)) {
        if (m_removeWithWindow) {
            m_selected.erase(entity);
        } else {
            m_selected.insert(entity);
        }
    }
    selectionChanged();
}

void Editor::selectionChanged()
{
    if (!m_selected.empty())
        m_latestSelection.assign(m_selected.begin(), m_selected.end());
    m_windows.overlayChanged();
    m_windows.stateChanged();
}

std::vector<drawing::Handle> Editor::latestSelection() const
{
    return m_latestSelection;
}

void Editor::select(const std::vector<drawing::Handle>& entities)
{
    m_selected = {entities.begin(), entities.end()};
    selectionChanged();
}

void Editor::selectAll()
{
    m_selected.clear();
    for (const SceneItem& item : scene().items())
        m_selected.insert(item.entity);
    selectionChanged();
}

void Editor::clearSelection()
{
    m_selected.clear();
    selectionChanged();
}

std::optional<Editor::Overlay> Editor::overlay() const
{
    const Vec2 at = m_view.toDrawing(m_cursor);
    if (m_windowCorner)
        return Overlay{Prompt::Rubber::rectangle, *m_windowCorner, at, true, at.x < m_windowCorner->x};
    if (m_waiting != nullptr && m_waiting->prompt.rubber != Prompt::Rubber::none)
        return Overlay{m_waiting->prompt.rubber, m_waiting->prompt.base, at, false, false};
    return std::nullopt;
}

// --- View ---

void Editor::changeView(const std::function<void(ViewTransform&)>& change)
{
    const ViewTransform former = m_view;
    change(m_view);
    if (m_view == former)
        return;
    m_formerViews.push_back(former);
    if (m_formerViews.size() > keptViews)
        m_formerViews.erase(m_formerViews.begin());
    m_windows.viewChanged();
}

void Editor::zoomExtents()
{
    const Box extents = scene().extents();
    changeView([&](ViewTransform& view) { view.fit(extents, 0.04); });
}

void Editor::zoomPrevious()
{
    if (m_formerViews.empty())
        return;
    m_view.set(m_formerViews.back().centre(), m_formerViews.back().height());
    m_formerViews.pop_back();
    m_windows.viewChanged();
}

void Editor::resizeView(imaging::Size client)
{
    m_view.resize(client);
}

const Scene& Editor::scene()
{
    const double pixel = m_view.unitsPerPixel();
    if (m_sceneStale || m_scene.tolerance() > coarsestTolerance * pixel ||
        m_scene.tolerance() < finestTolerance * pixel) {
        if (standin::drawingOpen()) {
            m_scene.build(standin::document(), currentSpace(), freshTolerance * pixel, m_typefaces);
        } else {
            m_scene = {};
        }
        m_sceneStale = false;
    }
    return m_scene;
}

// --- Drawing ---

bool Editor::inModelSpace() const
{
    const auto value = standin::systemVariable(L"TILEMODE");
    const auto* integer = value ? std::get_if<std::int16_t>(&*value) : nullptr;
    return integer == nullptr || *integer != 0;
}

const drawing::Block& Editor::currentSpace() const
{
    const drawing::Document& document = standin::document();
    return inModelSpace() ? document.modelSpace() : document.paperSpace();
}

void Editor::drawingChanged()
{
    m_modified = true;
    regenerate();
}

void Editor::regenerate()
{
    m_sceneStale = true;
    if (standin::drawingOpen())
        std::erase_if(m_selected, [](drawing::Handle entity) { return standin::entityErased(entity); });
    m_windows.drawingChanged();
}

bool Editor::modified() const
{
    return m_modified || standin::drawingModified();
}

void Editor::showPending(std::vector<Vec2> points)
{
    m_pending = std::move(points);
    m_windows.overlayChanged();
}

void Editor::drawingOpened()
{
    m_windows.openDrawingWindow();
    m_sceneStale = true;
    const drawing::ViewportRecord& shown = standin::document().activeViewport();
    m_view.set({shown.center.x, shown.center.y}, shown.height);
    if (!scene().extents().empty() && !m_view.visible().overlaps(scene().extents()))
        zoomExtents();
    m_formerViews.clear();
    m_modified = false;
    m_windows.drawingChanged();
    m_windows.stateChanged();
}

bool Editor::openDrawing(const std::filesystem::path& path)
{
    forgetDrawing();
    const standin::Failure failure = path.empty() ? standin::newDrawing() : standin::openDrawing(path);
    if (failure) {
        m_windows.closeDrawingWindow();
        m_windows.stateChanged();
        m_windows.alert(*failure);
        return false;
    }
    drawingOpened();
    for (const std::wstring& note : standin::drawingNotes())
        print(note);
    return true;
}

bool Editor::saveDrawing(const std::filesystem::path& path)
{
    drawing::ViewportRecord& shown = standin::document().activeViewport();
    shown.center = {m_view.centre().x, m_view.centre().y};
    shown.height = m_view.height();
    shown.aspect = double(m_view.client().width) / m_view.client().height;
    if (const standin::Failure failure = standin::saveDrawing(path)) {
        m_windows.alert(*failure);
        return false;
    }
    m_modified = false;
    print(L"Saved " + path.wstring());
    m_windows.stateChanged();
    return true;
}

void Editor::forgetDrawing()
{
    m_selected.clear();
    m_latestSelection.clear();
    m_pending.clear();
    m_windowCorner.reset();
    m_history.clear();
    m_sceneStale = true;
    m_modified = false;
}

void Editor::closeDrawing()
{
    forgetDrawing();
    if (standin::drawingOpen())
        standin::closeDrawing();
    m_windows.closeDrawingWindow();
}

bool Editor::mayDiscard()
{
    if (!standin::drawingOpen() || !modified())
        return true;
    const std::filesystem::path path = standin::drawingPath();
    switch (m_windows.askToSave(path.empty() ? L"the new drawing" : path.filename().wstring())) {
    case IDYES: {
        const auto target = path.empty() ? m_windows.askForDrawing(true) : path;
        return target && saveDrawing(*target);
    }
    case IDNO:
        return true;
    default:
        return false;
    }
}

} // namespace desk
