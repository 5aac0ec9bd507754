#pragma once

#include <optional>
#include <string>
#include <vector>

#include "imaging/geometry.h"
#include "standin/desk/main_frame.h"
#include "standin/desk/script_foothold.h"
#include "standin/desk/script_hand.h"
#include "standin/desk/script_windows.h"
#include "standin/desk/tool_cursors.h"

namespace desk::script {

/// Tells what state the raster module is in from what a draughtsman can see and feel of it, so that the module need not
/// offer anything for the sake of scripts: which buttons of its toolbar are enabled and checked, whether the mouse
/// still reaches the drawing view, which cursor is shown there, and where its crawling frames run.
class ModuleEye
{
public:
    ModuleEye(MainFrame& frame, const Foothold& foothold, const Hand& hand)
        : m_frame(frame), m_foothold(foothold), m_hand(hand)
    {}

    /// Where the mouse was last, in view pixels, and what was held there.
    void noteMouse(POINT view, Held held)
    {
        m_mouse = view;
        m_held = held;
    }

    // All of it is called from the script thread and takes a moment.

    /// A toolbar's button in the state that it gets when the program is next idle. May be called from any thread.
    ToolbarButton button(int id) const;

    /// A raster is current exactly when the button to save it is enabled; while no toolbar is to be seen, when a frame
    /// crawls about an image of the drawing again after the view was painted anew.
    bool rasterIsCurrent() const;

    /// Moves the mouse where it is already: a tool's hook keeps the message from the view.
    bool toolHoldsMouse() const;
    /// A tool holds the mouse, and its button or, where it has none to be seen, its cursor tells that it is this one;
    /// see docs/desk.md for the numbers. `seen` says what was seen instead.
    bool seesTool(int tool, std::wstring& seen) const;
    /// The selection's frame around the box of image pixels, on the image where it fits.
    bool seesSelection(const imaging::Rect& pixels, std::wstring& seen) const;
    bool seesAnySelection() const;

private:
    bool seesRasterFrame() const;
    /// Whether the button of that number tells a tool at work.
    bool showsToolAtWork(const ToolbarButton& button, int tool) const;
    /// Nothing if the cursor could be that of several tools; `seen` says why.
    std::optional<int> toolByCursor(std::wstring& seen) const;
    /// Moves the mouse there and looks.
    ToolCursor cursorAt(POINT view, Held held) const;
    /// Of the view.
    std::vector<POINT> corners() const;
    /// How much of a box's outline runs along a frame of that pattern, on the image where it fits best: 0 to 1. The box
    /// is in image pixels; without one it is the whole image.
    double bestFrame(int patternBitmap, const std::optional<imaging::Rect>& box) const;

    MainFrame& m_frame;
    const Foothold& m_foothold;
    const Hand& m_hand;
    POINT m_mouse{0, 0};
    Held m_held;
};

} // namespace desk::script
