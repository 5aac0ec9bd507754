#pragma once

#include "standin/desk/drawing_session.h"
#include "standin/desk/scene.h"

namespace desk {

/// The flattened space of the open drawing, flattened anew when the drawing or the zoom ask for it.
class SceneCache
{
public:
    explicit SceneCache(const DrawingSession& drawing) : m_drawing(drawing) {}

    /// Empty if no drawing is open. Holds until the next call.
    const Scene& at(const ViewTransform& view);
    /// What was flattened no longer holds.
    void drop() { m_stale = true; }
    TypefaceCache& typefaces() { return m_typefaces; }

private:
    const DrawingSession& m_drawing;
    TypefaceCache m_typefaces;
    Scene m_scene;
    bool m_stale = true;
};

} // namespace desk
