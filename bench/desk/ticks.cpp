#include "bench/desk/ticks.h"

#include <cstdio>
#include <stdexcept>
#include <vector>

#include "bench/desk/bench_desk.h"
#include "bench/desk/durations.h"
#include "module/resources/resource.h"
#include "module/start/MonitorTimer.h"
#include "module/start/SelectionInView.h"

namespace bench {

namespace {

constexpr int ticks = 200;
constexpr imaging::Size sheet{6000, 4200};

// Rectangles of 40 by 60 pixels in rows of a hundred, with gaps, about the sheet's middle; one alone is as large as
// 5,000 together.
std::vector<RECT> rectangles(int count)
{
    if (count == 1)
        return {{500, 350, 5490, 3840}};
    const long above = (sheet.height - count / 100 * 70) / 2;
    std::vector<RECT> rects;
    for (int i = 0; i < count; ++i) {
        const long left = 500 + i % 100 * 50;
        const long top = above + i / 100 * 70;
        rects.push_back({left, top, left + 40, top + 60});
    }
    return rects;
}

void select(CAcraster& raster, int count)
{
    const std::vector<RECT> rects = rectangles(count);
    std::vector<char> block(sizeof(RGNDATAHEADER) + rects.size() * sizeof(RECT));
    auto* data = reinterpret_cast<RGNDATA*>(block.data());
    data->rdh = {
        sizeof(RGNDATAHEADER), RDH_RECTANGLES, static_cast<DWORD>(count), 0, {0, 0, sheet.width, sheet.height}};
    std::copy(rects.begin(), rects.end(), reinterpret_cast<RECT*>(data->Buffer));
    CRgn selection;
    if (!selection.CreateFromData(nullptr, static_cast<int>(block.size()), data))
        throw std::runtime_error("The selection was not made.");
    raster.GetRegion().CombineRgn(&selection, nullptr, RGN_COPY);
}

// A message of the monitor timer as the queue gives it; dispatching it again is another tick.
MSG nextTick()
{
    MSG message;
    do {
        if (GetMessageW(&message, nullptr, 0, 0) <= 0)
            throw std::runtime_error("The program was told to end.");
        DispatchMessageW(&message);
    } while (message.message != WM_TIMER || message.hwnd);
    return message;
}

// With `shake`, the view moves by so many of its pixels to and fro between the ticks.
void run(BenchDesk& desk, const char* what, int count, CAcraster& raster, int shake = 0)
{
    StartMonitorTimer();
    const MSG tick = nextTick();
    const unsigned before = SelectionConversions();
    Durations times;
    for (int i = 0; i < ticks; ++i) {
        desk.moveBy(i % 2 ? -shake : shake);
        times.add(microseconds([&tick] { DispatchMessageW(&tick); }));
    }
    const unsigned rebuilds = SelectionConversions() - before;
    StopMonitorTimer();

    // The two parts that grow with the selection, by themselves.
    raster.Lock(0);
    Durations conversion;
    for (int i = 0; i < 20; ++i) {
        CRgn region;
        conversion.add(microseconds([&] { raster.GetViewRegion(region); }));
    }
    Durations framing;
    CRgn region;
    raster.GetViewRegion(region);
    CClientDC view(acedGetAcadDwgView());
    CBitmap pattern;
    pattern.LoadBitmap(IDB_SELECTION_PATTERN);
    CBrush brush(&pattern);
    for (int i = 0; i < 20; ++i)
        framing.add(microseconds([&] { view.FrameRgn(&region, &brush, 1, 1); }));
    raster.Unlock();
    std::printf("| %d | %s | %.0f | %.0f | %.0f | %u of %d | %.0f | %.0f |\n", count, what, times.median(),
                times.percentile(0.99), times.worst(), rebuilds, ticks, conversion.median(), framing.median());
}

} // namespace

void benchTicks(BenchDesk& desk)
{
    CAcraster& raster = desk.openSheet(sheet);
    std::printf("Microseconds, %d ticks each; nothing moves.\n\n", ticks);
    std::printf("| Rectangles | In the view | tick, median | 99 of 100 | worst | view regions built | building one | "
                "FrameRgn |\n"
                "|---:|---|---:|---:|---:|---:|---:|---:|\n");
    for (const int count : {0, 1, 500, 5000}) {
        raster.Lock(0);
        raster.ResetRegion();
        raster.Unlock();
        if (count > 0)
            select(raster, count);
        desk.showWhole();
        run(desk, "wholly", count, raster);
        if (count == 0)
            continue;
        run(desk, "wholly, the view moving by 3 pixels", count, raster, 3);
        desk.showWhole(0.5);
        run(desk, "wholly, half as large", count, raster);
        desk.showAt(0.3);
        run(desk, "partly", count, raster);
    }
    std::printf("\n");
    desk.closeSheet();
}

} // namespace bench
