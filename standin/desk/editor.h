#pragma once

#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fonts/font_folder.h"
#include "standin/desk/command_input.h"
#include "standin/desk/editor_windows.h"
#include "standin/desk/open_drawing.h"
#include "standin/desk/prompter.h"

namespace desk {

/// Runs the commands behind the windows, and gives them, the keyboard and the mouse the parts that they work on: the
/// prompt, and of the active drawing the selection, the view and the drawing itself.
class Editor
{
public:
    explicit Editor(EditorWindows& windows);

    EditorWindows& windows() { return m_windows; }
    const Selection& selection() const { return m_active->selection; }
    Selection& selection() { return m_active->selection; }
    ViewHistory& views() { return m_active->views; }
    const DrawingSession& session() const { return m_active->session; }
    drawing::FontSource& fonts() { return m_fonts; }

    const ViewTransform& view() const { return m_active->views.present(); }
    const Scene& scene() { return m_active->scenes.at(view()); }

    /// --- Input from the windows
    void post(const std::wstring& text);
    /// Types what is queued, runs what is entered. Called from the message loop.
    void processInput();
    /// Enter at the input line.
    void enterKey();
    /// Ends what waits for input and empties the input line.
    void cancelCommand();
    /// Escape: the same, and drops what is queued; with nothing to cancel it drops the selection.
    void escapeKey();
    void leftDown(Vec2 view, bool shift);
    void leftUp(Vec2 view);
    void mouseMove(Vec2 view);

    bool commandRunning() const { return m_running > 0; }
    std::wstring runningCommand() const { return m_runningName; }
    /// Nothing is queued, and no command runs but one that waits for the user.
    bool idle() const { return m_queue.empty() && (m_running == 0 || m_prompter.present() != nullptr); }
    bool blanksAreText() const { return m_prompter.present() != nullptr && m_prompter.present()->blanksAreText; }

    /// --- For commands
    void print(const std::wstring& line) { m_windows.print(line); }
    Reply ask(const Prompt& prompt) { return m_prompter.ask(prompt); }
    /// Lets the user select; nothing if he gave up. Keeps what was selected beforehand.
    std::optional<std::vector<drawing::Handle>> askEntities(const std::wstring& prompt);
    void selectAll();
    void addEntity(std::unique_ptr<drawing::Entity> entity);
    /// False if one of them is in use and was left.
    bool eraseEntities(const std::vector<drawing::Handle>& entities);
    bool undo();
    bool redo();
    void zoomExtents();
    /// The model space or the layout is shown from now on.
    void showSpace(bool model);
    /// Runs one of the desk's own commands with its answers given beforehand; false if there is no such command.
    bool runDeskCommand(const std::wstring& name, std::deque<Reply> answers);

    /// --- The drawings. What fails the user is told.
    /// One more drawing, which is shown; an empty path makes a new one. A file that is open already is only shown.
    bool openDrawing(const std::filesystem::path& path);
    bool saveDrawing(const std::filesystem::path& path, standin::SaveForm form = standin::SaveForm::OfPath);
    /// The active one, without a question of the desk's own; the one before it is shown.
    void closeDrawing();
    /// Goes to another open drawing. A command that waits for input is cancelled first, and what is queued is dropped:
    /// it was meant for the drawing that is left. While a module is at work, nothing happens.
    void showDrawing(standin::DrawingId drawing);
    /// In the order of their opening; `steps` may be negative.
    void showNextDrawing(int steps);
    bool modified(standin::DrawingId drawing) const;
    /// Asks whether to save the active drawing if it was changed; false if the user would rather go on.
    bool mayDiscard();
    /// The same for each open drawing in turn, which is shown while it is asked about.
    bool mayDiscardAll();
    /// A module or a command changed what the drawing shows.
    void drawingChanged();
    /// A module did so through the host's API, perhaps outside any command: by a tool.
    void hostChangedDrawing();
    /// Everything is flattened and painted anew, without the drawing counting as changed.
    void regenerate();

    /// --- Overlay: what is drawn over the picture while the user points.
    struct Overlay
    {
        Prompt::Rubber rubber = Prompt::Rubber::none;
        Vec2 from, to; // drawing points
        bool selectionWindow = false;
        bool crossing = false;
    };
    std::optional<Overlay> overlay() const;
    /// A run of points that a command has gathered so far, in drawing units.
    void showPending(std::vector<Vec2> points);
    const std::vector<Vec2>& pending() const { return m_active->pending; }

private:
    void feed(wchar_t character);
    void enterLine(const std::wstring& line);
    void execute(const std::wstring& line);
    void runNamed(const std::wstring& name);
    /// Sets a system variable to what the user types; `present` is its value.
    void askVariable(const std::wstring& name, const standin::VariableValue& present);
    bool selectByText(const std::wstring& text);
    void pickAt(Vec2 at, bool remove);
    OpenDrawing* find(standin::DrawingId drawing) const;
    bool showIfOpen(const std::filesystem::path& path);
    void makeActive(OpenDrawing& drawing);
    void showOpenedDrawing();
    void historyMoved();
    void spaceChanged();
    void endOfEdit();

    EditorWindows& m_windows;
    InputQueue m_queue;
    Prompter m_prompter;
    std::wstring m_lastCommand, m_runningName;
    int m_running = 0;

    fonts::FontFolder m_fonts{fonts::folderBesideProgram()};
    OpenDrawing m_noDrawing;
    std::vector<std::unique_ptr<OpenDrawing>> m_drawings; // in the order of their opening
    OpenDrawing* m_active = &m_noDrawing;
    standin::DrawingId m_toShow = 0; // once the running command has ended

    Vec2 m_cursor, m_pressedAt; // view pixels
};

} // namespace desk
