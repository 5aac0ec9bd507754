#include "host/ToolCommands.h"

#include "host/CArxApp.h"
#include "host/CTempMFC.h"
#include "tools/CRasSelectTool.h"

namespace {

// Makes the tool the active one, unless it declines to start. Its construction has ended the tool before it.
template <typename Tool> void StartTool()
{
    CTool* tool = new Tool;
    if (!tool->Start())
        delete g_pArxApp->m_pTool;
}

} // namespace

void SelectRasterCommand()
{
    // The command that finds a raster needs none.
    const CTempMFC resources;
    StartTool<CRasSelectTool>();
}
