// Areas filled with a colour or a pattern of lines.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "drawing/entities.h"
#include "drawing/geometry.h"

namespace drawing {

/// The boundary of a hatch is made of paths in its plane; each path is a polyline or a run of edges.
struct HatchLine
{
    Vector2 start;
    Vector2 end;
};

/// An arc of a circle or an ellipse. Clockwise ones have their angles measured clockwise too, as files have them.
struct HatchArc
{
    Vector2 center;
    Vector2 majorAxis; // of an ellipse, from the centre to its end
    double radius = 0; // of a circle
    double ratio = 1;  // of an ellipse, minor to major
    double startAngle = 0;
    double endAngle = 360;
    bool counterClockwise = true;
    bool elliptic = false;
};

struct HatchSpline
{
    int degree = 3;
    bool rational = false;
    bool periodic = false;
    std::vector<double> knots;
    std::vector<double> weights; // one for each control point, or none
    std::vector<Vector2> controlPoints;
    std::vector<Vector2> fitPoints;
    std::optional<Vector2> startTangent;
    std::optional<Vector2> endTangent;
};

using HatchEdge = std::variant<HatchLine, HatchArc, HatchSpline>;

struct HatchPath
{
    enum Flag
    {
        external = 1,
        polyline = 2,
        outermost = 16,
    };

    int flags = external;
    std::vector<PolylinePoint> points; // of a polyline
    bool hasBulges = false;
    bool closed = true;
    std::vector<HatchEdge> edges; // of any other path
    std::vector<Handle> sources;  // the entities that an associative hatch follows
};

/// A family of parallel lines, scaled and turned already. Line n goes through base + n offset.
struct HatchPatternLine
{
    double angle = 0; // degrees
    Vector2 base;
    Vector2 offset;
    std::vector<double> dashes; // dashes, gaps (negative) and dots (0); none: unbroken
};

struct Hatch : Entity
{
    enum class Style
    {
        Normal = 0, // islands in islands are filled again
        Outer = 1,  // the outermost area alone
        Ignore = 2, // islands are filled too
    };

    std::string_view name() const override { return "HATCH"; }
    void fields(FieldVisitor& visitor) override;

    double elevation = 0;
    Vector3 extrusion = worldZAxis;
    std::string pattern = "SOLID";
    bool solid = true;
    bool associative = false;
    std::vector<HatchPath> paths;
    Style style = Style::Normal;
    int patternType = 1;     // 0 of the user's own spacing, 1 of the standard file, 2 of another file
    double patternAngle = 0; // degrees; the pattern's lines have it in them
    double patternScale = 1; // the pattern's lines have it in them; of a user's pattern: the spacing
    bool doubled = false;    // a user's pattern goes both ways
    std::vector<HatchPatternLine> lines;
    std::optional<double> pixelSize; // of the screen when the area was found
    std::vector<Vector2> seeds;
    Groups unread; // boundary and pattern as in the file where they are of a form of their own
};

} // namespace drawing
