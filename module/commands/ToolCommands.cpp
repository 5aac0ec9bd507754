#include "module/commands/ToolCommands.h"

#include "module/raster/CommandPattern.h"
#include "module/tools/CRasArrowTool.h"
#include "module/tools/CRasErasTool.h"
#include "module/tools/CRasLineTool.h"
#include "module/tools/CRasPenTool.h"
#include "module/tools/CRasSelectTool.h"
#include "module/tools/StartTool.h"

void SelectAreaCommand()
{
    WithCurrentRaster([](CAcraster&) { StartTool<CRasArrowTool>(); });
}

void PenCommand()
{
    WithCurrentRaster([](CAcraster&) { StartTool<CRasPenTool>(); });
}

void LineCommand()
{
    WithCurrentRaster([](CAcraster&) { StartTool<CRasLineTool>(); });
}

void EraserCommand()
{
    WithCurrentRaster([](CAcraster&) { StartTool<CRasErasTool>(); });
}

void SelectRasterCommand()
{
    // The command that finds a raster needs none.
    const CTempMFC resources;
    StartTool<CRasSelectTool>();
}
