// A drawing's settings for its raster images.
#pragma once

#include "standin/arx/dbobject.h"

class HALVORAN_STANDIN_API AcDbRasterVariables : public AcDbObject
{
    ACRX_DECLARE_MEMBERS(AcDbRasterVariables);

    enum FrameSettings
    {
        kImageFrameInvalid = -1,
        kImageFrameOff = 0,
        kImageFrameAbove = 1,
        kImageFrameBelow = 2,
        kImageFrameOnNoPlot = 3
    };

    AcDbRasterVariables() = default;

    /// Opens the one object of the drawing, which is made if there is none yet and the mode is for writing;
    /// eKeyNotFound if there is none to read. The caller closes it. No database means the working one.
    static Acad::ErrorStatus openRasterVariables(AcDbRasterVariables*& variables, AcDb::OpenMode mode,
                                                 AcDbDatabase* database = nullptr);

    FrameSettings imageFrame() const;
    Acad::ErrorStatus setImageFrame(FrameSettings frame);
};
