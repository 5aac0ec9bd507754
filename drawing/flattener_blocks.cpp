// Flattening of block references, of dimensions, which are drawn by a block, and of old polylines.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "drawing/flatten_polylines.h"
#include "drawing/flattener.h"

namespace drawing {

namespace {

constexpr double radiansPerDegree = std::numbers::pi / 180;

} // namespace

void Flattener::content(const Block& block, const Place& place)
{
    const bool cyclic = std::find(m_open.begin(), m_open.end(), &block) != m_open.end();
    if (cyclic || m_open.size() > static_cast<std::size_t>(std::max(0, m_options.depth))) {
        m_complete = false;
        return;
    }
    m_open.push_back(&block);
    for (const Entity* entity : m_document.drawOrder(block)) {
        any(*entity, place);
    }
    m_open.pop_back();
}

// A reference with its attributes, in each of its rows and columns.
void Flattener::reference(const BlockReference& reference, const Place& place)
{
    const Block* block = findBlock(reference.block);
    const auto* begin = block ? m_document.find<BlockBracket>(block->begin) : nullptr;
    const FlatStyle style = styleOf(reference, place.inherited);
    Place inside;
    inside.inherited = {true, style.layer, style.colorIndex, style.rgb, style.linetype, style.lineweight};
    const Transform turned =
        Transform::fromExtrusion(reference.extrusion) * Transform::rotation(reference.rotation * radiansPerDegree);
    const Transform toPlace =
        Transform::translation(Transform::fromExtrusion(reference.extrusion).point(reference.position)) * turned *
        Transform::scaling(reference.scale) * Transform::translation((begin ? begin->basePoint : Vector3{}) * -1);
    for (int row = 0; row < std::max(1, reference.rows); ++row) {
        for (int column = 0; column < std::max(1, reference.columns); ++column) {
            // Also an empty block costs something, so that a huge grid of them comes to an end.
            if (!spend(1)) {
                return;
            }
            const Vector3 offset{column * reference.columnSpacing, row * reference.rowSpacing, 0};
            const Place shifted{place.map * Transform::translation(turned.direction(offset)), place.inherited};
            inside.map = shifted.map * toPlace;
            if (block) {
                content(*block, inside);
            }
            attributes(reference, shifted);
        }
    }
}

void Flattener::attributes(const BlockReference& reference, const Place& place)
{
    for (const Handle handle : reference.attributes) {
        const auto* attribute = m_document.find<Attribute>(handle);
        if (attribute && (m_options.hiddenToo || !(attribute->flags & Attribute::invisibleFlag)) &&
            shown(*attribute, place.inherited)) {
            text(*attribute, attribute->text, place);
        }
    }
}

// Its block is in the drawing's coordinates.
void Flattener::dimension(const Dimension& dimension, const Place& place)
{
    if (const Block* block = findBlock(dimension.block)) {
        const FlatStyle style = styleOf(dimension, place.inherited);
        content(*block,
                {place.map, {true, style.layer, style.colorIndex, style.rgb, style.linetype, style.lineweight}});
    }
}

void Flattener::heavyPolyline(const HeavyPolyline& polyline, const Place& place)
{
    std::vector<const Vertex*> vertices;
    for (const Handle handle : polyline.vertices) {
        const auto* vertex = m_document.find<Vertex>(handle);
        if (vertex && !(vertex->flags & Vertex::splineFrame)) {
            vertices.push_back(vertex);
        }
    }
    const auto emitEach = [&](FlatShape&& piece) { emit(polyline, std::move(piece), place); };
    if (polyline.flags & HeavyPolyline::polyfaceMesh) {
        faces(vertices, polyline, place);
    } else if (polyline.flags & HeavyPolyline::meshFlag) {
        mesh(polyline, vertices, place);
    } else if (polyline.flags & HeavyPolyline::inSpace) {
        std::vector<Vector3> points;
        points.reserve(vertices.size());
        for (const Vertex* vertex : vertices) {
            points.push_back(vertex->position);
        }
        if (!points.empty()) {
            emitEach(projectedPath(points, place.map, (polyline.flags & HeavyPolyline::closedFlag) != 0));
        }
    } else {
        std::vector<PolylinePoint> points;
        points.reserve(vertices.size());
        for (const Vertex* vertex : vertices) {
            points.push_back({{vertex->position.x, vertex->position.y},
                              vertex->startWidth.value_or(polyline.startWidth),
                              vertex->endWidth.value_or(polyline.endWidth),
                              vertex->bulge});
        }
        const Transform map = place.map * Transform::fromExtrusion(polyline.extrusion) *
                              Transform::translation({0, 0, polyline.elevation});
        flattenPolyline(points, (polyline.flags & HeavyPolyline::closedFlag) != 0, map, m_options.tolerance, emitEach);
    }
}

// A mesh of M times N vertices, row by row: a line along every row and every column.
void Flattener::mesh(const HeavyPolyline& polyline, const std::vector<const Vertex*>& vertices, const Place& place)
{
    const auto countM = static_cast<std::size_t>(std::max(0, polyline.meshCountM));
    const auto countN = static_cast<std::size_t>(std::max(0, polyline.meshCountN));
    if (countM == 0 || countN == 0 || vertices.size() / countN < countM) {
        m_complete = m_complete && vertices.empty();
        return;
    }
    const auto line = [&](std::size_t first, std::size_t step, std::size_t count, bool closed) {
        std::vector<Vector3> points;
        for (std::size_t i = 0; i < count; ++i) {
            points.push_back(vertices[first + i * step]->position);
        }
        emit(polyline, projectedPath(points, place.map, closed), place);
    };
    for (std::size_t m = 0; m < countM; ++m) {
        line(m * countN, 1, countN, (polyline.flags & HeavyPolyline::meshClosedInN) != 0);
    }
    for (std::size_t n = 0; n < countN; ++n) {
        line(n, countN, countM, (polyline.flags & HeavyPolyline::closedFlag) != 0);
    }
}

// The edges of a polyface mesh's faces, but for the invisible ones.
void Flattener::faces(const std::vector<const Vertex*>& vertices, const HeavyPolyline& polyline, const Place& place)
{
    std::vector<const Vertex*> corners;
    for (const Vertex* vertex : vertices) {
        if (vertex->flags & Vertex::ofMesh) {
            corners.push_back(vertex);
        }
    }
    const auto corner = [&](int index) {
        const auto number = static_cast<std::size_t>(std::abs(static_cast<long long>(index)));
        return number >= 1 && number <= corners.size() ? corners[number - 1] : nullptr;
    };
    for (const Vertex* face : vertices) {
        const auto count =
            static_cast<std::size_t>(std::count_if(face->face.begin(), face->face.end(), [](int i) { return i != 0; }));
        for (std::size_t i = 0; i < count && !(face->flags & Vertex::ofMesh); ++i) {
            const Vertex* from = corner(face->face[i]);
            const Vertex* to = corner(face->face[(i + 1) % count]);
            if (from && to && face->face[i] > 0) {
                emit(polyline, projectedPath({from->position, to->position}, place.map, false), place);
            }
        }
    }
}

} // namespace drawing
