// The script's hand and eyes on real windows: toolbar buttons, the mouse and its pointer. Menus and dialogs' controls
// are worked in every session.

#include <atomic>
#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>
#include <windowsx.h>

#include "standin/desk/held_pan.h"
#include "standin/desk/screenshot.h"
#include "standin/desk/script_foothold.h"
#include "standin/desk/script_hand.h"
#include "standin/desk/script_windows.h"

using namespace desk::script;

namespace {

constexpr int plainButton = 501, arrowButton = 502, greyedButton = 503;

struct MouseMessage
{
    UINT message;
    WPARAM held; // MK_ bits
    int x, y;
    bool shiftSeen; // by who asks for the key's state

    friend bool operator==(const MouseMessage&, const MouseMessage&) = default;
    friend void PrintTo(const MouseMessage& seen, std::ostream* out)
    {
        *out << "message " << seen.message << " with " << seen.held << " at " << seen.x << "," << seen.y
             << (seen.shiftSeen ? " with Shift" : "");
    }
};

// A window with a toolbar; it writes down the commands and the mouse that reach it.
class Bench
{
public:
    Bench()
    {
        INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_BAR_CLASSES};
        InitCommonControlsEx(&controls);
        WNDCLASSW description{};
        description.lpfnWndProc = procedure;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = L"DeskTestBench";
        description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
        RegisterClassW(&description);
        window = CreateWindowW(description.lpszClassName, L"Bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 400, 300,
                               nullptr, nullptr, description.hInstance, nullptr);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        toolbar = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT, 0, 0, 0, 0,
                                  window, nullptr, description.hInstance, nullptr);
        SendMessageW(toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
        SendMessageW(toolbar, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS);
        TBBUTTON buttons[3]{};
        const int ids[] = {plainButton, arrowButton, greyedButton};
        for (int i = 0; i < 3; ++i) {
            buttons[i].idCommand = ids[i];
            buttons[i].iBitmap = I_IMAGENONE;
            buttons[i].fsState = ids[i] == greyedButton ? 0 : TBSTATE_ENABLED;
            buttons[i].fsStyle = static_cast<BYTE>(ids[i] == arrowButton ? BTNS_DROPDOWN : BTNS_BUTTON);
        }
        SendMessageW(toolbar, TB_ADDBUTTONSW, 3, reinterpret_cast<LPARAM>(buttons));
        SendMessageW(toolbar, TB_AUTOSIZE, 0, 0);
        UpdateWindow(window);
    }
    ~Bench() { DestroyWindow(window); }

    // Plays on a thread of its own while this one handles messages.
    void play(const std::function<void()>& script)
    {
        std::atomic<bool> over = false;
        std::thread player([&] {
            script();
            over = true;
            PostMessageW(window, WM_NULL, 0, 0);
        });
        MSG message;
        while (!over && GetMessageW(&message, nullptr, 0, 0) > 0) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        player.join();
    }

    HWND window, toolbar;
    std::vector<int> commands;
    std::vector<MouseMessage> mouse;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* bench = reinterpret_cast<Bench*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (bench != nullptr && (message == WM_MOUSEMOVE || message == WM_LBUTTONDOWN || message == WM_LBUTTONUP)) {
            const bool shiftSeen = GetKeyState(VK_SHIFT) < 0;
            bench->mouse.push_back({message, wParam, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam), shiftSeen});
        }
        if (bench != nullptr && message == WM_COMMAND && HIWORD(wParam) == 0)
            bench->commands.push_back(LOWORD(wParam));
        return DefWindowProcW(window, message, wParam, lParam);
    }
};

struct Stage
{
    Bench bench;
    Foothold foothold;
    Hand hand{foothold};
    DWORD thread = GetCurrentThreadId();
};

} // namespace

TEST(Hand, AToolbarButtonIsPressedByItsNumber)
{
    Stage stage;
    stage.bench.play([&] {
        const ToolbarButton button = findToolbarButton(stage.thread, plainButton);
        ASSERT_EQ(button.toolbar, stage.bench.toolbar);
        EXPECT_TRUE(button.visible && button.enabled);
        EXPECT_FALSE(button.hasArrow || button.checked);
        EXPECT_FALSE(findToolbarButton(stage.thread, greyedButton).enabled);
        EXPECT_TRUE(findToolbarButton(stage.thread, arrowButton).hasArrow);
        EXPECT_EQ(findToolbarButton(stage.thread, 999).toolbar, nullptr);
        stage.hand.click(button.toolbar, {button.place.left + 8, button.place.top + 5});
        stage.foothold.waitForPosted();
    });
    EXPECT_THAT(stage.bench.commands, testing::ElementsAre(plainButton));
}

// What the window hears of a play of the hand.
std::vector<MouseMessage> heardOf(const std::function<void(const Stage&)>& play)
{
    Stage stage;
    SetCursorPos(0, 0);
    stage.bench.play([&] {
        stage.foothold.waitForPosted();
        stage.bench.mouse.clear();
        play(stage);
        stage.foothold.waitForPosted();
    });
    return stage.bench.mouse;
}

TEST(Hand, ADragSendsTheMovesThatItNamesAndNoOther)
{
    constexpr WPARAM moving = MK_SHIFT, pressed = MK_SHIFT | MK_LBUTTON;
    const auto heard = heardOf([](const Stage& stage) {
        stage.hand.drag(stage.bench.window, {{100, 150}, {140, 151}, {90, 160}}, MouseButton::left, {true, false});
    });
    EXPECT_THAT(heard, testing::ElementsAre(MouseMessage{WM_MOUSEMOVE, moving, 100, 150, true},
                                            MouseMessage{WM_LBUTTONDOWN, pressed, 100, 150, true},
                                            MouseMessage{WM_MOUSEMOVE, pressed, 140, 151, true},
                                            MouseMessage{WM_MOUSEMOVE, pressed, 90, 160, true},
                                            MouseMessage{WM_LBUTTONUP, moving, 90, 160, true}));
}

TEST(Hand, TheHeldButtonGoesWithTheMoves)
{
    const auto heard = heardOf([](const Stage& stage) {
        stage.hand.press(stage.bench.window, {100, 150}, MouseButton::left);
        stage.hand.move(stage.bench.window, {120, 150}, {false, true, true});
        stage.hand.release(stage.bench.window, {130, 150}, MouseButton::left);
    });
    EXPECT_THAT(heard, testing::ElementsAre(MouseMessage{WM_MOUSEMOVE, 0, 100, 150, false},
                                            MouseMessage{WM_LBUTTONDOWN, MK_LBUTTON, 100, 150, false},
                                            MouseMessage{WM_MOUSEMOVE, MK_CONTROL | MK_LBUTTON, 120, 150, false},
                                            MouseMessage{WM_LBUTTONUP, 0, 130, 150, false}));
}

// As a module's tool keeps the view's moves for itself.
LRESULT CALLBACK swallowMoves(int code, WPARAM wParam, LPARAM lParam)
{
    auto& message = *reinterpret_cast<MSG*>(lParam);
    if (code >= 0 && wParam == PM_REMOVE && message.message == WM_MOUSEMOVE)
        message.message = WM_NULL;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST(HeldPan, HearsTheMovesThatAHookKeepsFromTheView)
{
    std::vector<std::pair<long, long>> panned;
    std::unique_ptr<desk::HeldPan> pan;
    const HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, swallowMoves, nullptr, GetCurrentThreadId());
    const auto heard = heardOf([&](const Stage& stage) {
        stage.foothold.ask([&] {
            pan =
                std::make_unique<desk::HeldPan>(stage.bench.window, [&](POINT at) { panned.emplace_back(at.x, at.y); });
        });
        stage.hand.move(stage.bench.window, {110, 150}, {false, false, false, true});
        stage.hand.move(stage.bench.window, {-20, 160}, {false, false, false, true});
        stage.foothold.waitForPosted();
        stage.foothold.ask([&] { pan.reset(); });
        stage.hand.move(stage.bench.window, {130, 150});
    });
    UnhookWindowsHookEx(hook);
    EXPECT_THAT(panned, testing::ElementsAre(std::pair(110L, 150L), std::pair(-20L, 160L)));
    EXPECT_THAT(heard, testing::IsEmpty()) << "the view itself hears nothing";
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST(Screenshot, ThePointerIsDrawnWithItsHotSpotWhereTheMouseIs)
{
    // A solid red square, eight pixels wide, that is held at its third column and second row.
    std::vector<std::uint32_t> red(64, 0xFFFF0000);
    ICONINFO info{FALSE, 3, 2, CreateBitmap(8, 8, 1, 1, std::vector<BYTE>(16, 0).data()),
                  CreateBitmap(8, 8, 1, 32, red.data())};
    const HCURSOR cursor = CreateIconIndirect(&info);
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    SetCursorPos(0, 0);
    const Bench bench;
    POINT pointer{200, 200};
    ClientToScreen(bench.window, &pointer);
    SetCursor(cursor);
    const auto redPixels = [&](const desk::Picture& picture) {
        imaging::Rect box{picture.size.width, picture.size.height, 0, 0};
        for (int y = 0; y < picture.size.height; ++y)
            for (int x = 0; x < picture.size.width; ++x)
                if ((picture.pixels[std::size_t(y) * picture.size.width + x] & 0xFFFFFF) == 0xFF0000)
                    box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                           std::max(box.bottom, y + 1)};
        return box;
    };
    EXPECT_EQ(redPixels(desk::takePicture(bench.window, GetCurrentThreadId(), pointer)),
              (imaging::Rect{197, 198, 205, 206}));
    EXPECT_TRUE(redPixels(desk::takePicture(bench.window, GetCurrentThreadId())).empty());
    SetCursor(nullptr);
    EXPECT_TRUE(redPixels(desk::takePicture(bench.window, GetCurrentThreadId(), pointer)).empty());
    DestroyCursor(cursor);
}

TEST(Screenshot, AFramedPictureHoldsTheTitleBarAndNothingOfOtherPrograms)
{
    const Bench bench;
    const imaging::Rect part{40, 40, 460, 360}; // ten pixels around the window
    const auto framed = [&] { return desk::takeFramedPicture(part, GetCurrentThreadId()); };
    const auto inside = [&] { return desk::takePicture(bench.window, GetCurrentThreadId()); };
    const desk::Picture before = framed();
    ASSERT_EQ(before.size, part.size());
    EXPECT_EQ(before.pixels.front() & 0xFFFFFF, 0xFFFFFFU);
    const desk::Picture insideBefore = inside();
    SetWindowTextW(bench.window, L"A longer title");
    const desk::Picture after = framed();
    EXPECT_EQ(inside().pixels, insideBefore.pixels);
    const auto changed = std::mismatch(before.pixels.begin(), before.pixels.end(), after.pixels.begin()).first;
    const auto row = (changed - before.pixels.begin()) / part.width();
    EXPECT_GT(row, 10);
    EXPECT_LT(row, 10 + GetSystemMetrics(SM_CYSIZEFRAME) + GetSystemMetrics(SM_CYCAPTION));
}

TEST(Foothold, AClosedDeskIsToldToTheScript)
{
    Stage stage;
    stage.bench.play([&] {
        stage.foothold.close();
        EXPECT_THROW(stage.foothold.ask([] { FAIL() << "nothing may be run any more"; }), DeskGone);
    });
}
