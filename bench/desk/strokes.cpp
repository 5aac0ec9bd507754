#include "bench/desk/strokes.h"

#include <cmath>
#include <cstdio>
#include <functional>
#include <numbers>
#include <stdexcept>
#include <utility>

#include "bench/desk/bench_desk.h"
#include "bench/desk/durations.h"
#include "module/base/CArxApp.h"
#include "module/raster/CCurentRaster.h"
#include "module/tools/CRasPenTool.h"
#include "standin/atil/image.h"

namespace bench {

namespace {

constexpr int messages = 2000;
constexpr int peerMessages = 50; // each copies the whole image

// What a pen would be that commits at each move of the mouse.
class CommittingPen : public CRasPenTool
{
public:
    int OnMouseMove(CPoint point, UINT flags) override
    {
        const int result = CRasPenTool::OnMouseMove(point, flags);
        const CCurentRaster current;
        current.m_pRaster->Reload(true);
        return result;
    }
};

struct Stroke
{
    double down = 0;
    Durations moves;
    double up = 0;
    std::uint64_t copiesAtDown = 0;
    std::uint64_t copiesInMoves = 0;
    std::uint64_t copiesAtUp = 0;
};

// Loops of growing size about the middle of the view, five to ten view pixels to a message.
CPoint pathPoint(int step)
{
    const double angle = step * 2 * std::numbers::pi / 120;
    const double radius = 100 + 200.0 * step / messages;
    return CPoint(static_cast<int>(BenchDesk::viewWidth / 2 + radius * std::cos(angle)),
                  static_cast<int>(BenchDesk::viewHeight / 2 + radius * std::sin(angle)));
}

// Posts one message of the mouse, and times how long it takes to be taken from the queue, which is where the hook and
// the tool see it, and to be dispatched.
double send(BenchDesk& desk, UINT message, CPoint point)
{
    MSG taken;
    while (PeekMessageW(&taken, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&taken);
    PostMessageW(desk.view().m_hWnd, message, MK_LBUTTON, MAKELPARAM(point.x, point.y));
    return microseconds([&taken] {
        if (GetMessageW(&taken, nullptr, 0, 0) > 0)
            DispatchMessageW(&taken);
    });
}

Stroke draw(BenchDesk& desk, int count)
{
    // Since it was asked last.
    auto copies = [last = Atil::Image::wholeCopies()]() mutable {
        return Atil::Image::wholeCopies() - std::exchange(last, Atil::Image::wholeCopies());
    };
    Stroke stroke;
    stroke.down = send(desk, WM_LBUTTONDOWN, pathPoint(0));
    stroke.copiesAtDown = copies();
    for (int step = 1; step <= count; ++step)
        stroke.moves.add(send(desk, WM_MOUSEMOVE, pathPoint(step)));
    stroke.copiesInMoves = copies();
    stroke.up = send(desk, WM_LBUTTONUP, pathPoint(count));
    stroke.copiesAtUp = copies();
    return stroke;
}

template <typename Tool> Stroke drawWith(BenchDesk& desk, int count)
{
    CTool* tool = new Tool;
    if (!tool->Start())
        throw std::runtime_error("The pen did not start.");
    const Stroke stroke = draw(desk, count);
    delete g_pArxApp->m_pTool;
    return stroke;
}

void print(const char* sheet, const char* view, const char* who, const Stroke& stroke)
{
    std::printf("| %s | %s | %s | %.0f | %.0f | %.0f | %.0f | %.0f | %llu / %llu / %llu |\n", sheet, view, who,
                stroke.moves.median(), stroke.moves.percentile(0.99), stroke.moves.worst(), stroke.down, stroke.up,
                static_cast<unsigned long long>(stroke.copiesAtDown),
                static_cast<unsigned long long>(stroke.copiesInMoves),
                static_cast<unsigned long long>(stroke.copiesAtUp));
}

} // namespace

void benchStrokes(BenchDesk& desk)
{
    struct Sheet
    {
        const char* name;
        imaging::Size size;
    };
    constexpr Sheet sheets[] = {
        {"2,000 x 1,400", {2000, 1400}},
        {"6,000 x 4,200", {6000, 4200}},
        {"20,000 x 14,000", {20000, 14000}},
    };
    std::printf("Microseconds. A stroke of %d messages, of %d for the pen that commits at each.\n\n", messages,
                peerMessages);
    std::printf(
        "| Sheet | View | Pen | message, median | 99 of 100 | worst | press | release | whole copies at press / in "
        "moves / at release |\n|---|---|---|---:|---:|---:|---:|---:|---:|\n");
    for (const Sheet& sheet : sheets) {
        desk.openSheet(sheet.size);
        desk.showAt(1);
        drawWith<CRasPenTool>(desk, 100); // everything has been used once
        print(sheet.name, "1 to 1", "Halvoran", drawWith<CRasPenTool>(desk, messages));
        print(sheet.name, "1 to 1", "commits at each", drawWith<CommittingPen>(desk, peerMessages));
        desk.showWhole();
        print(sheet.name, "whole", "Halvoran", drawWith<CRasPenTool>(desk, messages));
        desk.closeSheet();
    }
    std::printf("\n");
}

} // namespace bench
