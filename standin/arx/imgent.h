// Raster images placed in the drawing.
#pragma once

#include <memory>

#include "standin/arx/dbentity.h"
#include "standin/arx/gemat3d.h"

namespace drawing {
struct Image;
}

/// The entity stores the u and v of one pixel, so that an image keeps the size of a pixel in the drawing when its
/// number of pixels changes.
class HALVORAN_STANDIN_API AcDbRasterImage : public AcDbEntity
{
    ACRX_DECLARE_MEMBERS(AcDbRasterImage);

    enum ImageDisplayOpt
    {
        kShow = 1,
        kShowUnAligned = 2,
        kClip = 4,
        kTransparent = 8
    };

    AcDbRasterImage();
    ~AcDbRasterImage() override;

    AcDbObjectId imageDefId() const;

    /// The lower left corner and the edges of the whole image, at the definition's present number of pixels.
    void getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const;
    /// False if the object is not open for write or an edge has no length.
    Adesk::Boolean setOrientation(const AcGePoint3d& origin, const AcGeVector3d& u, const AcGeVector3d& v);

    /// Maps pixel coordinates, y down, to the drawing. Whole numbers lie at the pixels' centres: (-0.5, -0.5) is the
    /// image's top left corner.
    Acad::ErrorStatus getPixelToModelTransform(AcGeMatrix3d& matrix) const;

    void setDisplayOpt(ImageDisplayOpt option, Adesk::Boolean value);
    Adesk::Boolean isSetDisplayOpt(ImageDisplayOpt option) const;

    /// Width and height in pixels.
    AcGeVector2d imageSize() const;

private:
    drawing::Image& record() const;

    std::unique_ptr<drawing::Image> m_alone; // the record of an image that is in no database
};
