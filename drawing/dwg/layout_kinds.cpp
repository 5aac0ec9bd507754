// Layouts and plot settings.

#include "drawing/dwg/kinds.h"

namespace drawing::dwg {

namespace {

void plotFields(ObjectFields& f)
{
    f.marker("AcDbPlotSettings");
    f.text(1);
    f.text(2);
    f.shortNumber(70);
    for (int code = 40; code <= 45; ++code) {
        f.real(code);
    }
    f.text(4);
    f.real(46);
    f.real(47);
    f.shortNumber(72);
    f.shortNumber(73);
    f.shortNumber(74);
    f.real(48);
    f.real(49);
    f.real(140);
    f.real(141);
    f.text(6);
    f.real(142);
    f.real(143);
    f.text(7);
    f.shortNumber(75);
    f.real(147);
    f.real(148);
    f.real(149);
}

void plotSettings(ObjectFields& f)
{
    plotFields(f);
}

void layout(ObjectFields& f)
{
    plotFields(f);
    f.marker("AcDbLayout");
    f.text(1);
    f.longNumber(71);
    f.shortNumber(70);
    f.point3(13);
    f.rawPoint2(10);
    f.rawPoint2(11);
    f.point3(12);
    f.point3(16);
    f.point3(17);
    f.real(146);
    f.shortNumber(76);
    f.point3(14);
    f.point3(15);
    f.handle(330, Reference::SoftPointer); // the block
    f.handle(331, Reference::SoftPointer); // the viewport that was last active
    f.handle(346, Reference::HardPointer);
    f.handle(345, Reference::HardPointer);
}

} // namespace

std::span<const Kind> layoutKinds()
{
    static constexpr Kind kinds[] = {
        {0, false, "LAYOUT", layout},
        {0x52, false, "LAYOUT", layout}, // as later programs number it
        {0, false, "PLOTSETTINGS", plotSettings},
    };
    return kinds;
}

} // namespace drawing::dwg
