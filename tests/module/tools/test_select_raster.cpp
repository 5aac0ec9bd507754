#include "module/base/CArxApp.h"
#include "module/commands/ToolCommands.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/tools/CRasSelectTool.h"
#include "tests/module/support/desk_fixture.h"

namespace {

using test::blank;

constexpr const char* notOneBit = "Halvoran in AutoCAD only works with 1-bit(black/white) images";

class SelectRaster : public test::DeskFixture
{
protected:
    // Ten view pixels to a drawing unit, the origin at (500, 500). In view space:
    //   0  A at 500,480 - 540,500          1  B over A's right half, 520,480 - 560,500
    //   2  gray at 600,480 - 640,500       3  without a file at 700,480 - 740,500
    //   4  of the layout, where A lies: it is not seen here
    void openImages()
    {
        test::writeGrayBitmap(file("gray.bmp"), 4, 2);
        openDrawing(std::vector<test::Picture>(5, blank(4, 2)), {{.x = 0},
                                                                 {.x = 2},
                                                                 {.file = file("gray.bmp"), .x = 10},
                                                                 {.file = file("missing.tif"), .x = 20},
                                                                 {.x = 0, .paper = true}});
        m_posted.clear();
    }

    void post(UINT message, int x, int y)
    {
        PostMessageW(view().m_hWnd, message, 0, MAKELPARAM(x, y));
        test::pumpAll();
    }
    void click(int x, int y)
    {
        post(WM_LBUTTONDOWN, x, y);
        post(WM_LBUTTONUP, x, y);
    }
    std::string currentName() const
    {
        if (!g_pArxApp->m_pRaster)
            return "none";
        g_pArxApp->m_pRaster->Lock(0);
        const std::filesystem::path name(g_pArxApp->m_pRaster->GetFileName().GetString());
        g_pArxApp->m_pRaster->Unlock();
        return name.filename().string();
    }
    // What the tip over the view says.
    std::string tip() const
    {
        HWND tips = nullptr;
        while ((tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr))) {
            if (GetWindowThreadProcessId(tips, nullptr) == GetCurrentThreadId())
                break;
        }
        wchar_t text[600] = {};
        TOOLINFOW tool = {};
        tool.cbSize = sizeof(tool);
        SendMessageW(tips, TTM_ENUMTOOLSW, 0, reinterpret_cast<LPARAM>(&tool));
        tool.lpszText = text;
        SendMessageW(tips, TTM_GETTEXTW, 600, reinterpret_cast<LPARAM>(&tool));
        const std::string narrow = std::filesystem::path(text).string();
        return narrow.substr(narrow.find_last_of('\\') + 1);
    }
};

TEST_F(SelectRaster, AClickMakesTheLastImageUnderItTheCurrentRaster)
{
    struct Case
    {
        int x, y;
        const char* current;
    };
    const Case cases[] = {
        {505, 480, "image0.tif"}, // A alone
        {530, 490, "image1.tif"}, // A and B
        {620, 490, "none"},       // gray
        {720, 490, "none"},       // without a file
        {505, 479, "none"},       // just above A
        {559, 499, "image1.tif"}, // B's last pixel
        {560, 499, "none"},
    };
    openImages();
    for (const Case& row : cases) {
        SelectRasterCommand();
        ASSERT_TRUE(g_pArxApp->m_pTool) << "the command needs no raster";
        click(row.x, row.y);
        EXPECT_EQ(currentName(), row.current) << "a click at " << row.x << "," << row.y;
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr) << "one click ends the tool";
        EXPECT_EQ(standin::openObjects(), 0);
        DropCurrentRaster();
    }
    EXPECT_EQ(test::pictureInDrawing(0), blank(4, 2)) << "an image that was chosen stays loaded";
}

TEST_F(SelectRaster, TheReleaseOfTheClickThatStartedTheToolDoesNotEndIt)
{
    openImages();
    SelectRasterCommand();
    post(WM_LBUTTONUP, 505, 490);
    EXPECT_TRUE(g_pArxApp->m_pTool);
    EXPECT_EQ(currentName(), "none");
    m_viewState.centre = {100, 0, 0}; // a pan that the tool does not follow: the frames are those of the start
    click(505, 490);
    EXPECT_EQ(currentName(), "image0.tif");
}

TEST_F(SelectRaster, TheTipNamesTheFirstImageUnderTheMouse)
{
    struct Case
    {
        int x;
        std::string tip;
    };
    const Case cases[] = {
        {505, "image0.tif"}, {530, "image0.tif"},     {555, "image1.tif"},
        {620, notOneBit},    {720, "File not found"}, {580, ""},
    };
    openImages();
    SelectRasterCommand();
    for (const Case& row : cases) {
        post(WM_MOUSEMOVE, row.x, 490);
        EXPECT_EQ(tip(), row.tip) << "at " << row.x;
    }
    EXPECT_EQ(GetCursor(), LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDC_SELECT_RASTER)));
    delete g_pArxApp->m_pTool;
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

TEST_F(SelectRaster, AnImageErasedWhileTheToolLivesIsNotTaken)
{
    openImages();
    SelectRasterCommand();
    ASSERT_TRUE(standin::eraseEntity(test::imageHandle(0)));
    click(505, 490);
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr) << "what can't be opened must not become the current raster";
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    m_locksLeft = 1; // that of the opening that failed
}

} // namespace
