#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/geometry.h"
#include "drawing/object.h"

namespace drawing {

/// Names for objects, in the file's order. Names are kept as given and found without regard to case.
struct Dictionary : Object
{
    struct Entry
    {
        std::string key;
        Handle object = 0;
        bool operator==(const Entry&) const = default;
    };

    std::string_view name() const override { return "DICTIONARY"; }
    void fields(FieldVisitor& visitor) override;

    Handle find(std::string_view key) const; // 0 if there is none
    void set(std::string_view key, Handle object);
    bool erase(std::string_view key); // false if there was none

    bool hardOwner = false;
    int cloning = 1; // what happens to a duplicate when drawings are merged
    std::vector<Entry> entries;
    bool entriesAreHard = false; // entries are stored as hard references
};

/// IMAGEDEF: a raster file that image entities show.
struct ImageDefinition : Object
{
    enum class Units
    {
        None = 0,
        Millimetre = 1,
        Centimetre = 2,
        Inch = 5,
    };

    std::string_view name() const override { return "IMAGEDEF"; }
    void fields(FieldVisitor& visitor) override;

    int classVersion = 0;
    std::string path;
    Vector2 pixels;          // width and height in pixels
    Vector2 pixelSize{1, 1}; // of one pixel, in drawing units of a freshly placed image (millimetres as a rule)
    bool loaded = true;
    Units units = Units::None; // of the file's resolution
};

/// Tells an image entity of changes in its definition; owned by the entity, and among the definition's reactors.
struct ImageDefinitionReactor : Object
{
    std::string_view name() const override { return "IMAGEDEF_REACTOR"; }
    void fields(FieldVisitor& visitor) override;

    int classVersion = 2;
    Handle image = 0;
};

/// What holds for all images of the drawing.
struct RasterVariables : Object
{
    enum Frame
    {
        frameOff = 0,
        frameAbove = 1,
        frameBelow = 2,
        frameOnNoPlot = 3,
    };

    std::string_view name() const override { return "RASTERVARIABLES"; }
    void fields(FieldVisitor& visitor) override;

    int classVersion = 0;
    int frame = frameAbove;
    int quality = 1; // 0 draft, 1 high
    int units = 0;   // 0 none, 1 mm, 2 cm, 3 m, 4 km, 5 in, 6 ft, 7 yd, 8 mi
};

/// An object of a kind that is carried along unread; all of it is in the kept groups.
struct RawObject : Object
{
    explicit RawObject(std::string dxfName) : recordName(std::move(dxfName)) {}
    std::string_view name() const override { return recordName; }
    void fields(FieldVisitor&) override {}

    std::string recordName;
};

} // namespace drawing
