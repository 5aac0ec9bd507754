#include "imaging/orientation.h"

#include <utility>

#include "imaging/mirror.h"
#include "imaging/turn.h"

namespace imaging {

bool swapsAxes(Orientation orientation)
{
    return orientation >= Orientation::LeftTop;
}

void makeUpright(RasterInfo& info, Orientation orientation)
{
    if (!swapsAxes(orientation))
        return;
    std::swap(info.size.width, info.size.height);
    std::swap(info.resolution.x, info.resolution.y);
}

Bitmap upright(Bitmap stored, Orientation orientation)
{
    switch (orientation) {
    case Orientation::TopLeft:
        return stored;
    case Orientation::TopRight:
        mirrorHorizontal(stored);
        return stored;
    case Orientation::BottomRight:
        turnHalf(stored);
        return stored;
    case Orientation::BottomLeft:
        mirrorVertical(stored);
        return stored;
    case Orientation::LeftTop: {
        Bitmap result = turnClockwise(stored);
        mirrorHorizontal(result);
        return result;
    }
    case Orientation::RightTop:
        return turnClockwise(stored);
    case Orientation::RightBottom: {
        Bitmap result = turnClockwise(stored);
        mirrorVertical(result);
        return result;
    }
    case Orientation::LeftBottom:
        return turnCounterClockwise(stored);
    }
    return stored;
}

} // namespace imaging
