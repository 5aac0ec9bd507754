#include "module/raster/RegionRectangles.h"

#include <cstddef>
#include <cstring>

RegionRectangles::RegionRectangles(const CRgn& region)
{
    const int size = region.GetRegionData(nullptr, 0);
    if (size < static_cast<int>(sizeof(RGNDATAHEADER)))
        return;
    std::vector<std::byte> block(size);
    auto* data = reinterpret_cast<RGNDATA*>(block.data());
    region.GetRegionData(data, size);
    m_rectangles.resize(data->rdh.nCount);
    if (!m_rectangles.empty())
        std::memcpy(m_rectangles.data(), data->Buffer, m_rectangles.size() * sizeof(RECT));
}
