#include "standin/arx/dbcolor.h"

#include "drawing/color_index.h"

Adesk::UInt32 AcCmEntityColor::lookUpRGB(Adesk::UInt8 colorIndex)
{
    const drawing::Rgb rgb = drawing::rgbOfIndex(colorIndex);
    return Adesk::UInt32(rgb.red) << 16 | Adesk::UInt32(rgb.green) << 8 | rgb.blue;
}
