#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/geometry.h"
#include "drawing/object.h"

namespace drawing {

inline constexpr int colorByBlock = 0;
inline constexpr int colorByLayer = 256;

/// The marker of what all entities have, and the group codes of their properties.
inline constexpr std::string_view entityMarker = "AcDbEntity";
inline constexpr std::array propertyCodes{6, 8, 48, 60, 62, 67, 370, 420};

/// What can be seen in a drawing. The owner is the block (tables.h) whose entity list holds it, or, for vertices and
/// attributes, the entity that they are part of.
///
/// Angles are in degrees, counter-clockwise, as drawing files have them. Points of entities that have an `extrusion`
/// (but for lines, points and images) lie in the plane coordinates of that extrusion: see Transform::fromExtrusion.
struct Entity : Object
{
    void fields(FieldVisitor& visitor) override;
    /// The fields that all entities have, without their marker.
    void properties(FieldVisitor& visitor);

    std::string layer = "0";
    std::string linetype = "ByLayer";
    int color = colorByLayer;               // index 1 to 255, or colorByBlock, colorByLayer
    std::optional<std::uint32_t> trueColor; // 0x00RRGGBB
    double linetypeScale = 1;
    int lineweight = -1; // 1/100 mm; -1 ByLayer, -2 ByBlock, -3 default
    bool visible = true;
};

struct Line : Entity
{
    std::string_view name() const override { return "LINE"; }
    void fields(FieldVisitor& visitor) override;

    double thickness = 0;
    Vector3 start;
    Vector3 end;
    Vector3 extrusion = worldZAxis;
};

struct Point : Entity
{
    std::string_view name() const override { return "POINT"; }
    void fields(FieldVisitor& visitor) override;

    double thickness = 0;
    Vector3 position;
    Vector3 extrusion = worldZAxis;
};

struct Circle : Entity
{
    std::string_view name() const override { return "CIRCLE"; }
    void fields(FieldVisitor& visitor) override;

    double thickness = 0;
    Vector3 center;
    double radius = 0;
    Vector3 extrusion = worldZAxis;
};

/// Runs counter-clockwise from the start angle to the end angle.
struct Arc : Entity
{
    std::string_view name() const override { return "ARC"; }
    void fields(FieldVisitor& visitor) override;

    double thickness = 0;
    Vector3 center;
    double radius = 0;
    Vector3 extrusion = worldZAxis;
    double startAngle = 0;
    double endAngle = 360;
};

struct Ellipse : Entity
{
    std::string_view name() const override { return "ELLIPSE"; }
    void fields(FieldVisitor& visitor) override;

    Vector3 center;
    Vector3 majorAxis{1, 0, 0}; // from the centre to the end of the major axis
    double ratio = 1;           // minor to major
    double startParameter = 0;  // radians; 0 lies at the end of the major axis
    double endParameter = 6.283185307179586;
    Vector3 extrusion = worldZAxis;
};

/// A corner of a light polyline, with what the segment that begins there looks like.
struct PolylinePoint
{
    Vector2 position;
    double startWidth = 0;
    double endWidth = 0;
    double bulge = 0; // tangent of a quarter of the arc's angle; positive turns left
    bool operator==(const PolylinePoint&) const = default;
};

/// LWPOLYLINE.
struct LightPolyline : Entity
{
    std::string_view name() const override { return "LWPOLYLINE"; }
    void fields(FieldVisitor& visitor) override;

    bool closed = false;
    bool generateLinetype = false; // dashes run on over the corners
    double constantWidth = 0;      // holds where no point has a width of its own
    double elevation = 0;
    double thickness = 0;
    std::vector<PolylinePoint> points;
    Vector3 extrusion = worldZAxis;
};

/// The old POLYLINE, with its corners as entities of their own: a polyline in the plane or in space, a mesh.
struct HeavyPolyline : Entity
{
    enum Flag
    {
        closedFlag = 1,
        curveFit = 2,
        splineFit = 4,
        inSpace = 8,
        meshFlag = 16,
        meshClosedInN = 32,
        polyfaceMesh = 64,
        generateLinetypeFlag = 128,
    };

    std::string_view name() const override { return "POLYLINE"; }
    void fields(FieldVisitor& visitor) override;

    int flags = 0;
    double elevation = 0;
    double thickness = 0;
    double startWidth = 0; // of points that have none of their own
    double endWidth = 0;
    int meshCountM = 0;
    int meshCountN = 0;
    int smoothCountM = 0;
    int smoothCountN = 0;
    int surfaceType = 0;
    Vector3 extrusion = worldZAxis;
    std::vector<Handle> vertices; // Vertex
    Handle sequenceEnd = 0;       // SequenceEnd
};

struct Vertex : Entity
{
    enum Flag
    {
        extraOfCurveFit = 1,
        hasTangent = 2,
        ofSplineFit = 8,
        splineFrame = 16,
        inSpace = 32,
        ofMesh = 64,
        ofPolyfaceMesh = 128,
    };

    std::string_view name() const override { return "VERTEX"; }
    void fields(FieldVisitor& visitor) override;

    Vector3 position;
    std::optional<double> startWidth;
    std::optional<double> endWidth;
    double bulge = 0;
    int flags = 0;
    double tangent = 0;
    std::array<int, 4> face{}; // corners of a polyface mesh's face, from 1; negative: invisible edge; 0: none
};

/// Ends the vertices of an old polyline or the attributes of a block reference.
struct SequenceEnd : Entity
{
    std::string_view name() const override { return "SEQEND"; }
};

/// A filled triangle or quadrangle; the corners are in the file's order, so a quadrangle runs 0, 1, 3, 2.
struct Solid : Entity
{
    std::string_view name() const override { return isTrace ? "TRACE" : "SOLID"; }
    void fields(FieldVisitor& visitor) override;

    bool isTrace = false;
    std::array<Vector3, 4> corners; // the last two are equal in a triangle
    double thickness = 0;
    Vector3 extrusion = worldZAxis;
};

/// 3DFACE: the edges of a triangle or quadrangle in space.
struct Face : Entity
{
    std::string_view name() const override { return "3DFACE"; }
    void fields(FieldVisitor& visitor) override;

    std::array<Vector3, 4> corners; // in turn; the last two are equal in a triangle
    int invisibleEdges = 0;         // bit n: the edge that begins at corner n
};

/// RAY, which begins at its base, and XLINE, which runs on both ways.
struct EndlessLine : Entity
{
    explicit EndlessLine(bool isBothWays = false) : bothWays(isBothWays) {}
    std::string_view name() const override { return bothWays ? "XLINE" : "RAY"; }
    void fields(FieldVisitor& visitor) override;

    bool bothWays;
    Vector3 base;
    Vector3 direction{1, 0, 0};
};

/// A curve by control points with knots and, perhaps, weights; or by points that it goes through.
struct Spline : Entity
{
    enum Flag
    {
        closedFlag = 1,
        periodic = 2,
        rational = 4,
        planar = 8,
    };

    std::string_view name() const override { return "SPLINE"; }
    void fields(FieldVisitor& visitor) override;

    int flags = 0;
    int degree = 3;
    double knotTolerance = 1e-7;
    double controlTolerance = 1e-7;
    double fitTolerance = 1e-10;
    std::optional<Vector3> startTangent;
    std::optional<Vector3> endTangent;
    std::vector<double> knots;
    std::vector<double> weights; // one for each control point, or none
    std::vector<Vector3> controlPoints;
    std::vector<Vector3> fitPoints;
    std::optional<Vector3> normal; // of a planar one
};

/// An arrow with a line that leads to a text; the points are in the drawing's coordinates.
struct Leader : Entity
{
    std::string_view name() const override { return "LEADER"; }
    void fields(FieldVisitor& visitor) override;

    std::string dimensionStyle = "Standard";
    bool hasArrow = true;
    bool isSpline = false;
    std::vector<Vector3> points; // the arrow's tip first
    Vector3 normal = worldZAxis;
};

/// A dimension, drawn by a block of its own in the drawing's coordinates.
struct Dimension : Entity
{
    std::string_view name() const override { return "DIMENSION"; }
    void fields(FieldVisitor& visitor) override;

    std::string block;
    std::string style = "Standard";
};

/// VIEWPORT: a window of a paper space through which the model space is seen.
struct Viewport : Entity
{
    enum Flag
    {
        perspective = 1,
        offFlag = 0x20000,
    };
    static constexpr int sheetNumber = 1; // stands for the sheet itself

    std::string_view name() const override { return "VIEWPORT"; }
    void fields(FieldVisitor& visitor) override;

    Vector3 center; // on the sheet
    double width = 0;
    double height = 0;
    int status = 0; // 0: off
    int number = 0;
    Vector2 viewCenter;                 // in the view's own coordinates, about the target
    Vector3 viewDirection = worldZAxis; // from the target
    Vector3 viewTarget;
    double viewHeight = 0; // in model units
    double twist = 0;      // by which the model is seen turned, in degrees
    std::vector<Handle> frozenLayers;
    int flags = 0;
};

enum class HorizontalAlignment
{
    Left,
    Center,
    Right,
    Aligned, // stretched evenly between insertion and alignment point
    Middle,  // centred both ways
    Fit,     // stretched in width between insertion and alignment point
};

enum class VerticalAlignment
{
    Baseline,
    Bottom,
    Middle,
    Top,
};

/// One line of text. Unless it is left-aligned on its baseline, `alignmentPoint` places it.
struct Text : Entity
{
    std::string_view name() const override { return "TEXT"; }
    void fields(FieldVisitor& visitor) override;

    Vector3 position;
    double height = 0;
    std::string text; // with the file's %% codes: see plain_text.h
    double rotation = 0;
    double widthFactor = 1;
    double oblique = 0;
    std::string style = "Standard";
    int generation = 0; // 2 backward, 4 upside down
    HorizontalAlignment horizontal = HorizontalAlignment::Left;
    VerticalAlignment vertical = VerticalAlignment::Baseline;
    std::optional<Vector3> alignmentPoint;
    double thickness = 0;
    Vector3 extrusion = worldZAxis;

protected:
    void textFields(FieldVisitor& visitor);
};

/// The text that a block reference carries under a tag.
struct Attribute : Text
{
    enum Flag
    {
        invisibleFlag = 1,
        constantFlag = 2,
        verify = 4,
        preset = 8,
    };

    std::string_view name() const override { return "ATTRIB"; }
    void fields(FieldVisitor& visitor) override;

    std::string tag;
    int flags = 0;
    int fieldLength = 0;
};

/// What a block asks for when it is inserted; is seen only outside block references.
struct AttributeDefinition : Text
{
    std::string_view name() const override { return "ATTDEF"; }
    void fields(FieldVisitor& visitor) override;

    std::string prompt;
    std::string tag;
    int flags = 0; // Attribute::Flag
    int fieldLength = 0;
};

/// Text of several lines with formatting codes: see plain_text.h.
struct MText : Entity
{
    std::string_view name() const override { return "MTEXT"; }
    void fields(FieldVisitor& visitor) override;

    /// The direction of the baseline in the drawing's coordinates, whichever way the file has it; of any length.
    Vector3 baseline() const;

    Vector3 position;
    double height = 0;
    double width = 0;   // lines are broken to it; 0: never
    int attachment = 1; // 1 top left, 2 top centre, 3 top right, 4 to 6 middle, 7 to 9 bottom
    int flow = 1;
    std::string text;
    std::string style = "Standard";
    std::optional<Vector3> direction; // of the baseline, in the drawing's coordinates; goes before `rotation`
    double rotation = 0;              // about the drawing's z axis
    int spacingStyle = 1;
    double spacingFactor = 1;
    Vector3 extrusion = worldZAxis;
};

/// INSERT: a block drawn at a place, once or in rows and columns.
struct BlockReference : Entity
{
    std::string_view name() const override { return "INSERT"; }
    void fields(FieldVisitor& visitor) override;

    std::string block;
    Vector3 position;
    Vector3 scale{1, 1, 1};
    double rotation = 0;
    int columns = 1;
    int rows = 1;
    double columnSpacing = 0;
    double rowSpacing = 0;
    Vector3 extrusion = worldZAxis;
    std::vector<Handle> attributes; // Attribute
    Handle sequenceEnd = 0;         // SequenceEnd; 0 without attributes
};

/// A raster image in the drawing. `position` is the lower left corner of the lower left pixel; u runs along the width
/// and v along the height of one pixel.
struct Image : Entity
{
    enum Display
    {
        showFlag = 1,
        showUnaligned = 2,
        clipFlag = 4,
        transparent = 8,
    };

    enum class ClipType
    {
        Rectangle = 1,
        Polygon = 2,
    };

    std::string_view name() const override { return "IMAGE"; }
    void fields(FieldVisitor& visitor) override;

    /// The whole image's rectangle as a clip boundary: (-0.5, -0.5) to (width - 0.5, height - 0.5).
    void resetClip();

    int classVersion = 0;
    Vector3 position;
    Vector3 u{1, 0, 0};
    Vector3 v{0, 1, 0};
    Vector2 pixels; // width and height in pixels
    Handle definition = 0;
    int display = showFlag | showUnaligned;
    bool clipped = false;
    int brightness = 50; // 0 to 100
    int contrast = 50;   // 0 to 100
    int fade = 0;        // 0 to 100
    Handle definitionReactor = 0;
    ClipType clipType = ClipType::Rectangle;
    std::vector<Vector2> clip; // pixels, y down from the top left pixel's centre; two corners, or the closed polygon
};

/// An entity of a kind that is carried along unread; all of it is in the kept groups.
struct RawEntity : Entity
{
    explicit RawEntity(std::string dxfName) : recordName(std::move(dxfName)) {}
    std::string_view name() const override { return recordName; }

    std::string recordName;
};

} // namespace drawing
