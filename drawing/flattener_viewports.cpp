// The model space as a layout's viewports show it.

#include <cmath>
#include <numbers>

#include "drawing/flatten_curves.h"
#include "drawing/flattener.h"
#include "drawing/lower_case.h"

namespace drawing {

namespace {

// From the drawing's coordinates to those of a view along a direction.
Transform toView(const Vector3& direction)
{
    const Vector3 zAxis = length(direction) > 0 ? normalized(direction) : worldZAxis;
    const Vector3 level = cross(worldZAxis, zAxis);
    const Vector3 xAxis = length(level) > 0 ? normalized(level) : Vector3{1, 0, 0};
    const Vector3 yAxis = cross(zAxis, xAxis);
    return {{xAxis.x, yAxis.x, zAxis.x}, {xAxis.y, yAxis.y, zAxis.y}, {xAxis.z, yAxis.z, zAxis.z}, {}};
}

Transform toSheet(const Viewport& viewport)
{
    const double scale = viewport.height / viewport.viewHeight;
    return Transform::translation({viewport.center.x, viewport.center.y, 0}) *
           Transform::scaling({scale, scale, scale}) *
           Transform::translation({-viewport.viewCenter.x, -viewport.viewCenter.y, 0}) *
           Transform::rotation(viewport.twist * std::numbers::pi / 180) * toView(viewport.viewDirection) *
           Transform::translation(viewport.viewTarget * -1);
}

bool isOn(const Viewport& viewport)
{
    return viewport.number != Viewport::sheetNumber && viewport.status != 0 && !(viewport.flags & Viewport::offFlag) &&
           viewport.width > 0 && viewport.height > 0 && viewport.viewHeight > 0;
}

} // namespace

// Its frame belongs to its layer; what it shows does not. A viewport inside of what a viewport or a block shows is
// none of a sheet.
void Flattener::viewport(const Viewport& viewport, const Place& place)
{
    const Block& model = m_document.modelSpace();
    const bool onSheet = !m_clip && !place.inherited.nested && (m_open.empty() || m_open.front() != &model);
    if (!onSheet || !isOn(viewport)) {
        return;
    }
    const Vector2 low{viewport.center.x - viewport.width / 2, viewport.center.y - viewport.height / 2};
    const Vector2 high = low + Vector2{viewport.width, viewport.height};
    m_clip = Extents{low, high};
    m_viewScale = viewport.height / viewport.viewHeight;
    for (const Handle handle : viewport.frozenLayers) {
        if (const auto* layer = m_document.find<Layer>(handle)) {
            m_frozenHere.insert(lowerCase(layer->recordName));
        }
    }
    content(model, {toSheet(viewport), Inherited()});
    m_clip.reset();
    m_viewScale = 1;
    m_frozenHere.clear();
    if (shown(viewport, place.inherited)) {
        emit(viewport, FlatPath{{low, {high.x, low.y}, high, {low.x, high.y}}, true}, place, Linetype::Continuous);
    }
}

} // namespace drawing
