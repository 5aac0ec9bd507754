#include "standin/desk/scene_cache.h"

namespace desk {
namespace {

// How far a curve may stray from its straight pieces, in pixels: when flattened anew, and until it is done again.
constexpr double freshTolerance = 0.2;
constexpr double coarsestTolerance = 0.6;
constexpr double finestTolerance = 0.02;

} // namespace

const Scene& SceneCache::at(const ViewTransform& view)
{
    const double pixel = view.unitsPerPixel();
    if (!m_stale && m_scene.tolerance() <= coarsestTolerance * pixel && m_scene.tolerance() >= finestTolerance * pixel)
        return m_scene;
    if (standin::drawingOpen()) {
        m_scene.build(standin::document(), m_drawing.currentSpace(), freshTolerance * pixel, m_fonts);
    } else {
        m_scene = {};
    }
    m_stale = false;
    return m_scene;
}

} // namespace desk
