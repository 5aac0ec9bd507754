#include "standin/desk/scene_cache.h"

namespace desk {
namespace {

// How far a curve may stray from its straight pieces, in pixels: when flattened anew, and until it is done again.
constexpr double freshTolerance = 0.2;
constexpr double coarsestTolerance = 0.6;
constexpr double finestTolerance = 0.02;
// How far endless lines run on beyond the view, in views.
constexpr double viewsAround = 10;

} // namespace

const Scene& SceneCache::at(const ViewTransform& view)
{
    const double pixel = view.unitsPerPixel();
    if (!m_stale && m_scene.tolerance() <= coarsestTolerance * pixel &&
        m_scene.tolerance() >= finestTolerance * pixel && m_scene.window().contains(view.visible()))
        return m_scene;
    if (standin::drawingOpen()) {
        const Box window = view.visible().widened(viewsAround);
        drawing::FlattenOptions options;
        options.tolerance = freshTolerance * pixel;
        options.window = drawing::Extents{window.low, window.high};
        options.viewHeight = view.height();
        options.fonts = &m_fonts;
        m_scene.build(standin::document(), m_drawing.currentSpace(), options);
    } else {
        m_scene = {};
    }
    m_stale = false;
    return m_scene;
}

} // namespace desk
