// Viewports of paper spaces.

#include "drawing/dwg/kinds.h"

namespace drawing::dwg {

namespace {

void viewport(ObjectFields& f)
{
    f.marker("AcDbViewport");
    f.point3(10);
    f.real(40);
    f.real(41);
    f.point3(17);
    f.point3(16, Vector3{0, 0, 1});
    f.angle(51);
    f.real(45);
    f.real(42, 50.0);
    f.real(43, 0.0);
    f.real(44, 0.0);
    f.angle(50, 0.0);
    f.rawPoint2(12);
    f.rawPoint2(13);
    f.rawPoint2(14);
    f.rawPoint2(15);
    f.shortNumber(72, 1000);
    const auto frozen = f.takeAll({331, 341});
    auto count = static_cast<int>(frozen.size());
    f.bits.handleCount(count);
    f.longNumber(90);
    f.text(1, "");
    f.byte(281, 0);
    f.bit(74, false);
    f.bit(71, false);
    f.point3(110);
    f.point3(111, Vector3{1, 0, 0});
    f.point3(112, Vector3{0, 1, 0});
    f.real(146, 0.0);
    f.shortNumber(79, 0);
    for (int i = 0; i < count; ++i) {
        Handle layer = f.reading() ? 0 : frozen[static_cast<std::size_t>(i)].handleValue();
        f.bits.handle(layer, Reference::HardPointer);
        f.giveHandle(331, layer);
    }
    f.handle(340, Reference::SoftPointer);
    f.bits.handle(f.links.viewportEntry, Reference::HardPointer);
    f.handle(345, Reference::HardPointer);
    f.handle(346, Reference::HardPointer);
}

} // namespace

std::span<const Kind> viewportKinds()
{
    static constexpr Kind kinds[] = {{0x22, true, "VIEWPORT", viewport}};
    return kinds;
}

} // namespace drawing::dwg
