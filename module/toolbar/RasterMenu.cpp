#include "module/toolbar/RasterMenu.h"

#include "module/base/MisreadText.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/tools/CRasMenuTool.h"
#include "module/tools/ToolMenu.h"

namespace {

// With a current raster, whatever is selected.
constexpr UINT rasterItems[] = {
    ID_RASTER_SHOW,          ID_RASTER_TRANSPARENT, ID_RASTER_INVERT,     ID_RASTER_FLIP_HORIZONTAL,
    ID_RASTER_FLIP_VERTICAL, ID_RASTER_ROTATE,      ID_RASTER_DESPECKLE,  ID_RASTER_FILL,
    ID_RASTER_CHANGE,        ID_RASTER_RASTERIZE,   ID_RASTER_PROPERTIES,
};

void Check(CMenu& menu, UINT id, bool checked)
{
    menu.CheckMenuItem(id, checked ? MF_CHECKED : MF_UNCHECKED);
}

void EnableRasterItems(CMenu& menu, const CAcraster& raster)
{
    for (const UINT id : rasterItems)
        menu.EnableMenuItem(id, MF_ENABLED);
    if (raster.HasSelection())
        menu.EnableMenuItem(ID_RASTER_CROP, MF_ENABLED);
    menu.SetDefaultItem(ID_RASTER_SHOW);
    Check(menu, ID_RASTER_SHOW, raster.IsShown());
    Check(menu, ID_RASTER_TRANSPARENT, raster.IsTransparent());
}

// Looks for images as the host has always been asked for them here: by a name of their kind that it misreads. So it
// finds none, and "Show frames" stays greyed.
bool DrawingHasImages()
{
    resbuf* filter = acutBuildList(RTDXF0, MisreadText("IMAGE").GetString(), RTNONE);
    ads_name images = {};
    const bool found = acedSSGet(L"X", nullptr, nullptr, filter, images) != RTERROR;
    acutRelRb(filter);
    if (found)
        acedSSFree(images);
    return found;
}

void EnableFramesItem(CMenu& menu)
{
    AcDbRasterVariables* variables = nullptr;
    if (AcDbRasterVariables::openRasterVariables(variables, AcDb::kForRead) != Acad::eOk)
        return;
    menu.EnableMenuItem(ID_RASTER_FRAMES, MF_ENABLED);
    Check(menu, ID_RASTER_FRAMES, variables->imageFrame() > AcDbRasterVariables::kImageFrameOff);
    variables->close();
}

} // namespace

void ShowRasterMenu(CWnd& toolbar, CPoint corner)
{
    auto* tool = new CRasMenuTool; // the active one from now on, and ended as such
    const CCurentRaster current;
    TrackToolMenu(tool, IDM_RASTER, toolbar, corner, [&](CMenu& menu) {
        CAcraster* raster = current.m_pRaster;
        if (raster) {
            EnableRasterItems(menu, *raster);
            raster->Suspend(true);
        }
        const bool hasImages = DrawingHasImages();
        if (raster)
            raster->Suspend(false);
        if (hasImages)
            EnableFramesItem(menu);
    });
}
