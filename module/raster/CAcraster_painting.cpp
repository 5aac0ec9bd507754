// What is done to the working image in memory.

#include <memory>

#include "module/raster/CAcraster.h"
#include "module/raster/Coordinates.h"
#include "module/raster/RegionRectangles.h"

namespace {

// Codes of Atil::Image::read.
constexpr int mirrorVertical = 1;
constexpr int mirrorHorizontal = 2;
constexpr int turnCounterClockwise = 5;
constexpr int turnClockwise = 6;

// While it lives, one-value pixels can be laid on a 1-bit image, whose own data model would not take them.
class OneValuePaint
{
public:
    OneValuePaint(Atil::Image& image, BYTE colorFlag)
        : m_image(image), m_savedModel(image.dataModel()),
          m_model(Atil::DataModelAttributes::kBitonalData, Atil::DataModelAttributes::k1, 1),
          m_pixel(Atil::DataModelAttributes::kBitonal)
    {
        m_pixel.value.bitonal = colorFlag ? 0 : 255;
        m_image.setDataModel(&m_model);
    }
    ~OneValuePaint() { m_image.setDataModel(&m_savedModel); }
    OneValuePaint(const OneValuePaint&) = delete;
    OneValuePaint& operator=(const OneValuePaint&) = delete;

    // The rectangle lies inside the image and is not empty.
    void Fill(const CRect& rect)
    {
        const Atil::Size size(rect.Width(), rect.Height());
        const Atil::Image filled(size, &m_model, m_pixel, Atil::kDefaultTileSize);
        const std::unique_ptr<Atil::RowProviderInterface> rows(filled.read(size, Atil::Offset(0, 0)));
        m_image.paste(rows.get(), Atil::Offset(rect.left, rect.top), false);
    }

private:
    Atil::Image& m_image;
    Atil::DataModel m_savedModel;
    Atil::DataModel m_model;
    Atil::ImagePixel m_pixel;
};

bool HasPixels(const CRect& rect)
{
    return rect.Width() > 0 && rect.Height() > 0;
}

} // namespace

CRect CAcraster::ClipToImage(const CRect& rect) const
{
    CRect clipped;
    clipped.IntersectRect(rect, GetImageRect());
    return clipped;
}

// `clipped`, which comes empty handed, gets what the region has of the image. False if that is nothing.
bool CAcraster::ClipToImage(CRgn& region, CRgn& clipped) const
{
    clipped.CreateRectRgnIndirect(GetImageRect());
    return clipped.CombineRgn(&clipped, &region, RGN_AND) > NULLREGION;
}

void CAcraster::Stamp(CPoint point)
{
    const int half = m_nStampSize / 2;
    const CRect stamp = ClipToImage(CRect(CPoint(point.x - half, point.y - half), CSize(m_nStampSize, m_nStampSize)));
    if (!m_pImage || !HasPixels(stamp))
        return;
    OneValuePaint(*m_pImage, m_nColorFlag).Fill(stamp);
    m_bDirty = true;
}

void CAcraster::FillRegion()
{
    if (!m_pImage)
        return;
    OneValuePaint paint(*m_pImage, m_nColorFlag);
    for (const CRect rect : RegionRectangles(*m_pRegion)) {
        const CRect clipped = ClipToImage(rect);
        if (HasPixels(clipped))
            paint.Fill(clipped);
    }
    m_bDirty = true;
}

// Replaces the working image by itself, read with a mirror or turn code.
void CAcraster::ReplaceImage(int rotation)
{
    if (!m_pImage)
        return;
    const std::unique_ptr<Atil::RowProviderInterface> rows(
        m_pImage->read(m_pImage->size(), Atil::Offset(0, 0), rotation));
    *m_pImage = Atil::Image(rows.get(), Atil::kDefaultTileSize);
    m_bDirty = true;
}

void CAcraster::FlipHorizontal()
{
    ReplaceImage(mirrorHorizontal);
}

void CAcraster::FlipVertical()
{
    ReplaceImage(mirrorVertical);
}

void CAcraster::Turn(bool clockwise)
{
    ReplaceImage(clockwise ? turnClockwise : turnCounterClockwise);
    ResetRegion();
}

CSize CAcraster::KeepProportions(CSize pixelSize) const
{
    const CSize present = GetSize();
    if (pixelSize == present)
        return present;
    const double oldWidth = present.cx;
    const double oldHeight = present.cy;
    const double width = pixelSize.cx;
    const double height = pixelSize.cy;
    if (oldWidth / oldHeight > width / height) {
        pixelSize.cy = TruncateToInt(width / oldWidth * oldHeight + 0.5);
    } else {
        pixelSize.cx = TruncateToInt(height / oldHeight * oldWidth + 0.5);
    }
    return pixelSize;
}

void CAcraster::Resample(CSize pixelSize, int dpi)
{
    if (!m_pImage)
        return;
    const CSize oldSize = GetSize();
    pixelSize = KeepProportions(pixelSize);
    Atil::RowProviderInterface* source = m_pImage->read(m_pImage->size(), Atil::Offset(0, 0));
    if (!(pixelSize == oldSize))
        source = Atil::newResampleFilter(source, Atil::Size(pixelSize.cx, pixelSize.cy), 0, 0, 0, 0, 0);
    const std::unique_ptr<Atil::RowProviderInterface> rows(source);
    *m_pImage = Atil::Image(rows.get(), Atil::kDefaultTileSize);

    if (dpi != m_nDpi && m_nDpi > 0) {
        const double ratio = static_cast<double>(dpi) / m_nDpi;
        m_nDpi = dpi;
        AcGePoint3d origin;
        AcGeVector3d u;
        AcGeVector3d v;
        m_objects.m_pEntity->getOrientation(origin, u, v);
        u.x /= ratio;
        v.y /= ratio;
        m_objects.m_pEntity->setOrientation(origin, u, v);
    }
    ResetRegion();
    m_bDirty = true;
}
