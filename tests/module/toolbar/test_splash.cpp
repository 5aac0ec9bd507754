// The picture at start-up and in the about box.

#include <fstream>
#include <iterator>

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/commands/ShellCommands.h"
#include "module/shell/CDDBPalette.h"
#include "module/shell/CSplashWnd.h"
#include "tests/module/dialogs/dialog_fields.h"
#include "tests/module/support/dialog_driver.h"
#include "tests/module/toolbar/toolbar_fixture.h"

namespace {

// The picture's file, read by hand: a colour index a pixel, rows from the bottom, each padded to four bytes.
class PictureFile
{
public:
    PictureFile()
    {
        std::ifstream file(HALVORAN_SOURCE_DIR "/module/resources/splash.bmp", std::ios::binary);
        m_bytes.assign(std::istreambuf_iterator<char>(file), {});
    }
    COLORREF at(int x, int y) const
    {
        constexpr int header = 14 + 40;
        constexpr int pixels = header + 256 * 4;
        const unsigned char index = m_bytes.at(static_cast<std::size_t>(pixels + (380 - y) * 504 + x));
        const auto* color = m_bytes.data() + header + index * 4;
        return RGB(color[2], color[1], color[0]);
    }

private:
    std::vector<unsigned char> m_bytes;
};

HWND splashWindow()
{
    HWND found = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM result) -> BOOL {
            CRect place;
            GetWindowRect(window, &place);
            if (IsWindowVisible(window) && place.Size() == CSize(501, 381))
                *reinterpret_cast<HWND*>(result) = window;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

class Splash : public test::ToolbarFixture
{
protected:
    void SetUp() override
    {
        ToolbarFixture::SetUp();
        CSplashWnd::Enable(true);
    }
    void TearDown() override
    {
        CSplashWnd::Close();
        CSplashWnd::Enable(false);
        ToolbarFixture::TearDown();
    }
    static void expectPicture(HWND window, int left)
    {
        const PictureFile picture;
        const HDC context = GetDC(window);
        for (int y = 0; y < 381; y += 19) {
            for (int x = 0; x < 501; x += 25)
                EXPECT_EQ(GetPixel(context, left + x, y), picture.at(x, y)) << x << "," << y;
        }
        ReleaseDC(window, context);
    }
};

TEST_F(Splash, ShowsThePictureInTheMiddleOfTheScreenAndGoesByItself)
{
    const ULONGLONG start = GetTickCount64();
    CSplashWnd::Show();
    const HWND window = splashWindow();
    ASSERT_TRUE(window);
    EXPECT_EQ(GetWindowLongPtrW(window, GWL_STYLE) & (WS_POPUP | WS_CAPTION), LONG_PTR(WS_POPUP));
    CRect place;
    GetWindowRect(window, &place);
    CRect screen;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
    EXPECT_NEAR(place.CenterPoint().x, screen.CenterPoint().x, 1);
    EXPECT_NEAR(place.CenterPoint().y, screen.CenterPoint().y, 1);
    expectPicture(window, 0);
    CSplashWnd::Show();
    EXPECT_EQ(splashWindow(), window) << "there is one at most";
    EXPECT_TRUE(test::pumpUntil([=] { return !IsWindow(window); }));
    EXPECT_GE(GetTickCount64() - start, 1900u);
    CSplashWnd::Show();
    EXPECT_TRUE(splashWindow()) << "the next start has its own";
    CSplashWnd::Close();
    CSplashWnd::Close();
    EXPECT_EQ(splashWindow(), nullptr);
}

TEST_F(Splash, IsNotShownUnlessEnabled)
{
    CSplashWnd::Enable(false);
    CSplashWnd::Show();
    EXPECT_EQ(splashWindow(), nullptr);
}

TEST_F(Splash, ThePaletteHasThePicturesColours)
{
    CDDBPalette palette(GetModuleHandleW(nullptr));
    EXPECT_EQ(palette.GetSize(), CSize(501, 381));
    ASSERT_EQ(palette.GetEntryCount(), 256);
    PALETTEENTRY entries[256] = {};
    GetPaletteEntries(palette, 0, 256, entries);
    const PictureFile picture;
    for (const auto& [x, y] : {std::pair(0, 0), std::pair(40, 50), std::pair(250, 200), std::pair(500, 380)}) {
        const COLORREF wanted = picture.at(x, y);
        EXPECT_TRUE(std::any_of(std::begin(entries), std::end(entries),
                                [&](const PALETTEENTRY& entry) {
                                    return RGB(entry.peRed, entry.peGreen, entry.peBlue) == wanted &&
                                           entry.peFlags == 0;
                                }))
            << x << "," << y;
    }
    CDDBPalette none(GetModuleHandleW(L"kernel32.dll"));
    EXPECT_EQ(none.GetSize(), CSize(0, 0));
    CClientDC screen(nullptr);
    none.Draw(screen, CPoint(0, 0));
}

TEST_F(Splash, TheAboutBoxTellsVersionAndProductBelowThePicture)
{
    test::DialogDriver driver;
    driver.expectDialog([](HWND dialog) {
        EXPECT_EQ(test::text(dialog, 1108), L"6.6  (Build:12094.1)");
        EXPECT_EQ(test::text(dialog, 1001), L"Halvoran 6.6 for AutoCAD");
        EXPECT_FALSE(test::text(dialog, 1002).empty());
        UpdateWindow(dialog);
        CRect client;
        GetClientRect(dialog, &client);
        ASSERT_GE(client.Width(), 501);
        expectPicture(dialog, (client.Width() - 501) / 2);
        for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
            CRect place;
            GetWindowRect(control, &place);
            MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
            EXPECT_GE(place.top, 381);
            EXPECT_LE(place.bottom, client.bottom);
            EXPECT_LE(place.right, client.right);
        }
        test::press(dialog, IDOK);
    });
    AboutCommand();
}

} // namespace
