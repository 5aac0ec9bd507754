// A desk for the module under test: a real view window, a drawing with images, and a record of what was asked of it.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "module/raster/CAcraster.h"
#include "platform/platform.h"
#include "standin/host.h"
#include "tests/module/support/test_drawing.h"

namespace test {

// Runs the thread's messages until the state has come; false if it does not come within ten seconds.
bool pumpUntil(const std::function<bool()>& reached);

// The path of the worker that was built with the tests.
CString workerProgram();

// Runs what is queued now.
void pumpAll();
// Messages that are posted from now on have another time stamp than those before.
void waitForNextTimeStamp();

class DeskFixture : public ::testing::Test, public standin::DeskServices
{
protected:
    void SetUp() override;
    // Also sees to it that nothing was left open, locked or lying about.
    void TearDown() override;

    // Writes the pictures and the drawing into this test's folder, and opens the drawing. Images without a file name
    // get one; all keep what else was said of them.
    void openDrawing(const std::vector<Picture>& pictures, std::vector<PlacedImage> places = {},
                     double dotsPerInch = 300);
    std::filesystem::path file(const std::string& name) const { return m_folder / name; }

    // The entity's name, as a selection set gives it.
    void entityName(int index, ads_name& name) const;
    // Makes the image the current raster, unlocked.
    CAcraster& makeCurrent(int index);
    // A drawing with this picture alone, which is the current raster, unlocked.
    CAcraster& openCurrent(const Picture& picture, const PlacedImage& place = {}, double dotsPerInch = 300);

    CWnd& view() { return *m_view; }
    // Drops the current raster and what nobody is there to be asked about when the drawing closes.
    static void forgetEdits();
    // Another window in the place of the view, as when a drawing is closed and the next one opened.
    void renewView();

    std::vector<std::wstring> m_posted; // texts for the command line
    std::vector<std::wstring> m_alerts;
    std::vector<std::wstring> m_said; // lines on the command line
    int m_redraws = 0;
    int m_locksLeft = 0; // document locks that the test expects to be left
    // 1000 by 1000 view pixels show 100 by 100 drawing units around the origin.
    standin::ViewState m_viewState{1000, 1000, {0, 0, 0}, 100};

    // DeskServices
    CMDIFrameWnd* frame() override { return nullptr; }
    CView* drawingView() override { return m_view; }
    void postCommandText(const std::wstring& text) override { m_posted.push_back(text); }
    void alert(const std::wstring& text) override { m_alerts.push_back(text); }
    void print(const std::wstring& line) override { m_said.push_back(line); }
    standin::ViewState viewState() override { return m_viewState; }
    void redraw() override { ++m_redraws; }
    std::optional<std::vector<standin::Handle>> selectEntities() override { return std::nullopt; }
    std::vector<standin::Handle> currentSelection() override { return {}; }
    bool runDeskCommand(const std::vector<standin::CommandArgument>&) override { return false; }

private:
    CView* m_view = nullptr;
    std::filesystem::path m_folder;
    std::vector<std::wstring> m_temporaryFilesBefore;
};

} // namespace test
