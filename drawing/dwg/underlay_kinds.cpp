// Sheets of other programs that lie under the drawing, and their definitions.

#include "drawing/dwg/kinds.h"

namespace drawing::dwg {

namespace {

void underlay(ObjectFields& f)
{
    f.marker("AcDbUnderlayReference");
    f.plainExtrusion();
    f.point3(10);
    f.angle(50, 0.0);
    for (const int code : {41, 42, 43}) {
        f.real(code, 1.0);
    }
    f.byte(280);
    f.byte(281);
    f.byte(282);
    const auto ordinates = f.takeAll({11, 21});
    constexpr unsigned rawPointBits = 128;
    auto corners = static_cast<int>(ordinates.size() / 2);
    f.bits.count(corners, rawPointBits);
    for (std::size_t i = 0; i < static_cast<std::size_t>(corners); ++i) {
        Vector2 corner;
        if (!f.reading()) {
            corner = {ordinates[2 * i].real(), ordinates[2 * i + 1].real()};
        }
        f.bits.rawFlatPoint(corner);
        f.give(11, corner);
    }
    f.handle(340, Reference::HardPointer);
}

void definition(ObjectFields& f)
{
    f.marker("AcDbUnderlayDefinition");
    f.text(1);
    f.text(2);
}

} // namespace

std::span<const Kind> underlayKinds()
{
    static constexpr Kind kinds[] = {
        {0, true, "PDFUNDERLAY", underlay},      {0, true, "DWFUNDERLAY", underlay},
        {0, true, "DGNUNDERLAY", underlay},      {0, false, "PDFDEFINITION", definition},
        {0, false, "DWFDEFINITION", definition}, {0, false, "DGNDEFINITION", definition},
    };
    return kinds;
}

} // namespace drawing::dwg
