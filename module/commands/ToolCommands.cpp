#include "module/commands/ToolCommands.h"

#include "module/base/CArxApp.h"
#include "module/raster/CommandPattern.h"
#include "module/tools/CRasArrowTool.h"
#include "module/tools/CRasErasTool.h"
#include "module/tools/CRasLineTool.h"
#include "module/tools/CRasPenTool.h"
#include "module/tools/CRasSelectTool.h"

namespace {

// Makes the tool the active one, unless it declines to start. Its construction has ended the tool before it.
template <typename Tool> void StartTool()
{
    CTool* tool = new Tool;
    if (!tool->Start())
        delete g_pArxApp->m_pTool;
}

} // namespace

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
