#include <array>
#include <fstream>
#include <iterator>

#include "module/resources/resource.h"
#include "module/tools/CAppCursor.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/held_objects.h"
#include "tests/module/tools/recording_tool.h"

namespace {

constexpr int side = 32;

// One letter for each pixel of a cursor: 'b' black, 'w' white, ' ' shows what is below, 'i' turns it over.
using Look = std::array<std::string, side>;

Look emptyLook()
{
    Look look;
    look.fill(std::string(side, ' '));
    return look;
}

// The AND mask stands above the XOR mask in a cursor without colours.
Look lookOf(HCURSOR cursor)
{
    ICONINFO info = {};
    EXPECT_TRUE(GetIconInfo(cursor, &info));
    EXPECT_EQ(info.hbmColor, nullptr) << "the cursor has no more than two colours";
    BYTE bits[2 * side * side / 8] = {};
    EXPECT_EQ(GetBitmapBits(info.hbmMask, sizeof(bits), bits), LONG(sizeof(bits)));
    DeleteObject(info.hbmMask);
    Look look = emptyLook();
    const auto bit = [&bits](int x, int y) { return (bits[y * side / 8 + x / 8] & 0x80 >> x % 8) != 0; };
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const bool keep = bit(x, y);
            const bool set = bit(x, y + side);
            look[y][x] = keep ? (set ? 'i' : ' ') : (set ? 'w' : 'b');
        }
    }
    return look;
}

// The picture as it lies on disk: 24 bits to a pixel, the bottom row first, cyan is see-through.
Look lookOfBitmapFile(const char* name)
{
    std::ifstream file(std::string(HALVORAN_SOURCE_DIR) + "/module/resources/" + name, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    EXPECT_EQ(bytes.size(), 54u + side * side * 3) << name;
    Look look = emptyLook();
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const std::string pixel = bytes.substr(54 + ((side - 1 - y) * side + x) * 3, 3);
            look[y][x] = pixel == "\xFF\xFF\xFF" ? 'w' : pixel == std::string(3, '\0') ? 'b' : ' ';
        }
    }
    return look;
}

// All four sides of a frame from its top left to its bottom right pixel.
void putFrame(Look& look, int left, int top, int right, int bottom, char letter)
{
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const bool inside = x >= left && x <= right && y >= top && y <= bottom;
            if (inside && (x == left || x == right || y == top || y == bottom))
                look[y][x] = letter;
        }
    }
}

std::string text(const Look& look)
{
    std::string lines;
    for (const std::string& row : look)
        lines += row + "|\n";
    return lines;
}

class CursorAndScreen : public test::DeskFixture
{};

TEST_F(CursorAndScreen, ACursorHasItsPictureAndTheBrushesSquare)
{
    struct Case
    {
        UINT id;
        const char* file;
        int halfSize;
    };
    const Case cases[] = {
        {IDB_CURSOR_PEN, "cursor_pen.bmp", 0},
        {IDB_CURSOR_LINE, "cursor_line.bmp", 5},
        {IDB_CURSOR_ERASER, "cursor_eraser.bmp", 40},
    };
    for (const Case& row : cases) {
        CAppCursor cursor(row.id, CPoint(15, 16));
        const HCURSOR first = cursor.m_hCursor;
        cursor.Rebuild(row.halfSize);
        EXPECT_EQ(cursor.m_hCursor == first, row.halfSize == 0) << "the same size is not built again";
        Look wanted = lookOfBitmapFile(row.file);
        if (row.halfSize) {
            const int half = row.halfSize;
            putFrame(wanted, 15 - half, 16 - half, 15 + half, 16 + half, 'b');
            putFrame(wanted, 14 - half, 15 - half, 16 + half, 17 + half, 'w');
        }
        EXPECT_EQ(text(lookOf(cursor.m_hCursor)), text(wanted)) << row.file << " at half size " << row.halfSize;
        EXPECT_EQ(GetCursor(), cursor.m_hCursor);
        SetCursor(LoadCursorW(nullptr, IDC_ARROW));
        cursor.Set();
        EXPECT_EQ(GetCursor(), cursor.m_hCursor);
        ICONINFO info = {};
        GetIconInfo(cursor.m_hCursor, &info);
        EXPECT_EQ(info.xHotspot, 15u);
        EXPECT_EQ(info.yHotspot, 16u);
        EXPECT_FALSE(info.fIcon);
        DeleteObject(info.hbmMask);
    }
}

TEST_F(CursorAndScreen, RebuildingLeavesNothingBehind)
{
    CAppCursor cursor(IDB_CURSOR_PEN, CPoint(15, 16));
    cursor.Rebuild(1);
    const test::HeldObjects before = test::HeldObjects::now();
    for (int i = 0; i < 50; ++i)
        cursor.Rebuild(2 + i % 12);
    CGdiObject::DeleteTempMap();
    const test::HeldObjects after = test::HeldObjects::now();
    EXPECT_EQ(after.cursors, before.cursors) << "earlier cursors were not destroyed";
    EXPECT_LE(after.gdi, before.gdi) << "brushes, bitmaps or contexts of the cursor were left";
}

TEST_F(CursorAndScreen, TheSavedScreenComesBack)
{
    const std::unique_ptr<RecordingTool> tool(new RecordingTool);
    const auto fill = [this](const CRect& rect, COLORREF color) {
        CDC* context = view().GetDC();
        context->FillSolidRect(rect, color);
        view().ReleaseDC(context);
        GdiFlush();
        test::pumpAll();
    };
    const auto pixel = [](HWND window, int x, int y) {
        const HDC context = GetDC(window);
        const COLORREF color = GetPixel(context, x, y);
        ReleaseDC(window, context);
        return color;
    };
    const HWND window = view().m_hWnd;
    fill(CRect(20, 30, 60, 70), RGB(0, 0, 255));
    tool->RestoreScreen();
    EXPECT_EQ(pixel(window, 30, 40), RGB(0, 0, 255)) << "there is nothing to restore yet";
    // What was drawn since is kept by a second saving.
    for (const COLORREF color : {RGB(0, 0, 255), RGB(0, 255, 0)}) {
        fill(CRect(0, 0, 400, 300), RGB(255, 255, 255));
        fill(CRect(20, 30, 60, 70), color);
        const auto shown = [&] { return pixel(nullptr, 40 + 30, 30 + 40) == color; };
        ASSERT_TRUE(test::pumpUntil(shown)) << "the screen never showed the view";
        tool->SaveScreen();
        EXPECT_EQ(pixel(window, 30, 40), color);
        fill(CRect(0, 0, 400, 300), RGB(255, 0, 0));
        tool->RestoreScreen();
        EXPECT_EQ(pixel(window, 30, 40), color);
        for (const CPoint corner : {CPoint(19, 29), CPoint(60, 70), CPoint(399, 299)})
            EXPECT_EQ(pixel(window, corner.x, corner.y), RGB(255, 255, 255)) << corner.x << "," << corner.y;
    }
}

} // namespace
