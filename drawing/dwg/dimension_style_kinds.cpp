// Dimension styles.

#include "drawing/dwg/dimension_variables.h"
#include "drawing/dwg/kinds.h"
#include "drawing/dwg/record_head.h"

namespace drawing::dwg {

namespace {

void variable(ObjectFields& f, const DimensionVariable& each)
{
    switch (each.form) {
    case ValueForm::Bit:
        f.bit(each.code, each.usual != 0);
        break;
    case ValueForm::Short:
        f.shortNumber(each.code, static_cast<int>(each.usual));
        break;
    case ValueForm::Real:
        f.real(each.code, each.usual);
        break;
    case ValueForm::Text:
        f.text(each.code, "");
        break;
    }
}

void dimensionStyle(ObjectFields& f)
{
    f.marker("AcDbDimStyleTableRecord");
    const int flags = recordHead(f);
    f.give(70, flags);
    for (const DimensionVariable& each : dimensionVariables()) {
        variable(f, each);
    }
    f.shortNumber(371, -2);
    f.shortNumber(372, -2);
    bool reserved = false;
    f.bits.bit(reserved);
    externalReference(f);
    Handle textStyle = 0;
    if (!f.takeHandle(340, textStyle) && !f.reading()) {
        textStyle = f.names.obtain("STYLE", "Standard");
    }
    f.bits.handle(textStyle, Reference::HardPointer);
    f.giveHandle(340, textStyle);
    f.handle(341, Reference::HardPointer); // blocks in place of arrows: of leaders,
    f.handle(342, Reference::HardPointer); // of both ends,
    f.handle(343, Reference::HardPointer); // of the first,
    f.handle(344, Reference::HardPointer); // of the second
}

} // namespace

std::span<const Kind> dimensionStyleKinds()
{
    static constexpr Kind kinds[] = {{0x45, "DIMSTYLE", false, dimensionStyle}};
    return kinds;
}

} // namespace drawing::dwg
