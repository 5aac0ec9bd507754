// Multilines and their styles.

#include "drawing/dwg/kinds.h"
#include "drawing/error.h"

namespace drawing::dwg {

namespace {

// The bits of a multiline style's flags: what the form has, and what DXF has.
struct FlagPair
{
    int stored;
    int dxf;
};
constexpr FlagPair styleFlags[] = {{1, 2}, {2, 1}, {16, 16}, {32, 64}, {64, 32}, {256, 256}, {512, 1024}, {1024, 512}};

struct StyleLine
{
    double offset = 0;
    int color = 256;
    std::string linetype = "BYLAYER";
};

// The numbers of linetypes count the entries of the table.
void styleLine(ObjectFields& f, StyleLine& line)
{
    f.bits.real(line.offset);
    f.bits.shortNumber(line.color);
    int number = f.reading() ? 0 : f.names.linetypeNumber(line.linetype);
    f.bits.shortNumber(number);
    if (f.reading()) {
        line.linetype = f.names.linetypeOfNumber(number);
    }
}

void multilineStyle(ObjectFields& f)
{
    f.marker("AcDbMlineStyle");
    f.text(2);
    f.text(3);
    int flags = 0;
    f.take(70, flags);
    int stored = 0;
    for (const FlagPair& pair : styleFlags) {
        stored |= flags & pair.dxf ? pair.stored : 0;
    }
    f.bits.shortNumber(stored);
    flags = 0;
    for (const FlagPair& pair : styleFlags) {
        flags |= stored & pair.stored ? pair.dxf : 0;
    }
    f.give(70, flags);
    std::vector<StyleLine> lines;
    int fill = 256;
    f.take(62, fill);
    f.bits.shortNumber(fill);
    f.give(62, fill);
    f.angle(51);
    f.angle(52);
    for (const PlacedGroup& each : f.takeAll({49, 62, 6})) {
        if (each.code == 49) {
            lines.emplace_back().offset = each.real();
        } else if (!lines.empty() && each.code == 62) {
            lines.back().color = each.integer();
        } else if (!lines.empty()) {
            lines.back().linetype = each.value;
        }
    }
    auto count = static_cast<int>(lines.size());
    f.bits.byte(count);
    f.give(71, count);
    lines.resize(static_cast<std::size_t>(count));
    for (StyleLine& line : lines) {
        styleLine(f, line);
        f.give(49, line.offset);
        f.give(62, line.color);
        f.give(6, line.linetype);
    }
}

// Where one line of a multiline begins and breaks behind a corner, or where its filling does.
void breaks(ObjectFields& f, int countCode, int code)
{
    constexpr unsigned leastRealBits = 2;
    int count = 0;
    f.take(countCode, count);
    f.bits.shortCount(count, leastRealBits);
    f.give(countCode, count);
    for (int i = 0; i < count; ++i) {
        double distance = 0;
        if (!f.take(code, distance) && !f.reading()) {
            throw DrawingError("a multiline has fewer breaks than it says");
        }
        f.bits.real(distance);
        f.give(code, distance);
    }
}

void multiline(ObjectFields& f)
{
    f.marker("AcDbMline");
    std::string name;
    Handle style = 0;
    f.take(2, name);
    f.takeHandle(340, style);
    if (!f.reading() && style == 0) {
        style = f.names.find("MLINESTYLE", name);
    }
    f.bits.handle(style, Reference::HardPointer);
    f.give(2, f.names.nameOf(style));
    f.giveHandle(340, style);
    f.real(40);
    f.byte(70);
    f.point3(10);
    f.plainExtrusion();
    f.shortNumber(71);
    int corners = 0;
    int lines = 0;
    f.take(72, corners);
    f.take(73, lines);
    corners = static_cast<int>(f.left(11));
    if (!f.reading() && (lines < 0 || static_cast<std::size_t>(lines) * f.left(11) > f.left(74))) {
        throw DrawingError("a multiline has fewer lines than it says");
    }
    constexpr unsigned leastCornerBits = 18; // three points of three reals
    f.bits.byte(lines);
    f.bits.shortCount(corners, leastCornerBits);
    f.give(72, corners);
    f.give(73, lines);
    for (int corner = 0; corner < corners; ++corner) {
        for (const int code : {11, 12, 13}) {
            f.point3(code);
        }
        for (int line = 0; line < lines; ++line) {
            breaks(f, 74, 41);
            breaks(f, 75, 42);
        }
    }
}

} // namespace

std::span<const Kind> multilineKinds()
{
    static constexpr Kind kinds[] = {
        {0x2F, true, "MLINE", multiline},
        {0x49, false, "MLINESTYLE", multilineStyle},
    };
    return kinds;
}

} // namespace drawing::dwg
