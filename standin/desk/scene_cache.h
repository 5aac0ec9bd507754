#pragma once

#include "standin/desk/drawing_session.h"
#include "standin/desk/scene.h"

namespace desk {

/// The flattened space of the open drawing, flattened anew when the drawing or the zoom ask for it.
class SceneCache
{
public:
    SceneCache(const DrawingSession& drawing, drawing::FontSource& fonts) : m_drawing(drawing), m_fonts(fonts) {}

    /// Empty if no drawing is open. Holds until the next call.
    const Scene& at(const ViewTransform& view);
    /// What was flattened no longer holds.
    void drop() { m_stale = true; }

private:
    const DrawingSession& m_drawing;
    drawing::FontSource& m_fonts;
    Scene m_scene;
    bool m_stale = true;
};

} // namespace desk
