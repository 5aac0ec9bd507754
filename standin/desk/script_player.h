#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "standin/desk/main_frame.h"
#include "standin/desk/module_eye.h"
#include "standin/desk/script.h"
#include "standin/desk/script_console.h"
#include "standin/desk/script_foothold.h"
#include "standin/desk/script_hand.h"
#include "standin/desk/script_soundness.h"
#include "standin/desk/script_steps.h"
#include "standin/desk/script_windows.h"

namespace desk::script {

/// What a run ended with; also the program's exit status.
enum class Outcome
{
    allHeld = 0,
    missed = 1,
    badScript = 2
};

/// Plays a script on a thread of its own while the desk runs as ever. After each step that works the desk it waits
/// until the desk shows the outcome and waits for the user again, at the command line, in a dialog or in a menu.
class Player
{
public:
    struct Limits
    {
        int step = 30'000; // how long a step may wait for what it needs, in milliseconds
        int run = 300'000; // of the whole run; then the program ends with a message
    };

    /// All public calls are made on the windows' thread.
    Player(MainFrame& frame, Console& console, Limits limits);
    ~Player();

    /// When the last step has been played, or one was missed, the desk is closed.
    void start(std::vector<Step> steps);
    /// Waits for the run's end; what the script thread asks meanwhile is answered. A breach of the host's rules that no
    /// step expected, or one that was expected and did not come, is a miss.
    void finish();
    Outcome outcome() const { return m_misses == 0 ? Outcome::allHeld : Outcome::missed; }

    // The steps, for the script thread: see docs/desk.md. One that does not come out as it should throws Miss.

    void typeLine(const std::wstring& line);
    void pressKey(const Key& key);

    void click(const Click& click);
    void drag(const Drag& drag);
    void press(const HeldPlace& at);
    void move(const HeldPlace& at);
    void release(const HeldPlace& at);
    void turnWheel(const Wheel& wheel);
    void resizeView(imaging::Size size);

    void pressToolbarButton(int id);
    void pressToolbarArrow(int id);
    void dockToolbar(Side side);
    void floatToolbar(const Place& place);
    void closeToolbar();
    void chooseMenuEntry(int id);
    void waitForDialog(const std::wstring& title);
    void setText(const ControlText& text);
    void setCheckMark(const ControlNumber& mark);
    void chooseEntry(const ControlNumber& entry);
    void moveSlider(const ControlNumber& slider);
    void pushButton(int id);
    void acceptFile(const std::filesystem::path& path);
    void dropFile(const std::filesystem::path& path);
    void answerBox(int button);

    void poke(const PokeChoice& choice);
    /// From then on a step that can't be done is passed over, and after each it is looked whether the process is sound.
    void beTolerant();

    void wait(int milliseconds);
    void waitForRest();
    void kill();
    void takeShot(const Shot& shot);

    void expectRaster() { expectRasterToBe(true); }
    void expectNoRaster() { expectRasterToBe(false); }
    void expectTool(int number);
    void expectNoTool();
    void expectToolbar() { expectToolbarToBe(true); }
    void expectNoToolbar() { expectToolbarToBe(false); }
    void expectButton(const ControlInState& expected);
    void expectEntry(const ControlInState& expected);
    void expectSelection(const imaging::Rect& pixels);
    void expectNoSelection();
    void expectPixel(const PixelInk& expected);
    void expectBox(const std::wstring& text);
    void expectNoBox();
    void expectText(const ControlText& expected);
    void expectRow(const ControlText& expected);
    void expectControl(const ControlInState& expected);
    void expectSaid(const std::wstring& text);
    /// The host will note a breach of its rules by a module, in these words among others, by the end of the run.
    void expectBreach(const std::wstring& text);
    void expectFile(const std::filesystem::path& path) { expectFileToBe(path, true); }
    void expectNoFile(const std::filesystem::path& path) { expectFileToBe(path, false); }
    void expectEntities(int count);
    void expectPicked(int count);

private:
    /// A step that did not come out as it should; the text says what was seen.
    struct Miss
    {
        std::wstring seen;
    };

    void run();
    bool playAll();
    bool play(const Step& step);
    void lookForUnsoundness() const;
    void leave() const;
    void judgeBreaches();
    void showTranscript();
    void watch() const;

    void expectRasterToBe(bool current);
    void expectFileToBe(const std::filesystem::path& path, bool present);
    /// True once the condition holds; false when the step's time is over. Looked at on the windows' thread.
    bool comesTrue(const std::function<bool()>& condition, int milliseconds) const;
    bool comesTrue(const std::function<bool()>& condition) const { return comesTrue(condition, m_limits.step); }
    /// The same for what the eye sees; it is looked at on the script thread.
    void expectSeen(const std::function<bool(std::wstring& seen)>& holds) const;
    void settle() const;
    void closeSplash() const;
    bool deskWaits() const;
    HWND dialogInFront() const;
    HWND control(int id) const;
    POINT inView(const Place& place) const;
    HWND viewForMouse() const;
    void mouseIsAt(POINT view, Held held);
    std::optional<POINT> pointerOnScreen() const;
    HWND focusWindow() const;
    void pushControl(HWND button) const;
    void pickInList(HWND list, int index) const;
    void pickInComboBox(HWND list, int index) const;
    ToolbarButton usableButton(int id) const;
    void pokeMenu(int choice) const;
    void pokeControl(HWND control, int choice) const;
    imaging::Rect partOnScreen(const PicturePart& part) const;
    imaging::Rect viewPartOnScreen(const imaging::Rect& box) const;
    void dragToolbar(POINT target) const;
    void expectToolbarToBe(bool visible);

    MainFrame& m_frame;
    Console& m_console;
    Limits m_limits;
    Foothold m_foothold;
    Hand m_hand{m_foothold};
    ModuleEye m_eye{m_frame, m_foothold, m_hand};
    bool m_pressed = false;               // the left button, by @press
    std::optional<POINT> m_pointer;       // where the script's mouse was last, in view pixels
    std::optional<Soundness> m_soundness; // once the run is tolerant
    std::vector<Step> m_steps;
    std::size_t m_transcriptShown = 0; // characters
    std::vector<std::wstring> m_expectedBreaches;
    std::atomic<int> m_misses = 0;
    std::atomic<const Step*> m_present = nullptr;
    HANDLE m_over; // an event
    std::thread m_player, m_watchdog;
};

} // namespace desk::script
