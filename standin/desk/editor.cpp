#include "standin/desk/editor.h"

#include "standin/desk/commands.h"
#include "standin/desk/coordinate_input.h"

#include <algorithm>
#include <utility>

#include <windows.h>

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

Editor::Editor(EditorWindows& windows) : windows_(windows) {}

// --- Input ---

void Editor::post(const std::wstring& text)
{
    queue_.post(text);
    windows_.wake();
}

void Editor::processInput()
{
    // A module's command takes no typed input: the text waits until it has ended.
    while (!queue_.empty() && (running_ == 0 || (waiting_ != nullptr && !waiting_->reply)))
        feed(queue_.take());
}

void Editor::feed(wchar_t character)
{
    std::wstring line = windows_.typedText();
    switch (typeCharacter(line, character, blanksAreText())) {
    case LineEvent::changed:
        windows_.setTypedText(line);
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
    windows_.setTypedText(L"");
    if (waiting_ != nullptr) {
        answerText(line);
        return;
    }
    if (running_ > 0)
        return;
    const std::wstring command = line.empty() ? lastCommand_ : line;
    if (!command.empty())
        execute(command);
}

void Editor::enterKey()
{
    enterLine(windows_.typedText());
}

void Editor::cancelCommand()
{
    windows_.setTypedText(L"");
    windowCorner_.reset();
    answer({Reply::Kind::cancel, {}, {}});
    windows_.overlayChanged();
}

void Editor::escapeKey()
{
    queue_.clear();
    const bool nothingToCancel = running_ == 0 && !windowCorner_ && windows_.typedText().empty();
    cancelCommand();
    if (nothingToCancel)
        clearSelection();
}

void Editor::answer(Reply reply)
{
    if (waiting_ != nullptr && !waiting_->reply) {
        waiting_->reply = std::move(reply);
        windows_.wake(); // so that a pump that waits for a message comes back
    }
}

void Editor::answerText(const std::wstring& text)
{
    const Prompt& prompt = waiting_->prompt;
    windows_.print(prompt.text + L" " + text);
    if (text.empty()) {
        answer({Reply::Kind::enter, {}, {}});
    } else if (prompt.entities) {
        if (!selectByText(text))
            windows_.print(L"Click objects, or type ALL; Enter when done.");
    } else if (const auto point = parsePoint(text, lastPoint_); point && prompt.points) {
        lastPoint_ = *point;
        answer({Reply::Kind::point, *point, text});
    } else {
        answer({Reply::Kind::text, {}, text});
    }
}

Reply Editor::ask(const Prompt& prompt)
{
    if (answers_ != nullptr) {
        if (answers_->empty())
            return {Reply::Kind::cancel, {}, {}};
        Reply reply = std::move(answers_->front());
        answers_->pop_front();
        return reply;
    }
    Waiting waiting{prompt, std::nullopt};
    Waiting* const outer = std::exchange(waiting_, &waiting);
    windows_.showPrompt(prompt.text);
    processInput();
    while (!waiting.reply) {
        if (!windows_.pumpMessage()) {
            waiting.reply = Reply{};
        } else {
            processInput();
        }
    }
    waiting_ = outer;
    windows_.showPrompt(L"");
    windows_.overlayChanged();
    return *waiting.reply;
}

void Editor::mouseMove(Vec2 view)
{
    cursor_ = view;
    if (overlay())
        windows_.overlayChanged();
}

void Editor::leftDown(Vec2 view, bool shift)
{
    cursor_ = pressedAt_ = view;
    const bool selecting = (waiting_ != nullptr && waiting_->prompt.entities) || running_ == 0;
    if (waiting_ != nullptr && waiting_->prompt.points && !waiting_->prompt.entities) {
        lastPoint_ = view_.toDrawing(view);
        windows_.setTypedText(L"");
        windows_.print(waiting_->prompt.text + L" " + formatPoint(lastPoint_));
        answer({Reply::Kind::point, lastPoint_, {}});
    } else if (selecting && windowCorner_) {
        finishWindow(view_.toDrawing(view));
    } else if (selecting) {
        pickAt(view, shift);
    }
}

void Editor::leftUp(Vec2 view)
{
    const Vec2 moved = view - pressedAt_;
    if (windowCorner_ && std::max(std::abs(moved.x), std::abs(moved.y)) >= clickSlack)
        finishWindow(view_.toDrawing(view));
}

// --- Commands ---

void Editor::execute(const std::wstring& line)
{
    lastCommand_ = line;
    windows_.print(std::wstring(commandPrompt) + L" " + line);
    runNamed(line);
    windows_.showPrompt(L"");
    windows_.stateChanged();
    if (!queue_.empty())
        windows_.wake();
}

void Editor::runNamed(const std::wstring& name)
{
    const std::wstring upper = upperCase(name);
    ++running_;
    const std::wstring outerName = std::exchange(runningName_, upper);
    windows_.stateChanged();
    if (const DeskCommand* command = findDeskCommand(upper)) {
        runningName_ = command->name;
        windows_.stateChanged();
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
    history_.commit();
    runningName_ = outerName;
    --running_;
}

bool Editor::runDeskCommand(const std::wstring& name, std::deque<Reply> answers)
{
    const DeskCommand* command = findDeskCommand(name);
    if (command == nullptr || (command->needsDrawing && !standin::drawingOpen()))
        return false;
    std::deque<Reply>* const outer = std::exchange(answers_, &answers);
    command->run(*this);
    answers_ = outer;
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
    history_.record({added.handle, true});
    drawingChanged();
}

bool Editor::eraseEntities(const std::vector<drawing::Handle>& entities)
{
    bool all = true;
    for (const drawing::Handle entity : entities) {
        if (standin::eraseEntity(entity)) {
            history_.record({entity, false});
        } else {
            all = false;
        }
    }
    selected_.clear();
    drawingChanged();
    return all;
}

bool Editor::undo()
{
    const bool done = history_.undo([](drawing::Handle entity, bool present) {
        return present ? standin::restoreEntity(entity) : standin::eraseEntity(entity);
    });
    clearSelection();
    drawingChanged();
    return done;
}

bool Editor::redo()
{
    const bool done = history_.redo([](drawing::Handle entity, bool present) {
        return present ? standin::restoreEntity(entity) : standin::eraseEntity(entity);
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
    windowCorner_.reset();
    if (reply.kind == Reply::Kind::cancel) {
        clearSelection();
        return std::nullopt;
    }
    return std::vector<drawing::Handle>(selected_.begin(), selected_.end());
}

bool Editor::selectByText(const std::wstring& text)
{
    if (upperCase(text) == L"ALL") {
        selectAll();
        return true;
    }
    if (const auto point = parsePoint(text, lastPoint_)) {
        lastPoint_ = *point;
        if (windowCorner_) {
            finishWindow(*point);
        } else {
            pickAt(view_.toView(*point), false);
        }
        return true;
    }
    return false;
}

void Editor::pickAt(Vec2 view, bool shift)
{
    const Vec2 at = view_.toDrawing(view);
    const drawing::Handle found = scene().pick(at, pickReach * view_.unitsPerPixel());
    if (found == 0) {
        windowCorner_ = at;
        removeWithWindow_ = shift;
        return;
    }
    if (shift) {
        selected_.erase(found);
    } else {
        selected_.insert(found);
    }
    selectionChanged();
}

void Editor::finishWindow(Vec2 corner)
{
    Box window;
    window.add(*windowCorner_);
    window.add(corner);
    const bool crossing = corner.x < windowCorner_->x;
    windowCorner_.reset();
    for (const drawing::Handle entity : scene().pickWindow(window, crossing)) {
        if (removeWithWindow_) {
            selected_.erase(entity);
        } else {
            selected_.insert(entity);
        }
    }
    selectionChanged();
}

void Editor::selectionChanged()
{
    if (!selected_.empty())
        latestSelection_.assign(selected_.begin(), selected_.end());
    windows_.overlayChanged();
    windows_.stateChanged();
}

std::vector<drawing::Handle> Editor::latestSelection() const
{
    return latestSelection_;
}

void Editor::select(const std::vector<drawing::Handle>& entities)
{
    selected_ = {entities.begin(), entities.end()};
    selectionChanged();
}

void Editor::selectAll()
{
    selected_.clear();
    for (const SceneItem& item : scene().items())
        selected_.insert(item.entity);
    selectionChanged();
}

void Editor::clearSelection()
{
    selected_.clear();
    selectionChanged();
}

std::optional<Editor::Overlay> Editor::overlay() const
{
    const Vec2 at = view_.toDrawing(cursor_);
    if (windowCorner_)
        return Overlay{Prompt::Rubber::rectangle, *windowCorner_, at, true, at.x < windowCorner_->x};
    if (waiting_ != nullptr && waiting_->prompt.rubber != Prompt::Rubber::none)
        return Overlay{waiting_->prompt.rubber, waiting_->prompt.base, at, false, false};
    return std::nullopt;
}

// --- View ---

void Editor::changeView(const std::function<void(ViewTransform&)>& change)
{
    const ViewTransform former = view_;
    change(view_);
    if (view_ == former)
        return;
    formerViews_.push_back(former);
    if (formerViews_.size() > keptViews)
        formerViews_.erase(formerViews_.begin());
    windows_.viewChanged();
}

void Editor::zoomExtents()
{
    const Box extents = scene().extents();
    changeView([&](ViewTransform& view) { view.fit(extents, 0.04); });
}

void Editor::zoomPrevious()
{
    if (formerViews_.empty())
        return;
    view_.set(formerViews_.back().centre(), formerViews_.back().height());
    formerViews_.pop_back();
    windows_.viewChanged();
}

void Editor::resizeView(imaging::Size client)
{
    view_.resize(client);
}

const Scene& Editor::scene()
{
    const double pixel = view_.unitsPerPixel();
    if (sceneStale_ || scene_.tolerance() > coarsestTolerance * pixel || scene_.tolerance() < finestTolerance * pixel) {
        if (standin::drawingOpen()) {
            scene_.build(standin::document(), currentSpace(), freshTolerance * pixel, typefaces_);
        } else {
            scene_ = {};
        }
        sceneStale_ = false;
    }
    return scene_;
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
    sceneStale_ = true;
    modified_ = true;
    if (standin::drawingOpen())
        std::erase_if(selected_, [](drawing::Handle entity) { return standin::entityErased(entity); });
    windows_.drawingChanged();
}

void Editor::regenerate()
{
    sceneStale_ = true;
    windows_.drawingChanged();
}

void Editor::showPending(std::vector<Vec2> points)
{
    pending_ = std::move(points);
    windows_.overlayChanged();
}

void Editor::drawingOpened()
{
    windows_.openDrawingWindow();
    sceneStale_ = true;
    const drawing::ViewportRecord& shown = standin::document().activeViewport();
    view_.set({shown.center.x, shown.center.y}, shown.height);
    if (!scene().extents().empty() && !view_.visible().overlaps(scene().extents()))
        zoomExtents();
    formerViews_.clear();
    modified_ = false;
    windows_.drawingChanged();
    windows_.stateChanged();
}

bool Editor::openDrawing(const std::filesystem::path& path)
{
    forgetDrawing();
    const standin::Failure failure = path.empty() ? standin::newDrawing() : standin::openDrawing(path);
    if (failure) {
        windows_.closeDrawingWindow();
        windows_.stateChanged();
        windows_.alert(*failure);
        return false;
    }
    drawingOpened();
    return true;
}

bool Editor::saveDrawing(const std::filesystem::path& path)
{
    drawing::ViewportRecord& shown = standin::document().activeViewport();
    shown.center = {view_.centre().x, view_.centre().y};
    shown.height = view_.height();
    shown.aspect = double(view_.client().width) / view_.client().height;
    if (const standin::Failure failure = standin::saveDrawing(path)) {
        windows_.alert(*failure);
        return false;
    }
    modified_ = false;
    print(L"Saved " + path.wstring());
    windows_.stateChanged();
    return true;
}

void Editor::forgetDrawing()
{
    selected_.clear();
    latestSelection_.clear();
    pending_.clear();
    windowCorner_.reset();
    history_.clear();
    sceneStale_ = true;
    modified_ = false;
}

void Editor::closeDrawing()
{
    forgetDrawing();
    if (standin::drawingOpen())
        standin::closeDrawing();
    windows_.closeDrawingWindow();
}

bool Editor::mayDiscard()
{
    if (!standin::drawingOpen() || !modified_)
        return true;
    const std::filesystem::path path = standin::drawingPath();
    switch (windows_.askToSave(path.empty() ? L"the new drawing" : path.filename().wstring())) {
    case IDYES: {
        const auto target = path.empty() ? windows_.askForDrawing(true) : path;
        return target && saveDrawing(*target);
    }
    case IDNO:
        return true;
    default:
        return false;
    }
}

} // namespace desk
