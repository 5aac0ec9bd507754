// The fields of the tables and their records.

#include <array>
#include <cstdlib>

#include "drawing/field_visitor.h"
#include "drawing/tables.h"

namespace drawing {

void Table::fields(FieldVisitor& v)
{
    v.subclass("AcDbSymbolTable");
    int count = static_cast<int>(records.size());
    v.integer(70, count);
    if (kind == "DIMSTYLE") {
        v.subclass("AcDbDimStyleTable");
        v.integer(71, count);
    }
}

void TableRecord::fields(FieldVisitor& v)
{
    v.subclass("AcDbSymbolTableRecord");
}

void TableRecord::recordFields(FieldVisitor& v, std::string_view marker)
{
    TableRecord::fields(v);
    v.subclass(marker);
    v.string(2, recordName);
    v.integer(70, flags);
}

void Layer::fields(FieldVisitor& v)
{
    recordFields(v, "AcDbLayerTableRecord");
    // A layer that is off has its colour negative.
    int signedColor = on ? color : -color;
    v.integer(62, signedColor);
    on = signedColor >= 0;
    color = signedColor > -colorByLayer && signedColor < colorByLayer ? std::abs(signedColor) : 7;
    std::optional<int> rgb;
    if (trueColor) {
        rgb = static_cast<int>(*trueColor);
    }
    v.maybe(420, rgb);
    if (v.reading() && rgb) {
        trueColor = static_cast<std::uint32_t>(*rgb) & 0xFFFFFFu;
    }
    v.string(6, linetype);
    v.boolean(290, plotted, true);
    v.integer(370, lineweight);
    v.handle(390, plotStyle);
}

namespace {

// A group 49 begins an element; what follows up to the next belongs to it.
void readElements(FieldVisitor& v, std::vector<Linetype::Element>& elements)
{
    for (const PlacedGroup& group : v.take({49, 74, 75, 340, 46, 50, 44, 45, 9})) {
        if (group.code == 49) {
            elements.push_back({group.real(), {}});
        } else if (!elements.empty()) {
            elements.back().shape.push_back(group.plain());
        }
    }
}

} // namespace

void Linetype::fields(FieldVisitor& v)
{
    recordFields(v, "AcDbLinetypeTableRecord");
    v.string(3, description);
    int alignment = 'A'; // the only kind there is
    v.integer(72, alignment);
    int count = static_cast<int>(elements.size());
    v.integer(73, count);
    v.real(40, patternLength);
    if (v.reading()) {
        readElements(v, elements);
        return;
    }
    for (const Element& element : elements) {
        v.putReal(49, element.length);
        if (element.shape.empty()) {
            v.putInteger(74, 0);
        }
        for (const Group& group : element.shape) {
            v.put(group.code, group.value);
        }
    }
}

void TextStyle::fields(FieldVisitor& v)
{
    recordFields(v, "AcDbTextStyleTableRecord");
    v.real(40, fixedHeight);
    v.real(41, widthFactor);
    v.real(50, oblique);
    v.integer(71, generation);
    v.real(42, lastHeight);
    v.string(3, font);
    v.string(4, bigFont);
}

void ViewportRecord::fields(FieldVisitor& v)
{
    recordFields(v, "AcDbViewportTableRecord");
    v.point(10, lowerLeft);
    v.point(11, upperRight);
    v.point(12, center);
    v.real(40, height);
    v.real(41, aspect);
}

void RawTableRecord::fields(FieldVisitor& v)
{
    struct Marker
    {
        std::string_view kind;
        std::string_view marker;
    };
    static constexpr std::array<Marker, 4> markers{{{"VIEW", "AcDbViewTableRecord"},
                                                    {"UCS", "AcDbUCSTableRecord"},
                                                    {"APPID", "AcDbRegAppTableRecord"},
                                                    {"DIMSTYLE", "AcDbDimStyleTableRecord"}}};
    for (const Marker& known : markers) {
        if (known.kind == kind) {
            recordFields(v, known.marker);
        }
    }
}

void BlockBracket::fields(FieldVisitor& v)
{
    Entity::fields(v);
    v.subclass(begin ? "AcDbBlockBegin" : "AcDbBlockEnd");
    if (!begin) {
        return;
    }
    v.string(2, v.context.blockName);
    v.integer(70, flags);
    v.point(10, basePoint, {});
    std::string nameAgain = v.context.blockName;
    v.string(3, nameAgain);
    v.string(1, externalPath);
    v.string(4, description, "");
}

void Block::fields(FieldVisitor& v)
{
    TableRecord::fields(v);
    v.subclass("AcDbBlockTableRecord");
    v.string(2, recordName);
    v.handle(340, layout);
}

} // namespace drawing
