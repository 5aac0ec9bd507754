#include "standin/desk/crosshair.h"

#include <cmath>
#include <cstring>
#include <numbers>
#include <vector>

#include "drawing/dashes.h"

namespace desk {
namespace {

constexpr Color dark = 0x2A3038, pale = 0xFFFFFF;

// pixels: 0xAARRGGBB, side x side.
HICON makeIcon(const std::vector<std::uint32_t>& pixels, int side, bool cursor, int hotSpot)
{
    BITMAPV5HEADER header{};
    header.bV5Size = sizeof(header);
    header.bV5Width = side;
    header.bV5Height = -side;
    header.bV5Planes = 1;
    header.bV5BitCount = 32;
    header.bV5Compression = BI_BITFIELDS;
    header.bV5RedMask = 0x00FF0000;
    header.bV5GreenMask = 0x0000FF00;
    header.bV5BlueMask = 0x000000FF;
    header.bV5AlphaMask = 0xFF000000;
    void* memory = nullptr;
    const HDC screen = GetDC(nullptr);
    const HBITMAP color =
        CreateDIBSection(screen, reinterpret_cast<BITMAPINFO*>(&header), DIB_RGB_COLORS, &memory, nullptr, 0);
    ReleaseDC(nullptr, screen);
    if (color == nullptr)
        return nullptr;
    std::memcpy(memory, pixels.data(), pixels.size() * sizeof(pixels[0]));
    const std::vector<std::uint8_t> transparent(std::size_t((side + 15) / 16 * 2) * side, 0);
    const HBITMAP mask = CreateBitmap(side, side, 1, 1, transparent.data());
    ICONINFO info{};
    info.fIcon = !cursor;
    info.xHotspot = info.yHotspot = static_cast<DWORD>(hotSpot);
    info.hbmMask = mask;
    info.hbmColor = color;
    const HICON icon = CreateIconIndirect(&info);
    DeleteObject(mask);
    DeleteObject(color);
    return icon;
}

std::vector<Vec2> rectangle(Vec2 a, Vec2 b)
{
    return {a, {b.x, a.y}, b, {a.x, b.y}, a};
}

std::vector<Vec2> circle(Vec2 centre, double radius)
{
    std::vector<Vec2> points;
    constexpr int pieces = 96;
    for (int i = 0; i <= pieces; ++i) {
        const double angle = 2 * std::numbers::pi * i / pieces;
        points.push_back(centre + Vec2{std::cos(angle), std::sin(angle)} * radius);
    }
    return points;
}

} // namespace

HCURSOR makeCrosshair()
{
    constexpr int side = 63, middle = side / 2, box = 4;
    std::vector<std::uint32_t> pixels(std::size_t{side} * side, 0);
    const auto isLine = [&](int x, int y) {
        const int dx = std::abs(x - middle), dy = std::abs(y - middle);
        const bool onBox = std::max(dx, dy) == box;
        const bool onArm = (dx == 0 || dy == 0) && std::max(dx, dy) > box && std::max(dx, dy) < middle;
        return onBox || onArm;
    };
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            bool nearLine = false;
            for (int dy = -1; dy <= 1; ++dy) {
                for (int dx = -1; dx <= 1; ++dx)
                    nearLine = nearLine || isLine(x + dx, y + dy);
            }
            if (isLine(x, y)) {
                pixels[y * side + x] = 0xFF000000 | dark;
            } else if (nearLine) {
                pixels[y * side + x] = 0x70000000 | (pale & 0x707070); // premultiplied
            }
        }
    }
    return static_cast<HCURSOR>(makeIcon(pixels, side, true, middle));
}

HICON makeProgramIcon(int side)
{
    std::vector<std::uint32_t> pixels(std::size_t(side) * side, 0xFBFAF7);
    Canvas canvas(pixels.data(), {side, side}, side);
    const double unit = side / 16.0;
    const auto at = [&](double x, double y) { return Vec2{x * unit - 0.5, y * unit - 0.5}; };
    const std::vector<Vec2> sheet = {at(1, 1), at(15, 1), at(15, 15), at(1, 15)};
    canvas.polygon(std::span(&sheet, 1), 0x2F6FDE);
    const std::vector<Vec2> paper = {at(2, 2), at(14, 2), at(14, 14), at(2, 14)};
    canvas.polygon(std::span(&paper, 1), 0xFBFAF7);
    const std::vector<Vec2> stroke = {at(3.5, 11.5), at(11.5, 3.5), at(12.5, 4.5), at(4.5, 12.5)};
    canvas.polygon(std::span(&stroke, 1), 0x24282D);
    canvas.line(at(4, 4.5), at(8, 4.5), 0x8A939E);
    canvas.line(at(8, 12), at(12.5, 12), 0x8A939E);
    for (std::uint32_t& pixel : pixels)
        pixel |= 0xFF000000;
    return makeIcon(pixels, side, false, 0);
}

void drawRubber(Canvas& canvas, const ViewTransform& view, const Palette& palette, const Editor::Overlay& overlay)
{
    const Vec2 from = view.toView(overlay.from), to = view.toView(overlay.to);
    const auto draw = [&](const std::vector<Vec2>& points, const drawing::DashPattern& dashes, Color color) {
        drawing::drawDashed(points, dashes, 4000, [&](Vec2 a, Vec2 b) { canvas.line(a, b, color); });
    };
    if (overlay.selectionWindow) {
        const Color color = overlay.crossing ? palette.crossingBand : palette.windowBand;
        const std::vector<Vec2> outline = rectangle(from, to);
        canvas.polygon(std::span(&outline, 1), color, 28);
        draw(outline, overlay.crossing ? drawing::DashPattern{6, -4} : drawing::DashPattern{}, color);
        return;
    }
    switch (overlay.rubber) {
    case Prompt::Rubber::line:
        draw({from, to}, {}, palette.band);
        break;
    case Prompt::Rubber::rectangle:
        draw(rectangle(from, to), {}, palette.band);
        break;
    case Prompt::Rubber::circle:
        draw({from, to}, {}, mix(palette.ground, palette.band, 120));
        draw(circle(from, std::hypot(to.x - from.x, to.y - from.y)), {}, palette.band);
        break;
    case Prompt::Rubber::none:
        break;
    }
}

} // namespace desk
