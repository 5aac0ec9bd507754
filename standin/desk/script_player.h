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
    /// Waits for the run's end; what the script thread asks meanwhile is answered.
    void finish();
    Outcome outcome() const { return m_misses == 0 ? Outcome::allHeld : Outcome::missed; }

private:
    /// A step that did not come out as it should; the text says what was seen.
    struct Miss
    {
        std::wstring seen;
    };

    void run();
    bool playAll();
    void leave() const;
    void showTranscript();
    void watch() const;
    void play(const Step& step);

    void act(const Type& type);
    void act(const Click& click);
    void act(const Drag& drag);
    void act(const Move& move);
    void act(const Press& press);
    void act(const Release& release);
    void act(const ResizeView& resize);
    void act(const Key& key);
    void act(const Button& button);
    void act(const DropArrow& arrow);
    void act(const MenuEntry& entry);
    void act(const WaitForDialog& wait);
    void act(const SetText& set);
    void act(const Check& check);
    void act(const Choose& choose);
    void act(const Slide& slide);
    void act(const Push& push);
    void act(const PickFile& pick);
    void act(const Answer& answer);
    void act(const Wait& wait);
    void act(const Idle& idle);
    void act(const Shot& shot);
    void act(const ExpectRaster& expected);
    void act(const ExpectTool& expected);
    void act(const ExpectNoTool& expected);
    void act(const ExpectBox& expected);
    void act(const ExpectNoBox& expected);
    void act(const ExpectText& expected);
    void act(const ExpectFile& expected);
    void act(const ExpectEntities& expected);
    void act(const ExpectPicked& expected);
    void act(const ExpectPixel& expected);
    void act(const ExpectSelection& expected);
    void act(const ExpectNoSelection& expected);
    void act(const ExpectSaid& expected);

    /// True once the condition holds; false when the step's time is over. Looked at on the windows' thread.
    bool comesTrue(const std::function<bool()>& condition, int milliseconds) const;
    bool comesTrue(const std::function<bool()>& condition) const { return comesTrue(condition, m_limits.step); }
    void settle() const;
    bool deskWaits() const;
    HWND dialogInFront() const;
    HWND control(int id) const;
    POINT inView(const Place& place) const;
    HWND viewForMouse() const;
    void mouseIsAt(POINT view, Held held);
    std::optional<POINT> pointerOnScreen() const;
    void pushControl(HWND button) const;
    ToolbarButton usableButton(int id) const;

    MainFrame& m_frame;
    Console& m_console;
    Limits m_limits;
    Foothold m_foothold;
    Hand m_hand{m_foothold};
    ModuleEye m_eye{m_frame, m_foothold, m_hand};
    bool m_pressed = false;         // the left button, by @press
    std::optional<POINT> m_pointer; // where the script's mouse was last, in view pixels
    std::vector<Step> m_steps;
    std::size_t m_transcriptShown = 0; // characters
    std::atomic<int> m_misses = 0;
    std::atomic<const Step*> m_present = nullptr;
    HANDLE m_over; // an event
    std::thread m_player, m_watchdog;
};

} // namespace desk::script
