#include "standin/desk/script_player.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "standin/host.h"
#include "standin/text.h"

namespace desk::script {
namespace {

constexpr auto pollInterval = std::chrono::milliseconds(15);

} // namespace

Player::Player(MainFrame& frame, Console& console, Limits limits)
    : m_frame(frame), m_console(console), m_limits(limits), m_over(CreateEventW(nullptr, TRUE, FALSE, nullptr))
{
    m_frame.whenClosed([this] { m_foothold.close(); });
}

Player::~Player()
{
    finish();
    CloseHandle(m_over);
}

void Player::finish()
{
    while (m_player.joinable() &&
           MsgWaitForMultipleObjects(1, &m_over, FALSE, INFINITE, QS_SENDMESSAGE) != WAIT_OBJECT_0) {
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    }
    if (!m_player.joinable())
        return;
    m_player.join();
    m_watchdog.join();
    judgeBreaches();
}

void Player::judgeBreaches()
{
    std::vector<std::wstring> missing = m_expectedBreaches;
    for (const std::string& breach : standin::breaches()) {
        if (m_soundness && Soundness::isTolerated(breach))
            continue;
        const std::wstring text = standin::fromUtf8(breach);
        const auto expected = [&](const std::wstring& words) { return text.find(words) != std::wstring::npos; };
        if (std::ranges::none_of(m_expectedBreaches, expected)) {
            ++m_misses;
            m_console.line(L"MISSED: a rule of the host's was broken: " + text);
        }
        std::erase_if(missing, expected);
    }
    for (const std::wstring& words : missing) {
        ++m_misses;
        m_console.line(L"MISSED: no rule of the host's was broken in the words \"" + words + L"\"");
    }
}

void Player::start(std::vector<Step> steps)
{
    m_steps = std::move(steps);
    // The real pointer stays out of the windows, where it would mix moves of its own with those of the script.
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    m_watchdog = std::thread([this] { watch(); });
    m_player = std::thread([this] { run(); });
}

void Player::run()
{
    try {
        const bool held = playAll();
        m_present = nullptr;
        if (held)
            m_console.line(L"All " + std::to_wstring(m_steps.size()) + L" steps held.");
        leave();
    } catch (const DeskGone&) {
        const Step* const step = m_present;
        if (step != nullptr && step != &m_steps.back()) {
            ++m_misses;
            m_console.line(L"MISSED: the desk was closed at line " + std::to_wstring(step->line) + L": " +
                           step->source);
        }
    }
    SetEvent(m_over);
}

// After a miss the rest is left out: it would be played on a desk in an unknown state.
bool Player::playAll()
{
    settle();
    for (const Step& step : m_steps) {
        m_present = &step;
        m_console.line(std::to_wstring(step.line) + L": " + step.source);
        if (!step.onlyLooks())
            closeSplash();
        try {
            if (play(step))
                showTranscript();
            lookForUnsoundness();
        } catch (const Miss& miss) {
            ++m_misses;
            m_console.line(L"MISSED at line " + std::to_wstring(step.line) + L": " + step.source + L"\n    " +
                           miss.seen);
            return false;
        }
    }
    return true;
}

// False if the step could not be done and need not be.
bool Player::play(const Step& step)
{
    try {
        step.action(*this);
        return true;
    } catch (const Miss& miss) {
        if (!m_soundness)
            throw;
        m_console.line(L"    passed over: " + miss.seen);
        return false;
    }
}

void Player::beTolerant()
{
    constexpr int briefly = 50; // nothing comes later that is not there by now
    m_limits.step = briefly;
    m_foothold.ask([this] { m_soundness.emplace(); });
}

void Player::lookForUnsoundness() const
{
    if (!m_soundness)
        return;
    std::wstring wrong;
    m_foothold.ask([&] {
        const bool atRest = m_frame.editor().idle() && !m_frame.editor().commandRunning() &&
                            m_frame.IsWindowEnabled() && openMenu(m_foothold.threadId()) == nullptr && !m_pressed;
        wrong = atRest ? m_soundness->lookAtRest() : Soundness::look();
    });
    if (!wrong.empty())
        throw Miss{wrong};
}

// What the command line has said since the last step.
void Player::showTranscript()
{
    std::wstring transcript;
    m_foothold.ask([&] { transcript = m_frame.commandPanel().transcript(); });
    if (transcript.size() < m_transcriptShown)
        m_transcriptShown = 0; // the panel has let go of its oldest lines
    std::wstring news = transcript.substr(m_transcriptShown);
    m_transcriptShown = transcript.size();
    for (std::size_t start = 0; start < news.size();) {
        const auto end = std::min(news.find(L"\r\n", start), news.size());
        if (end > start)
            m_console.line(L"    | " + news.substr(start, end - start));
        start = end + 2;
    }
}

// Closes the desk. Whatever it or a module still asks is declined.
void Player::leave() const
{
    const HWND frame = m_frame.m_hWnd;
    PostMessageW(frame, MainFrame::endOfScriptMessage, 0, 0);
    for (;;) {
        m_foothold.ask([] {});
        const HWND dialog = openDialog(m_foothold.threadId());
        const HWND no = dialog != nullptr ? GetDlgItem(dialog, IDNO) : nullptr;
        if (dialog != nullptr && isMessageBox(dialog))
            m_console.line(L"At the end a box was closed: " + messageBoxText(dialog));
        if (no != nullptr) {
            m_hand.clickControl(no);
        } else if (dialog != nullptr) {
            PostMessageW(dialog, WM_CLOSE, 0, 0);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
}

// Ends a run that hangs, also when the windows' thread is stuck.
void Player::watch() const
{
    if (WaitForSingleObject(m_over, static_cast<DWORD>(m_limits.run)) != WAIT_TIMEOUT)
        return;
    const Step* const step = m_present;
    m_console.line(L"MISSED: the run was not over after " + std::to_wstring(m_limits.run / 1000) + L" s" +
                   (step != nullptr ? L"; it was at line " + std::to_wstring(step->line) + L": " + step->source : L""));
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(Outcome::missed));
}

bool Player::comesTrue(const std::function<bool()>& condition, int milliseconds) const
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;) {
        bool holds = false;
        m_foothold.ask([&] { holds = condition(); });
        if (holds)
            return true;
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(pollInterval);
    }
}

bool Player::deskWaits() const
{
    const DWORD flags = inputState(m_foothold.threadId()).flags;
    if ((flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE)) != 0 || openDialog(m_foothold.threadId()) != nullptr)
        return true;
    return m_frame.editor().idle();
}

// A splash goes by itself after a while; until then it would lie over what the script works on.
void Player::closeSplash() const
{
    if (const HWND splash = openSplash(m_foothold.threadId())) {
        PostMessageW(splash, WM_CLOSE, 0, 0);
        settle();
    }
}

void Player::settle() const
{
    m_foothold.waitForPosted();
    comesTrue([this] { return deskWaits(); }, m_limits.run);
    // A hand works on what it sees: a painting that is still due would cover what the next step draws on the view.
    m_foothold.ask([this] { RedrawWindow(m_frame.m_hWnd, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); });
    m_foothold.waitForPosted();
}

HWND Player::dialogInFront() const
{
    HWND dialog = nullptr;
    if (!comesTrue([&] { return (dialog = openDialog(m_foothold.threadId())) != nullptr; }))
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
    m_foothold.ask([&] {
        view = m_frame.view() != nullptr ? m_frame.view()->m_hWnd : nullptr;
        reachable = m_frame.IsWindowEnabled() != FALSE;
    });
    if (view == nullptr)
        throw Miss{L"no drawing is open"};
    if (!reachable) {
        const HWND dialog = openDialog(m_foothold.threadId());
        throw Miss{L"the drawing view is out of reach" +
                   (dialog != nullptr ? L" behind the dialog \"" + windowText(dialog) + L"\"" : L"")};
    }
    return view;
}

POINT Player::inView(const Place& place) const
{
    POINT at{};
    bool inside = false;
    m_foothold.ask([&] {
        const ViewTransform& view = m_frame.editor().view();
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
    m_pointer = view;
    m_eye.noteMouse(view, held);
}

// Where the pointer is to be seen: in the view, unless a dialog or a menu has the mouse.
std::optional<POINT> Player::pointerOnScreen() const
{
    if (!m_pointer || m_frame.view() == nullptr || openDialog(m_foothold.threadId()) != nullptr ||
        openMenu(m_foothold.threadId()) != nullptr)
        return std::nullopt;
    POINT at = *m_pointer;
    ClientToScreen(m_frame.view()->m_hWnd, &at);
    return at;
}

} // namespace desk::script
