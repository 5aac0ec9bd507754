#include "standin/desk/script_player.h"

#include <chrono>
#include <cmath>

namespace desk::script {
namespace {

constexpr auto pollInterval = std::chrono::milliseconds(15);

} // namespace

Player::Player(MainFrame& frame, Console& console, Limits limits)
    : frame_(frame), console_(console), limits_(limits), over_(CreateEventW(nullptr, TRUE, FALSE, nullptr))
{
    frame_.whenClosed([this] { foothold_.close(); });
}

Player::~Player()
{
    finish();
    CloseHandle(over_);
}

void Player::finish()
{
    while (player_.joinable() &&
           MsgWaitForMultipleObjects(1, &over_, FALSE, INFINITE, QS_SENDMESSAGE) != WAIT_OBJECT_0) {
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    }
    if (player_.joinable())
        player_.join();
    if (watchdog_.joinable())
        watchdog_.join();
}

void Player::start(std::vector<Step> steps)
{
    steps_ = std::move(steps);
    // The real pointer stays out of the windows, where it would mix moves of its own with those of the script.
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    watchdog_ = std::thread([this] { watch(); });
    player_ = std::thread([this] { run(); });
}

void Player::run()
{
    try {
        const bool held = playAll();
        present_ = nullptr;
        if (held)
            console_.line(L"All " + std::to_wstring(steps_.size()) + L" steps held.");
        leave();
    } catch (const DeskGone&) {
        const Step* const step = present_;
        if (step != nullptr && step != &steps_.back()) {
            ++misses_;
            console_.line(L"MISSED: the desk was closed at line " + std::to_wstring(step->line) + L": " + step->source);
        }
    }
    SetEvent(over_);
}

// After a miss the rest is left out: it would be played on a desk in an unknown state.
bool Player::playAll()
{
    settle();
    for (const Step& step : steps_) {
        present_ = &step;
        console_.line(std::to_wstring(step.line) + L": " + step.source);
        try {
            play(step);
            showTranscript();
        } catch (const Miss& miss) {
            ++misses_;
            console_.line(L"MISSED at line " + std::to_wstring(step.line) + L": " + step.source + L"\n    " +
                          miss.seen);
            return false;
        }
    }
    return true;
}

// What the command line has said since the last step.
void Player::showTranscript()
{
    std::wstring transcript;
    foothold_.ask([&] { transcript = frame_.commandPanel().transcript(); });
    if (transcript.size() < transcriptShown_)
        transcriptShown_ = 0; // the panel has let go of its oldest lines
    std::wstring news = transcript.substr(transcriptShown_);
    transcriptShown_ = transcript.size();
    for (std::size_t start = 0; start < news.size();) {
        const auto end = std::min(news.find(L"\r\n", start), news.size());
        if (end > start)
            console_.line(L"    | " + news.substr(start, end - start));
        start = end + 2;
    }
}

// Closes the desk. Whatever it or a module still asks is declined.
void Player::leave() const
{
    const HWND frame = frame_.m_hWnd;
    PostMessageW(frame, MainFrame::endOfScriptMessage, 0, 0);
    for (;;) {
        foothold_.ask([] {});
        const HWND dialog = openDialog(foothold_.threadId());
        const HWND no = dialog != nullptr ? GetDlgItem(dialog, IDNO) : nullptr;
        if (dialog != nullptr && isMessageBox(dialog))
            console_.line(L"At the end a box was closed: " + messageBoxText(dialog));
        if (no != nullptr) {
            hand_.clickControl(no);
        } else if (dialog != nullptr) {
            PostMessageW(dialog, WM_CLOSE, 0, 0);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
}

// Ends a run that hangs, also when the windows' thread is stuck.
void Player::watch() const
{
    if (WaitForSingleObject(over_, static_cast<DWORD>(limits_.run)) != WAIT_TIMEOUT)
        return;
    const Step* const step = present_;
    console_.line(L"MISSED: the run was not over after " + std::to_wstring(limits_.run / 1000) + L" s" +
                  (step != nullptr ? L"; it was at line " + std::to_wstring(step->line) + L": " + step->source : L""));
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(Outcome::missed));
}

void Player::play(const Step& step)
{
    std::visit([this](const auto& action) { act(action); }, step.action);
}

bool Player::comesTrue(const std::function<bool()>& condition, int milliseconds) const
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;) {
        bool holds = false;
        foothold_.ask([&] { holds = condition(); });
        if (holds)
            return true;
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(pollInterval);
    }
}

bool Player::deskWaits() const
{
    const DWORD flags = inputState(foothold_.threadId()).flags;
    if ((flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE)) != 0 || openDialog(foothold_.threadId()) != nullptr)
        return true;
    return frame_.editor().idle();
}

void Player::settle() const
{
    foothold_.waitForPosted();
    comesTrue([this] { return deskWaits(); }, limits_.run);
    // A hand works on what it sees: a painting that is still due would cover what the next step draws on the view.
    foothold_.ask([this] { RedrawWindow(frame_.m_hWnd, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); });
    foothold_.waitForPosted();
}

HWND Player::dialogInFront() const
{
    HWND dialog = nullptr;
    if (!comesTrue([&] { return (dialog = openDialog(foothold_.threadId())) != nullptr; }))
        throw Miss{L"no dialog is open"};
    return dialog;
}

HWND Player::control(int id) const
{
    const HWND dialog = dialogInFront();
    HWND found = nullptr;
    if (!comesTrue([&] { return (found = findControl(dialog, id)) != nullptr && IsWindowEnabled(found); })) {
        throw Miss{L"the dialog \"" + windowText(dialog) + L"\" has no " + (found != nullptr ? L"enabled " : L"") +
                   L"control " + std::to_wstring(id)};
    }
    return found;
}

HWND Player::viewForMouse() const
{
    HWND view = nullptr;
    bool reachable = false;
    foothold_.ask([&] {
        view = frame_.view() != nullptr ? frame_.view()->m_hWnd : nullptr;
        reachable = frame_.IsWindowEnabled() != FALSE;
    });
    if (view == nullptr)
        throw Miss{L"no drawing is open"};
    if (!reachable) {
        const HWND dialog = openDialog(foothold_.threadId());
        throw Miss{L"the drawing view is out of reach" +
                   (dialog != nullptr ? L" behind the dialog \"" + windowText(dialog) + L"\"" : L"")};
    }
    return view;
}

POINT Player::inView(const Place& place) const
{
    POINT at{};
    bool inside = false;
    foothold_.ask([&] {
        const ViewTransform& view = frame_.editor().view();
        const Vec2 pixel = place.inViewPixels ? place.at : view.toView(place.at);
        inside = pixel.x > -0.5 && pixel.y > -0.5 && pixel.x < view.client().width - 0.5 &&
                 pixel.y < view.client().height - 0.5;
        at = {std::lround(std::clamp(pixel.x, -30000.0, 30000.0)), std::lround(std::clamp(pixel.y, -30000.0, 30000.0))};
    });
    if (!inside)
        throw Miss{L"the place lies outside the view"};
    return at;
}

void Player::mouseIsAt(POINT view, Held held)
{
    pointer_ = view;
    eye_.noteMouse(view, held);
}

// Where the pointer is to be seen: in the view, unless a dialog or a menu has the mouse.
std::optional<POINT> Player::pointerOnScreen() const
{
    if (!pointer_ || frame_.view() == nullptr || openDialog(foothold_.threadId()) != nullptr ||
        openMenu(foothold_.threadId()) != nullptr)
        return std::nullopt;
    POINT at = *pointer_;
    ClientToScreen(frame_.view()->m_hWnd, &at);
    return at;
}

} // namespace desk::script
