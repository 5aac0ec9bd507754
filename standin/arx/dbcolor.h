// Colours of entities.
#pragma once

#include "standin/arx/adesk.h"
#include "standin/export.h"

class HALVORAN_STANDIN_API AcCmEntityColor
{
public:
    /// The colour of an index from 1 to 255, as 0x00RRGGBB.
    static Adesk::UInt32 lookUpRGB(Adesk::UInt8 colorIndex);
};
