#include "module/start/SelectionInView.h"

#include <cstdlib>
#include <memory>

#include "module/raster/CAcraster.h"
#include "module/raster/Coordinates.h"

namespace {

constexpr int boxTolerance = 3; // view pixels

std::unique_ptr<CRgn> viewRegion;
CRect viewBox;    // the view region's box
DWORD regionSize; // bytes of the selection's region data then
unsigned conversions;

bool IsNear(const CRect& a, const CRect& b)
{
    return std::abs(a.left - b.left) < boxTolerance && std::abs(a.top - b.top) < boxTolerance &&
           std::abs(a.right - b.right) < boxTolerance && std::abs(a.bottom - b.bottom) < boxTolerance;
}

} // namespace

CRgn& UpdateSelectionInView(CAcraster& raster)
{
    CRect box = raster.PixelToView(raster.GetRegionBox());
    box.IntersectRect(box, CRect(CPoint(0, 0), ReadViewSize()));
    const DWORD size = GetRegionData(raster.GetRegion(), 0, nullptr);
    if (!viewRegion || !IsNear(box, viewBox) || size != regionSize) {
        viewRegion = std::make_unique<CRgn>();
        raster.GetViewRegion(*viewRegion);
        viewRegion->GetRgnBox(viewBox);
        regionSize = size;
        ++conversions;
    }
    return *viewRegion;
}

void ForgetSelectionInView()
{
    viewRegion.reset();
}

unsigned SelectionConversions()
{
    return conversions;
}
