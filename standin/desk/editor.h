#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "standin/desk/command_input.h"
#include "standin/desk/edit_history.h"
#include "standin/desk/scene.h"
#include "standin/desk/view_transform.h"
#include "standin/host.h"

namespace desk {

/// What the editor needs of the desk's windows.
class EditorWindows
{
public:
    virtual ~EditorWindows() = default;

    /// A line of the command line's transcript.
    virtual void print(const std::wstring& line) = 0;
    virtual void showPrompt(const std::wstring& prompt) = 0;
    virtual std::wstring typedText() = 0;
    virtual void setTypedText(const std::wstring& text) = 0;

    /// What was painted no longer holds: the drawing itself, the part of it that shows, what lies over it.
    virtual void drawingChanged() = 0;
    virtual void viewChanged() = 0;
    virtual void overlayChanged() = 0;
    /// A drawing was opened, saved or closed, or a command began or ended.
    virtual void stateChanged() = 0;

    /// Has Editor::processInput called from the message loop.
    virtual void wake() = 0;
    /// Waits for a message and handles it; false when the program is to end.
    virtual bool pumpMessage() = 0;

    virtual std::optional<std::filesystem::path> askForDrawing(bool toSave) = 0;
    virtual std::optional<std::filesystem::path> askForModule() = 0;
    /// IDYES, IDNO or IDCANCEL.
    virtual int askToSave(const std::wstring& drawing) = 0;
    virtual void alert(const std::wstring& text) = 0;
    virtual void showHelp() = 0;
    /// How long paintings took since the last report.
    virtual void reportFrameTimes() = 0;
    virtual void close() = 0;
    /// The drawing window comes with the first drawing and goes with the last.
    virtual void openDrawingWindow() = 0;
    virtual void closeDrawingWindow() = 0;
};

/// What a running command asks the user for.
struct Prompt
{
    enum class Rubber
    {
        none,
        line,
        rectangle,
        circle
    };

    std::wstring text;
    bool points = true;         // a click in the view or a typed coordinate answers
    bool blanksAreText = false; // a blank belongs to the answer and does not end it
    bool entities = false;      // clicks in the view select entities
    Rubber rubber = Rubber::none;
    Vec2 base; // where the rubber shape begins, and what "@" coordinates count from
};

struct Reply
{
    enum class Kind
    {
        point,
        text,
        enter, // Enter alone
        cancel
    };

    Kind kind = Kind::cancel;
    Vec2 point;
    std::wstring text;
};

/// The drawing session behind the windows: the view, the selection, the command line and the commands.
class Editor
{
public:
    explicit Editor(EditorWindows& windows);

    EditorWindows& windows() { return m_windows; }

    /// --- Input from the windows
    void post(const std::wstring& text);
    /// Types what is queued, runs what is entered. Called from the message loop.
    void processInput();
    /// Enter at the input line.
    void enterLine(const std::wstring& line);
    /// Ends what waits for input and empties the input line.
    void cancelCommand();
    /// Escape: the same, and drops what is queued; with nothing to cancel it drops the selection.
    void escapeKey();
    void leftDown(Vec2 view, bool shift);
    void leftUp(Vec2 view);
    void mouseMove(Vec2 view);
    void enterKey();
    bool commandRunning() const { return m_running > 0; }
    /// Nothing is queued, and no command runs but one that waits for the user.
    bool idle() const { return m_queue.empty() && (m_running == 0 || m_waiting != nullptr); }
    bool blanksAreText() const { return m_waiting != nullptr && m_waiting->prompt.blanksAreText; }
    std::wstring runningCommand() const { return m_runningName; }

    /// --- For commands
    Reply ask(const Prompt& prompt);
    /// Lets the user select; nothing if he gave up. Keeps what was selected beforehand.
    std::optional<std::vector<drawing::Handle>> askEntities(const std::wstring& prompt);
    void print(const std::wstring& line) { m_windows.print(line); }
    Vec2 lastPoint() const { return m_lastPoint; }
    void setLastPoint(Vec2 point) { m_lastPoint = point; }
    void addEntity(std::unique_ptr<drawing::Entity> entity);
    bool eraseEntities(const std::vector<drawing::Handle>& entities);
    bool undo();
    bool redo();

    /// Runs one of the desk's own commands with its answers given beforehand; false if there is no such command.
    bool runDeskCommand(const std::wstring& name, std::deque<Reply> answers);
    /// Runs a command by name: one of the desk's, a module's, or a system variable to be set.
    void execute(const std::wstring& line);

    /// --- Drawing
    /// Empty path: a new drawing. On a failure the user is told and no drawing is open.
    bool openDrawing(const std::filesystem::path& path);
    bool saveDrawing(const std::filesystem::path& path);
    void closeDrawing();
    /// Asks whether to save a changed drawing; false if the user would rather go on.
    bool mayDiscard();
    bool modified() const;
    bool inModelSpace() const;
    const drawing::Block& currentSpace() const;
    /// A module or a command changed what the drawing shows.
    void drawingChanged();
    /// Everything is flattened and painted anew, without the drawing counting as changed.
    void regenerate();

    /// --- View
    ViewTransform& view() { return m_view; }
    void changeView(const std::function<void(ViewTransform&)>& change);
    void zoomExtents();
    void zoomPrevious();
    void resizeView(imaging::Size client);
    /// Flattened anew when the drawing or the zoom ask for it.
    const Scene& scene();
    TypefaceCache& typefaces() { return m_typefaces; }

    /// --- Selection
    const std::set<drawing::Handle>& selected() const { return m_selected; }
    std::vector<drawing::Handle> latestSelection() const;
    void select(const std::vector<drawing::Handle>& entities);
    void selectAll();
    void clearSelection();

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
    const std::vector<Vec2>& pending() const { return m_pending; }

private:
    struct Waiting
    {
        const Prompt& prompt;
        std::optional<Reply> reply;
    };

    void feed(wchar_t character);
    void answer(Reply reply);
    void answerText(const std::wstring& text);
    void runNamed(const std::wstring& name);
    void runVariable(const std::wstring& name, const standin::VariableValue& present);
    void pickAt(Vec2 view, bool shift);
    void finishWindow(Vec2 corner);
    bool selectByText(const std::wstring& text);
    void selectionChanged();
    void drawingOpened();
    void forgetDrawing();

    EditorWindows& m_windows;
    InputQueue m_queue;
    std::wstring m_lastCommand, m_runningName;
    int m_running = 0;
    Waiting* m_waiting = nullptr;
    std::deque<Reply>* m_answers = nullptr; // given beforehand to the command that runs

    ViewTransform m_view;
    std::vector<ViewTransform> m_formerViews;
    TypefaceCache m_typefaces;
    Scene m_scene;
    bool m_sceneStale = true;

    EditHistory m_history;
    bool m_modified = false;
    Vec2 m_lastPoint;
    Vec2 m_cursor; // view pixels

    std::set<drawing::Handle> m_selected;
    std::vector<drawing::Handle> m_latestSelection;
    std::vector<Vec2> m_pending;
    std::optional<Vec2> m_windowCorner; // drawing point
    Vec2 m_pressedAt;                   // view pixels
    bool m_removeWithWindow = false;
};

} // namespace desk
