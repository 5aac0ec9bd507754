#pragma once

#include <vector>

#include "standin/desk/drawing_session.h"
#include "standin/desk/scene_cache.h"
#include "standin/desk/selection.h"
#include "standin/desk/view_history.h"

namespace desk {

/// What the desk keeps of each open drawing. All but the id is about what the user sees and does while the drawing is
/// the active one.
struct OpenDrawing
{
    /// The windows and the fonts outlive it.
    OpenDrawing(standin::DrawingId drawing, EditorWindows& windows, drawing::FontSource& fonts)
        : id(drawing), views(windows), scenes(session, fonts), selection(windows)
    {}
    OpenDrawing(const OpenDrawing&) = delete;
    OpenDrawing& operator=(const OpenDrawing&) = delete;

    /// Something was changed since the drawing was opened or saved. May be asked of any open drawing.
    bool modified() const { return session.markedModified() || standin::drawingModified(id); }

    const standin::DrawingId id; // 0: there is no drawing
    ViewHistory views;
    DrawingSession session;
    SceneCache scenes;
    Selection selection;
    std::vector<Vec2> pending; // points that the running command has gathered so far, in drawing units
};

} // namespace desk
