#include "standin/desk/tool_cursors.h"

#include "standin/desk/cursor_picture.h"
#include "standin/desk/module_resources.h"

namespace desk::script {
namespace {

struct NumberedTool
{
    int tool;
    int resource;
};

// Cursors that one tool alone shows.
constexpr NumberedTool cursors[] = {
    {0, 150},                        // rotation about a base point
    {1, 9823},                       // pick raster
    {2, 9800}, {2, 9821}, {2, 9822}, // area, and to add to it and take from it
    {9, 151},                        // free rotate
};
// Bitmaps of which a tool draws its cursor, with the brush's square about the hot spot.
constexpr NumberedTool brushes[] = {{3, 238}, {4, 239}, {5, 240}};
constexpr POINT brushHotSpot{15, 16};
constexpr std::uint32_t clearInBrushes = 0x00FFFF;

constexpr int moveSign = 153;

bool shows(const CursorPicture& seen, HCURSOR cursor)
{
    const auto picture = CursorPicture::of(cursor);
    return picture && seen.sameAs(*picture);
}

bool showsBrush(const CursorPicture& seen, int bitmap)
{
    const auto picture = moduleBitmap(bitmap);
    return picture &&
           seen.sameButSquare(CursorPicture::ofPixels(picture->pixels, picture->size, clearInBrushes, brushHotSpot));
}

} // namespace

ToolCursor toolCursor(HCURSOR cursor)
{
    const auto seen = CursorPicture::of(cursor);
    if (!seen)
        return {};
    for (const auto& [tool, resource] : cursors) {
        if (shows(*seen, moduleCursor(resource)))
            return {ToolCursor::Kind::own, tool};
    }
    for (const auto& [tool, resource] : brushes) {
        if (showsBrush(*seen, resource))
            return {ToolCursor::Kind::own, tool};
    }
    if (shows(*seen, moduleCursor(moveSign)))
        return {ToolCursor::Kind::moveSign};
    if (shows(*seen, LoadCursorW(nullptr, IDC_ARROW)))
        return {ToolCursor::Kind::arrow};
    return {};
}

} // namespace desk::script
