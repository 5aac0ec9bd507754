#pragma once

#include <functional>
#include <memory>

#include "standin/afx/afx.h"
#include "standin/desk/editor.h"
#include "standin/desk/held_pan.h"
#include "standin/desk/palette.h"
#include "standin/desk/pixel_buffer.h"
#include "standin/desk/scene_painter.h"

namespace desk {

/// How long the paintings of the view took, in milliseconds.
struct FrameTimes
{
    int frames = 0;
    double total = 0, longest = 0;
};

/// The window that shows the drawing. The picture of the scene is kept, so that a repaint is a copy, and a pan paints
/// the uncovered strips alone. It deletes itself with its window.
class DrawingView : public CView
{
public:
    /// Keys that belong to the command line go to `typed`; `hovered` hears of each mouse move. The editor outlives the
    /// view.
    DrawingView(Editor& editor, const Palette& palette, std::function<void(wchar_t)> typed,
                std::function<void(Vec2 view)> hovered);
    ~DrawingView() override;

    /// The scene is painted anew with the next WM_PAINT.
    void repaintScene();
    /// What lies over the scene has changed.
    void repaintOverlay();
    void setPalette(const Palette& palette);
    void zoomAt(Vec2 view, double factor);
    FrameTimes takeFrameTimes() { return std::exchange(m_times, {}); }
    /// Messages of the mouse that have reached the view: a tool that holds the mouse keeps them from it.
    unsigned mouseMoves() const { return m_mouseMoves; }

protected:
    void OnDraw(CDC* pDC) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;

private:
    void updatePicture();
    void paintArea(const imaging::Rect& area);
    void paintStrips(imaging::Point pan);
    void drawOverlay(Canvas& canvas);
    bool onKeyDown(WPARAM key);
    void onMouseMove(Vec2 view);
    void beginPan(Vec2 view);
    void panTo(Vec2 view);

    Editor& m_editor;
    Palette m_palette;
    std::function<void(wchar_t)> m_typed;
    std::function<void(Vec2)> m_hovered;
    ScenePainter m_painter;
    PixelBuffer m_picture, m_frame;
    bool m_pictureStale = true;
    ViewTransform m_pictureView;
    std::unique_ptr<HeldPan> m_pan; // while the middle button is held
    Vec2 m_panFrom;                 // view pixels
    HCURSOR m_crosshair, m_hand;
    FrameTimes m_times;
    unsigned m_mouseMoves = 0;
};

} // namespace desk
