#pragma once

#include <string>
#include <utility>
#include <vector>

#include "drawing/entities.h"
#include "drawing/geometry.h"
#include "drawing/object.h"

namespace drawing {

/// A named record of one of the drawing's tables. Names are kept as given and found without regard to case.
struct TableRecord : Object
{
    void fields(FieldVisitor& visitor) override;

    std::string recordName;
    int flags = 0; // bits of the file; the kinds of records below say which matter

protected:
    void recordFields(FieldVisitor& visitor, std::string_view subclass);
};

/// A table: the owner of its records, in the file's order.
struct Table : Object
{
    explicit Table(std::string ofKind) : kind(std::move(ofKind)) {}
    std::string_view name() const override { return "TABLE"; }
    void fields(FieldVisitor& visitor) override;

    std::string kind; // "LAYER", "LTYPE", "STYLE", "BLOCK_RECORD", "VPORT", "VIEW", "UCS", "APPID" or "DIMSTYLE"
    std::vector<Handle> records;
};

struct Layer : TableRecord
{
    enum Flag
    {
        frozenFlag = 1,
        frozenInNewViewports = 2,
        lockedFlag = 4,
    };

    std::string_view name() const override { return "LAYER"; }
    void fields(FieldVisitor& visitor) override;

    bool frozen() const { return (flags & frozenFlag) != 0; }
    bool locked() const { return (flags & lockedFlag) != 0; }

    bool on = true;
    int color = 7; // 1 to 255
    std::optional<std::uint32_t> trueColor;
    std::string linetype = "Continuous";
    bool plotted = true;
    int lineweight = -3; // 1/100 mm; -3: the default
    Handle plotStyle = 0;
};

struct Linetype : TableRecord
{
    /// One dash (positive), gap (negative) or dot (0) of the pattern, with the shape or text that may sit on it.
    struct Element
    {
        double length = 0;
        Groups shape; // kept as in the file
        bool operator==(const Element&) const = default;
    };

    std::string_view name() const override { return "LTYPE"; }
    void fields(FieldVisitor& visitor) override;

    std::string description;
    double patternLength = 0;
    std::vector<Element> elements;
};

struct TextStyle : TableRecord
{
    std::string_view name() const override { return "STYLE"; }
    void fields(FieldVisitor& visitor) override;

    double fixedHeight = 0; // 0: the text's own
    double widthFactor = 1;
    double oblique = 0;
    int generation = 0; // 2 backward, 4 upside down
    double lastHeight = 2.5;
    std::string font;
    std::string bigFont;
};

/// A view of the model space on the screen; the one named "*Active" is what is shown on opening.
struct ViewportRecord : TableRecord
{
    std::string_view name() const override { return "VPORT"; }
    void fields(FieldVisitor& visitor) override;

    Vector2 lowerLeft{0, 0};  // of the viewport in the window, 0 to 1
    Vector2 upperRight{1, 1}; // of the viewport in the window, 0 to 1
    Vector2 center;           // of the view
    double height = 1;        // of the view, in drawing units
    double aspect = 1;        // width to height
};

/// A record of a table that is carried along unread (VIEW, UCS, APPID, DIMSTYLE).
struct RawTableRecord : TableRecord
{
    explicit RawTableRecord(std::string ofKind) : kind(std::move(ofKind)) {}
    std::string_view name() const override { return kind; }
    void fields(FieldVisitor& visitor) override;

    std::string kind;
};

/// BLOCK and ENDBLK: what brackets a block's entities in a file.
struct BlockBracket : Entity
{
    explicit BlockBracket(bool isBegin) : begin(isBegin) {}
    std::string_view name() const override { return begin ? "BLOCK" : "ENDBLK"; }
    void fields(FieldVisitor& visitor) override;

    bool begin;
    // Of BLOCK only:
    int flags = 0; // Block::Flag
    Vector3 basePoint;
    std::string externalPath;
    std::string description;
};

/// A block, the model space and the paper spaces among them: the owner of its entities.
struct Block : TableRecord
{
    enum Flag
    {
        anonymous = 1,
        hasAttributes = 2,
        externalReference = 4,
        externalOverlay = 8,
    };

    std::string_view name() const override { return "BLOCK_RECORD"; }
    void fields(FieldVisitor& visitor) override;

    Handle layout = 0;
    Handle begin = 0; // BlockBracket
    Handle end = 0;   // BlockBracket
    std::vector<Handle> entities;
};

} // namespace drawing
