// Dimension styles.

#include "drawing/dwg/dimension_variables.h"
#include "drawing/dwg/kinds.h"
#include "drawing/dwg/record_head.h"

namespace drawing::dwg {

namespace {

// Each has its group, also where its value is the usual one.
void variable(ObjectFields& f, const DimensionVariable& each)
{
    if (each.form == ValueForm::Text) {
        f.text(each.code);
        return;
    }
    if (each.form == ValueForm::Real) {
        double value = each.usual;
        f.take(each.code, value);
        f.bits.real(value);
        f.give(each.code, value);
        return;
    }
    int value = static_cast<int>(each.usual);
    f.take(each.code, value);
    if (each.form == ValueForm::Bit) {
        bool bit = value != 0;
        f.bits.bit(bit);
        value = bit ? 1 : 0;
    } else {
        f.bits.shortNumber(value);
    }
    f.give(each.code, value);
}

void lineweight(ObjectFields& f, int code)
{
    int value = -2;
    f.take(code, value);
    f.bits.shortNumber(value);
    f.give(code, value);
}

void dimensionStyle(ObjectFields& f)
{
    f.marker("AcDbDimStyleTableRecord");
    const int flags = recordHead(f);
    f.give(70, flags);
    for (const DimensionVariable& each : dimensionVariables()) {
        variable(f, each);
    }
    lineweight(f, 371);
    lineweight(f, 372);
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
    static constexpr Kind kinds[] = {{0x45, false, "DIMSTYLE", dimensionStyle}};
    return kinds;
}

} // namespace drawing::dwg
