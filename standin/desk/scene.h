#pragma once

#include <string>
#include <variant>
#include <vector>

#include "drawing/document.h"
#include "drawing/flatten.h"
#include "standin/desk/canvas.h"
#include "standin/desk/image_placement.h"
#include "standin/desk/picking.h"
#include "standin/desk/vec2.h"

namespace desk {

/// What an entity's pieces look like in the drawing, ready to be painted and picked; drawing units throughout.
struct ScenePath
{
    std::vector<Vec2> points;    // a closed path ends with its first point again
    drawing::DashPattern dashes; // empty for continuous lines
};

struct SceneArea
{
    std::vector<std::vector<Vec2>> contours; // even-odd; they close by themselves
};

struct SceneImage
{
    drawing::Handle image = 0; // of the image entity itself, also inside a block reference
    ImagePlacement placement;
    bool shown = true;
    bool transparent = false;
    int fade = 0;           // 0 to 100
    std::string file;       // of the definition, UTF-8
    std::vector<Vec2> clip; // polygon in drawing units; empty if the whole image shows

    std::vector<Vec2> corners() const;
    /// What the frame runs around: the clip, or the whole image.
    std::vector<Vec2> outline() const { return clip.empty() ? corners() : clip; }
};

struct SceneItem
{
    drawing::Handle entity = 0; // of the space's own list
    Color color = 0;
    bool inForeground = false; // colour 7: black on a light ground, white on a dark one
    Box bounds;
    std::variant<ScenePath, SceneArea, drawing::FlatText, SceneImage> shape;

    PickShape pickShape() const;
};

/// The flattened model or paper space.
class Scene
{
public:
    /// tolerance: how far a curve's straight pieces may stray from it, in drawing units. The fonts must outlive
    /// the scene.
    void build(const drawing::Document& document, const drawing::Block& space, double tolerance,
               drawing::FontSource& fonts);

    const std::vector<SceneItem>& items() const { return m_items; }
    const Box& extents() const { return m_extents; }
    double tolerance() const { return m_tolerance; }

    /// The topmost entity whose shape comes within `reach` of the point; 0 if there is none. An image is picked at its
    /// outline alone, so that what lies on it can be picked too.
    drawing::Handle pick(Vec2 at, double reach) const;
    /// Entities wholly inside the window, or, crossing, with any part in it. In drawing order, each once.
    std::vector<drawing::Handle> pickWindow(const Box& window, bool crossing) const;

private:
    std::vector<SceneItem> m_items;
    Box m_extents;
    double m_tolerance = 0;
};

} // namespace desk
