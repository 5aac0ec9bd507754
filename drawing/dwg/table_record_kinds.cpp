// The records of the tables, but for dimension styles.

#include <numbers>

#include "drawing/dwg/kinds.h"
#include "drawing/dwg/lineweights.h"
#include "drawing/dwg/record_head.h"
#include "drawing/error.h"
#include "drawing/tables.h"

namespace drawing::dwg {

namespace {

// A layer's states and its line weight in one number.
enum LayerState
{
    frozenState = 1,
    offState = 2,
    frozenInNewState = 4,
    lockedState = 8,
    plottedState = 16,
};
constexpr int lineweightShift = 5;
constexpr int lineweightMask = 0x1F;

void layer(ObjectFields& f)
{
    f.marker("AcDbLayerTableRecord");
    int flags = recordHead(f);
    int color = 7;
    int plotted = 1;
    int weight = -3;
    f.take(62, color);
    f.take(290, plotted);
    f.take(370, weight);
    int state = (flags & Layer::frozenFlag ? frozenState : 0) | (color < 0 ? offState : 0) |
                (flags & Layer::frozenInNewViewports ? frozenInNewState : 0) |
                (flags & Layer::lockedFlag ? lockedState : 0) | (plotted != 0 ? plottedState : 0) |
                lineweightNumber(weight) << lineweightShift;
    f.bits.shortNumber(state);
    int index = color < 0 ? -color : color;
    f.bits.shortNumber(index);
    flags |= (state & frozenState ? Layer::frozenFlag : 0) |
             (state & frozenInNewState ? Layer::frozenInNewViewports : 0) |
             (state & lockedState ? Layer::lockedFlag : 0);
    f.give(70, flags);
    f.give(62, state & offState ? -index : index);
    if ((state & plottedState) == 0) {
        f.give(290, 0);
    }
    f.give(370, lineweightOf(state >> lineweightShift & lineweightMask));
    externalReference(f);
    f.handle(390, Reference::HardPointer);
    f.name(6, "LTYPE");
}

void textStyle(ObjectFields& f)
{
    constexpr int shapeFile = 1;
    constexpr int vertical = 4;
    f.marker("AcDbTextStyleTableRecord");
    int flags = recordHead(f);
    flags |= flagBit(f, flags, shapeFile);
    flags |= flagBit(f, flags, vertical);
    f.give(70, flags);
    f.real(40);
    f.real(41);
    f.angle(50);
    f.byte(71);
    f.real(42);
    f.text(3);
    f.text(4);
    externalReference(f);
}

// One dash, gap or dot, with the shape or text on it.
struct Dash
{
    double length = 0;
    int shapeNumber = 0;
    double xOffset = 0;
    double yOffset = 0;
    double scale = 1;
    double rotation = 0;
    int shapeFlags = 0;
    Handle style = 0;
    std::string text;
};

enum ShapeFlag
{
    absoluteRotation = 1,
    textFlag = 2,
    shapeFlag = 4,
};

std::vector<Dash> takeDashes(ObjectFields& f)
{
    std::vector<Dash> dashes;
    for (const PlacedGroup& group : f.takeAll({49, 74, 75, 340, 46, 50, 44, 45, 9})) {
        if (group.code == 49) {
            dashes.emplace_back().length = group.real();
            continue;
        }
        if (dashes.empty()) {
            continue;
        }
        Dash& dash = dashes.back();
        switch (group.code) {
        case 74:
            dash.shapeFlags = group.integer();
            break;
        case 75:
            dash.shapeNumber = group.integer();
            break;
        case 340:
            dash.style = group.handleValue();
            break;
        case 46:
            dash.scale = group.real();
            break;
        case 50:
            dash.rotation = group.real();
            break;
        case 44:
            dash.xOffset = group.real();
            break;
        case 45:
            dash.yOffset = group.real();
            break;
        default:
            dash.text = group.value;
            break;
        }
    }
    return dashes;
}

void giveDash(ObjectFields& f, const Dash& dash)
{
    f.give(49, dash.length);
    f.give(74, dash.shapeFlags);
    if (dash.shapeFlags == 0) {
        return;
    }
    f.give(75, dash.shapeFlags & textFlag ? 0 : dash.shapeNumber);
    f.giveHandle(340, dash.style);
    f.give(46, dash.scale);
    f.give(50, dash.rotation);
    f.give(44, dash.xOffset);
    f.give(45, dash.yOffset);
    if (dash.shapeFlags & textFlag) {
        f.give(9, dash.text);
    }
}

// Texts on dashes stand in an area of their own, each with a zero behind it; the shape's number says where.
std::string textArea(std::vector<Dash>& dashes)
{
    constexpr std::size_t areaBytes = 256;
    std::string area(1, '\0');
    for (Dash& dash : dashes) {
        if (dash.shapeFlags & textFlag) {
            dash.shapeNumber = static_cast<int>(area.size());
            area += dash.text;
            area += '\0';
        }
    }
    if (area.size() > areaBytes) {
        throw DrawingError("the texts of a linetype are too long for this form");
    }
    area.resize(areaBytes, '\0');
    return area;
}

std::string textAt(const std::string& area, int place)
{
    const auto begin = static_cast<std::size_t>(place);
    return place < 0 || begin >= area.size() ? std::string() : std::string(area.c_str() + begin);
}

void linetype(ObjectFields& f)
{
    f.marker("AcDbLinetypeTableRecord");
    const int flags = recordHead(f);
    f.give(70, flags);
    f.text(3);
    f.real(40);
    int alignment = 'A';
    f.bits.byte(alignment);
    std::vector<Dash> dashes = takeDashes(f);
    std::string area = f.reading() ? std::string(256, '\0') : textArea(dashes);
    auto count = static_cast<int>(dashes.size());
    f.bits.byte(count);
    dashes.resize(static_cast<std::size_t>(count));
    for (Dash& dash : dashes) {
        double radians = dash.rotation * std::numbers::pi / 180;
        f.bits.real(dash.length);
        f.bits.shortNumber(dash.shapeNumber);
        f.bits.rawReal(dash.xOffset);
        f.bits.rawReal(dash.yOffset);
        f.bits.real(dash.scale);
        f.bits.real(radians);
        f.bits.shortNumber(dash.shapeFlags);
        dash.rotation = radians * 180 / std::numbers::pi;
    }
    f.bits.bytes(area, area.size());
    externalReference(f);
    f.give(72, alignment);
    f.give(73, count);
    for (Dash& dash : dashes) {
        f.bits.handle(dash.style, Reference::HardPointer);
        dash.text = dash.shapeFlags & textFlag ? textAt(area, dash.shapeNumber) : "";
        giveDash(f, dash);
    }
}

// Bits of group 71 of views and viewports.
enum ViewMode
{
    perspective = 1,
    frontClip = 2,
    backClip = 4,
    frontNotAtEye = 16,
};

// The last flag's bit says the opposite.
int viewMode(ObjectFields& f, int mode)
{
    int read = flagBit(f, mode, perspective);
    read |= flagBit(f, mode, frontClip);
    read |= flagBit(f, mode, backClip);
    return read | (flagBit(f, ~mode, frontNotAtEye) ^ frontNotAtEye);
}

void axis(ObjectFields& f, int code, Vector3 usual)
{
    f.take(code, usual);
    f.bits.point(usual);
    f.give(code, usual);
}

void coordinateSystem(ObjectFields& f)
{
    axis(f, 110, {});
    axis(f, 111, {1, 0, 0});
    axis(f, 112, {0, 1, 0});
    f.real(146);
    f.shortNumber(79);
}

void view(ObjectFields& f)
{
    constexpr int inPaperSpace = 1;
    f.marker("AcDbViewTableRecord");
    int flags = recordHead(f);
    f.real(40);
    f.real(41);
    f.rawPoint2(10);
    f.point3(12);
    f.point3(11);
    f.angle(50);
    f.real(42);
    f.real(43);
    f.real(44);
    int mode = 0;
    f.take(71, mode);
    f.give(71, viewMode(f, mode));
    f.byte(281);
    flags |= flagBit(f, flags, inPaperSpace);
    f.give(70, flags);
    int hasSystem = 0;
    f.take(72, hasSystem);
    bool own = hasSystem != 0;
    f.bits.bit(own);
    f.give(72, own ? 1 : 0);
    if (own) {
        coordinateSystem(f);
    }
    externalReference(f);
    if (own) {
        f.handle(346, Reference::HardPointer);
        f.handle(345, Reference::HardPointer);
    }
}

void userSystem(ObjectFields& f)
{
    f.marker("AcDbUCSTableRecord");
    const int flags = recordHead(f);
    f.give(70, flags);
    f.point3(10);
    f.point3(11);
    f.point3(12);
    f.real(146, 0.0);
    f.shortNumber(79, 0);
    int kinds = 0; // of the origins for the six orthographic views, which DXF lists when there are any
    f.bits.shortNumber(kinds);
    externalReference(f);
    f.handle(346, Reference::HardPointer);
    Handle named = 0;
    f.bits.handle(named, Reference::HardPointer);
}

void gridAndSnap(ObjectFields& f)
{
    f.bit(76);
    f.rawPoint2(15);
    f.bit(75);
    f.bit(77);
    f.shortNumber(78);
    f.angle(50);
    f.rawPoint2(13);
    f.rawPoint2(14);
}

void viewport(ObjectFields& f)
{
    constexpr int followUcs = 8;
    f.marker("AcDbViewportTableRecord");
    const int flags = recordHead(f);
    f.give(70, flags);
    double height = 1;
    double aspect = 1;
    f.take(40, height);
    f.take(41, aspect);
    double width = height * aspect;
    f.bits.real(height);
    f.bits.real(width);
    f.give(40, height);
    f.give(41, height == 0 ? 1.0 : width / height);
    f.rawPoint2(12);
    f.point3(17);
    f.point3(16);
    f.angle(51);
    f.real(42);
    f.real(43);
    f.real(44);
    int mode = 0;
    f.take(71, mode);
    mode = viewMode(f, mode) | (mode & followUcs);
    f.byte(281);
    f.rawPoint2(10);
    f.rawPoint2(11);
    mode = (mode & ~followUcs) | flagBit(f, mode, followUcs);
    f.give(71, mode);
    f.shortNumber(72);
    f.bit(73);
    int icon = 0; // one bit shows it, one puts it at the origin
    f.take(74, icon);
    const int shown = flagBit(f, icon, 1);
    icon = shown | flagBit(f, icon, 2);
    f.give(74, icon);
    gridAndSnap(f);
    bool reserved = false;
    f.bits.bit(reserved);
    f.bit(65);
    coordinateSystem(f);
    externalReference(f);
    f.handle(345, Reference::HardPointer);
    f.handle(346, Reference::HardPointer);
}

void application(ObjectFields& f)
{
    f.marker("AcDbRegAppTableRecord");
    const int flags = recordHead(f);
    f.give(70, flags);
    int reserved = 0;
    f.bits.byte(reserved);
    externalReference(f);
}

} // namespace

std::span<const Kind> tableRecordKinds()
{
    static constexpr Kind kinds[] = {
        {0x33, false, "LAYER", layer},       {0x35, false, "STYLE", textStyle}, {0x39, false, "LTYPE", linetype},
        {0x3D, false, "VIEW", view},         {0x3F, false, "UCS", userSystem},  {0x41, false, "VPORT", viewport},
        {0x43, false, "APPID", application},
    };
    return kinds;
}

} // namespace drawing::dwg
