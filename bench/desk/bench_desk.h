// A desk without menus for the benchmarks: a frame with a drawing view, and a drawing with one raster in it.
#pragma once

#include <filesystem>

#include "imaging/geometry.h"
#include "module/raster/CAcraster.h"
#include "platform/platform.h"
#include "standin/host.h"

namespace bench {

class BenchDesk : public standin::DeskServices
{
public:
    BenchDesk();
    ~BenchDesk() override;
    BenchDesk(const BenchDesk&) = delete;
    BenchDesk& operator=(const BenchDesk&) = delete;

    // Writes a raster with some ink and a drawing with it, opens that and makes the raster current. A pixel of the
    // raster measures one drawing unit; its lower left corner lies at the origin.
    CAcraster& openSheet(imaging::Size pixels);
    // The same with a raster file that is there; it is not written to.
    CAcraster& openSheet(const std::filesystem::path& raster);
    void closeSheet();
    // View pixels to an image pixel, around the middle of the sheet.
    void showAt(double scale);
    // `share` of what fits into the view.
    void showWhole(double share = 1);
    void moveBy(int viewPixels);

    CWnd& view() { return *m_view; }
    static constexpr int viewWidth = 1000;
    static constexpr int viewHeight = 700;

    CMDIFrameWnd* frame() override { return m_frame; }
    CView* drawingView() override { return m_view; }
    void postCommandText(const std::wstring&) override {}
    void alert(const std::wstring&) override {}
    void print(const std::wstring&) override {}
    standin::ViewState viewState() override { return m_viewState; }
    void redraw() override {}
    std::optional<std::vector<standin::Handle>> selectEntities() override { return std::nullopt; }
    std::vector<standin::Handle> currentSelection() override { return {}; }
    bool runDeskCommand(const std::vector<standin::CommandArgument>&) override { return false; }

private:
    std::filesystem::path m_folder;
    CMDIFrameWnd* m_frame = nullptr;
    CView* m_view = nullptr;
    imaging::Size m_sheet{};
    standin::ViewState m_viewState{viewWidth, viewHeight, {0, 0, 0}, viewHeight};
};

} // namespace bench
