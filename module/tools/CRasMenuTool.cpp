#include "module/tools/CRasMenuTool.h"

#include <algorithm>
#include <iterator>

#include "module/base/PostCommandText.h"
#include "module/raster/CDocumentLock.h"
#include "module/raster/CommandPattern.h"
#include "module/resources/resource.h"

IMPLEMENT_DYNAMIC(CRasMenuTool, CTool)

namespace {

struct PostedCommand
{
    UINT id;
    const wchar_t* text;
};

constexpr PostedCommand postedCommands[] = {
    {ID_RASTER_INVERT, L"orvo_invert "},       {ID_RASTER_FLIP_HORIZONTAL, L"orvo_fliph "},
    {ID_RASTER_FLIP_VERTICAL, L"orvo_flipv "}, {ID_RASTER_DESPECKLE, L"orvo_despec "},
    {ID_RASTER_FILL, L"orvo_fill "},           {ID_RASTER_CROP, L"orvo_crop "},
    {ID_RASTER_CHANGE, L"orvo_change "},       {ID_RASTER_PROPERTIES, L"orvo_rasprop "},
    {ID_RASTER_ROTATE, L"orvo_rotate "},       {ID_RASTER_RASTERIZE, L"orvo_rasterize "},
};

void ToggleFrames()
{
    const CDocumentLock lock;
    AcDbRasterVariables* variables = nullptr;
    if (AcDbRasterVariables::openRasterVariables(variables, AcDb::kForWrite) != Acad::eOk)
        return;
    variables->setImageFrame(variables->imageFrame() != AcDbRasterVariables::kImageFrameOff
                                 ? AcDbRasterVariables::kImageFrameOff
                                 : AcDbRasterVariables::kImageFrameAbove);
    variables->close();
    PostCommandText(L"regen ");
}

} // namespace

int CRasMenuTool::OnLButtonDown(CPoint, UINT)
{
    return 0;
}

int CRasMenuTool::OnRButtonDown(CPoint, UINT)
{
    return 0;
}

// The tool ends with whatever was chosen, and the command goes on to the host.
int CRasMenuTool::OnCommand(UINT id)
{
    const auto* posted = std::find_if(std::begin(postedCommands), std::end(postedCommands),
                                      [id](const auto& row) { return row.id == id; });
    if (posted != std::end(postedCommands)) {
        PostCommandAfterCancel(posted->text);
    } else if (id == ID_RASTER_SHOW) {
        EditCurrentRaster([](CAcraster& raster) { raster.SetShown(!raster.IsShown()); }, false);
    } else if (id == ID_RASTER_TRANSPARENT) {
        EditCurrentRaster([](CAcraster& raster) { raster.SetTransparent(!raster.IsTransparent()); }, false);
    } else if (id == ID_RASTER_FRAMES) {
        ToggleFrames();
    }
    return 0;
}
