#pragma once

#include "fonts/font_folder.h"
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
    drawing::FontSource& fonts() { return m_fonts; }

private:
    const DrawingSession& m_drawing;
    fonts::FontFolder m_fonts{fonts::folderBesideProgram()};
    Scene m_scene;
    bool m_stale = true;
};

} // namespace desk
